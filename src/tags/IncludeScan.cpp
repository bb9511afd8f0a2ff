#include "tags/IncludeScan.h"

#include <algorithm>

#include "tags/PlatformBranches.h"

namespace zendry {

namespace {

constexpr std::string_view cKeyword = "include";
constexpr size_t cMaxName = 244;

bool IsBlank(char c) {
  return std::string_view(" \t\n\v\f\r").find(c) != std::string_view::npos;
}

// Removes the first line, which ends with `end`, from the text.
std::string_view TakeLine(std::string_view& text, char end) {
  const std::string_view line = text.substr(0, text.find(end));
  text.remove_prefix(std::min(line.size() + 1, text.size()));
  return line;
}

}  // namespace

void IncludeScanner::Start() {
  step = Step::cKeyword;
  matched = 0;
  found.name.clear();
}

bool IncludeScanner::Feed(char c) {
  if (step == Step::cIdle || IsBlank(c)) return false;
  if (step == Step::cKeyword) {
    if (c != cKeyword[matched]) return Stop();
    if (++matched == cKeyword.size()) step = Step::cOpening;
    return false;
  }
  if (step == Step::cOpening) {
    found.quoted = c != '<';
    closing = found.quoted ? '"' : '>';
    step = Step::cName;
    return false;
  }
  if (c == closing) {
    Stop();
    return true;
  }
  if (found.name.size() == cMaxName) return Stop();
  found.name += c;
  return false;
}

std::vector<IncludeRec> ScanIncludes(std::string_view text) {
  std::vector<IncludeRec> includes;
  IncludeScanner scanner;
  PlatformBranches branches;
  while (!text.empty()) {
    // CR ends a line too; the empty line between CR and LF holds nothing.
    for (std::string_view lines = TakeLine(text, '\n'); !lines.empty();) {
      const std::string_view line = TakeLine(lines, '\r');
      if (!line.starts_with('#')) continue;
      branches.Take(line);
      scanner.Start();
      for (size_t i = 1; i < line.size() && scanner.IsRunning(); ++i)
        if (scanner.Feed(line[i])) {
          includes.push_back(scanner.Found());
          includes.back().isElsewhere = branches.IsElsewhere();
        }
    }
  }
  return includes;
}

}  // namespace zendry
