#include "frmedt/FormFolds.h"

#include "code/CppLexer.h"

namespace zendry {

namespace {

std::vector<size_t> LineStarts(std::string_view text) {
  std::vector<size_t> starts = {0};
  for (size_t at = 0; at < text.size(); ++at) {
    const bool isPair = text[at] == '\r' && at + 1 < text.size() && text[at + 1] == '\n';
    if ((text[at] == '\n' || text[at] == '\r') && !isPair) starts.push_back(at + 1);
  }
  return starts;
}

int StepOf(const CppPiece& piece) {
  if (piece.kind != CppPiece::Kind::cSign || piece.text.size() != 1) return 0;
  const char sign = piece.text[0];
  if (sign == '{' || sign == '(' || sign == '[') return 1;
  return sign == '}' || sign == ')' || sign == ']' ? -1 : 0;
}

}  // namespace

std::vector<int> FoldLevels(std::string_view text, const std::vector<FoldRegion>& regions) {
  const std::vector<size_t> starts = LineStarts(text);
  std::vector<int> steps(starts.size());
  size_t line = 0;
  CppLexer lexer(text);
  for (CppPiece piece = lexer.Next(); piece.kind != CppPiece::Kind::cEnd; piece = lexer.Next()) {
    const int step = StepOf(piece);
    if (step == 0) continue;
    const auto place = static_cast<size_t>(piece.text.data() - text.data());
    while (line + 1 < starts.size() && starts[line + 1] <= place) ++line;
    steps[line] += step;
  }
  const int count = static_cast<int>(steps.size());
  for (const FoldRegion& region : regions) {
    if (region.first < 0 || region.last >= count) continue;
    ++steps[static_cast<size_t>(region.first)];
    --steps[static_cast<size_t>(region.last)];
  }
  std::vector<int> levels;
  levels.reserve(steps.size());
  int level = cFoldBase;
  for (const int step : steps) {
    levels.push_back(level | (step > 0 ? cFoldHeader : 0));
    level += step;
  }
  if (starts.size() > 1 && starts.back() == text.size()) levels.back() |= cFoldEmpty;
  return levels;
}

}  // namespace zendry
