#include "frmedt/FormKeep.h"

#include <set>

#include "code/CppLexer.h"
#include "frmedt/FormCheck.h"

namespace zendry {

namespace {

using Lines = std::vector<std::string>;

// True if the brackets of a text are closed and its last statement is ended: only comments are,
// too.
bool IsWhole(const std::string& text) {
  CppLexer lexer(text);
  std::string open;
  std::string last = ";";
  for (CppPiece piece = lexer.Next(); piece.kind != CppPiece::Kind::cEnd; piece = lexer.Next()) {
    last = piece.text;
    if (last == "(" || last == "[" || last == "{") open += last;
    const char opening = last == ")" ? '(' : last == "]" ? '[' : last == "}" ? '{' : '\0';
    if (!opening) continue;
    if (open.empty() || open.back() != opening) return false;
    open.pop_back();
  }
  const bool isDirective = last.starts_with('#');
  return open.empty() && (last == ";" || last == "}" || isDirective);
}

size_t BlanksBefore(const std::string& line) {
  const size_t place = line.find_first_not_of(" \t");
  return place == std::string::npos ? 0 : place;
}

// Lines that follow each other are one statement, or several whole ones.
Lines Kept(const Lines& lines, const std::set<size_t>& taken) {
  Lines kept;
  for (auto at = taken.begin(); at != taken.end();) {
    Lines group;
    size_t next = *at;
    for (; at != taken.end() && *at == next; ++at, ++next) group.push_back(lines[*at]);
    std::string text;
    for (const std::string& line : group) text += line;
    const bool isWhole = IsWhole(text);
    for (std::string& line : group) {
      if (!isWhole) line.insert(BlanksBefore(line), "// ");
      kept.push_back(std::move(line));
    }
  }
  return kept;
}

std::string LineEndOf(const std::string& line) {
  const size_t end = line.find_last_not_of("\r\n");
  return end == std::string::npos ? line : line.substr(end + 1);
}

}  // namespace

// What remains may lose more, such as the statements of a control whose declaration is taken, so
// this goes on until nothing is lost.
KeptLines TakeKept(Lines& declLines, Lines& initLines) {
  const Lines decl = declLines;
  const Lines init = initLines;
  std::set<size_t> takenDecl, takenInit;
  while (true) {
    bool isDone = true;
    for (const FormLoss& loss : CheckRegions(declLines, initLines)) {
      // The markers are written by the designer.
      if (loss.kind == FormLoss::Kind::cMoved || loss.text.starts_with("//!")) continue;
      const size_t line = static_cast<size_t>(loss.line);
      std::string& text = loss.isInDecl ? declLines[line] : initLines[line];
      (loss.isInDecl ? takenDecl : takenInit).insert(line);
      text = LineEndOf(text);
      isDone = false;
    }
    if (isDone) return {Kept(decl, takenDecl), Kept(init, takenInit)};
  }
}

void AppendKept(Lines& region, const Lines& kept) {
  region.insert(region.end(), kept.begin(), kept.end());
}

}  // namespace zendry
