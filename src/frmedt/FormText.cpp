#include "frmedt/FormText.h"

#include <algorithm>

#include "frmedt/FormBlocks.h"

namespace zendry {

namespace {

// Line ends are LF, CR LF and CR, as in an editor.
std::vector<size_t> LineStarts(const std::string& text) {
  std::vector<size_t> starts = {0};
  for (size_t at = 0; (at = text.find_first_of("\r\n", at)) != std::string::npos;) {
    at += text.compare(at, 2, "\r\n") == 0 ? 2 : 1;
    starts.push_back(at);
  }
  return starts;
}

}  // namespace

FormText::FormText(std::string newPath, std::string newText)
    : path(std::move(newPath)), text(std::move(newText)), starts(LineStarts(text)) {}

size_t FormText::LineStart(int line) const {
  return line < LineCount() ? starts[static_cast<size_t>(line)] : text.size();
}

std::string_view FormText::Line(int line) const {
  const size_t start = LineStart(line);
  return std::string_view(text).substr(start, LineStart(line + 1) - start);
}

FormTag FormText::TagAtLine(int line) const {
  if (!isParsed) blocks = FindFormBlocks(text);
  isParsed = true;
  const size_t place = LineStart(line);
  const auto around = [place](const FormBlock& one) {
    return one.start < place && place < one.end;
  };
  // An inner block comes after the one around it.
  const auto at = std::find_if(blocks.rbegin(), blocks.rend(), around);
  return at == blocks.rend() ? FormTag() : at->tag;
}

}  // namespace zendry
