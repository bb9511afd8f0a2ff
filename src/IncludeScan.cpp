#include "IncludeScan.h"

#include <algorithm>
#include <optional>

namespace zendry {

namespace {

constexpr std::string_view cKeyword = "include";
constexpr size_t cMaxName = 244;

bool IsBlank(char c) {
  return c == ' ' || c == '\t' || c == '\v' || c == '\f';
}

// Characters of one line that aren't white space.
class LineCursor {
 public:
  explicit LineCursor(std::string_view text) : rest(text) {}

  // The next character; nothing at the end of the line.
  std::optional<char> Next() {
    while (!rest.empty()) {
      const char c = rest.front();
      rest.remove_prefix(1);
      if (!IsBlank(c)) return c;
    }
    return std::nullopt;
  }

 private:
  std::string_view rest;
};

// Reads what follows the "#" of a line.
std::optional<IncludeEntry> ReadInclude(std::string_view line) {
  LineCursor cursor(line);
  for (const char letter : cKeyword)
    if (cursor.Next() != letter) return std::nullopt;
  const std::optional<char> opening = cursor.Next();
  const char closing = opening == '<' ? '>' : '"';
  IncludeEntry entry{opening == '<' ? 0 : 1, {}};
  while (const std::optional<char> c = cursor.Next()) {
    if (c == closing) return entry;
    if (entry.name.size() == cMaxName) return std::nullopt;
    entry.name += *c;
  }
  return std::nullopt;
}

// Takes the first line, ended by `end`, off the text.
std::string_view TakeLine(std::string_view& text, char end) {
  const std::string_view line = text.substr(0, text.find(end));
  text.remove_prefix(std::min(line.size() + 1, text.size()));
  return line;
}

}  // namespace

std::vector<IncludeEntry> ScanIncludes(std::string_view text) {
  std::vector<IncludeEntry> includes;
  while (!text.empty()) {
    // CR ends a line too; the empty line between CR and LF holds nothing.
    for (std::string_view lines = TakeLine(text, '\n'); !lines.empty();) {
      const std::string_view line = TakeLine(lines, '\r');
      if (!line.starts_with('#')) continue;
      if (std::optional<IncludeEntry> entry = ReadInclude(line.substr(1)))
        includes.push_back(std::move(*entry));
    }
  }
  return includes;
}

}  // namespace zendry
