#include "frmedt/FormKeep.h"

#include <set>

#include "frmedt/FormCheck.h"
#include "frmedt/FormStatement.h"

namespace zendry {

namespace {

using Lines = std::vector<std::string>;

size_t BlanksBefore(const std::string& line) {
  const size_t place = line.find_first_not_of(" \t");
  return place == std::string::npos ? 0 : place;
}

// The number of the lines from `first` on that are the shortest whole statement; 0 if none are.
size_t WholeLines(const Lines& lines, const std::set<size_t>& taken, size_t first) {
  std::string text;
  for (size_t at = first; taken.contains(at); ++at) {
    text += lines[at];
    if (IsWholeStatement(text)) return at + 1 - first;
  }
  return 0;
}

// A statement stays as it is if all of its lines are taken.
Lines Kept(const Lines& lines, const std::set<size_t>& taken) {
  Lines kept;
  for (auto at = taken.begin(); at != taken.end();) {
    const size_t count = WholeLines(lines, taken, *at);
    for (size_t i = 0; i < count; ++i) kept.push_back(lines[*at++]);
    if (count > 0) continue;
    std::string line = lines[*at++];
    line.insert(BlanksBefore(line), "// ");
    kept.push_back(std::move(line));
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
