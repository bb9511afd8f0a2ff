#include "tags/MacroText.h"

#include <algorithm>
#include <cctype>

namespace zendry {

namespace {

constexpr size_t cMostText = 8192;
constexpr std::string_view cBlanks = " \t";

bool IsNameStart(char c) {
  return c == '_' || std::isalpha(static_cast<unsigned char>(c)) != 0;
}

bool IsNameChar(char c) {
  return IsNameStart(c) || (c >= '0' && c <= '9');
}

void SkipBlanks(std::string_view& text) {
  text.remove_prefix(std::min(text.find_first_not_of(cBlanks), text.size()));
}

void DropBlanksAtEnd(std::string& text) {
  text.resize(text.find_last_not_of(cBlanks) + 1);
}

// Takes a word off the beginning of a text, and the blanks before it. False for another word.
bool TakeWord(std::string_view& text, std::string_view word) {
  SkipBlanks(text);
  if (!text.starts_with(word)) return false;
  text.remove_prefix(word.size());
  return true;
}

// The first line of a text with those that it is continued on.
std::string JoinedLine(std::string_view text) {
  std::string line;
  for (size_t at = 0; at < text.size() && text[at] != '\n' && line.size() < cMostText; ++at) {
    const bool isSpliced = text[at] == '\\' && text.substr(at + 1).starts_with('\n');
    const bool isSplicedTwice = text[at] == '\\' && text.substr(at + 1).starts_with("\r\n");
    if (isSpliced || isSplicedTwice) at += isSpliced ? 1 : 2;
    line += isSpliced || isSplicedTwice ? ' ' : text[at];
  }
  return line;
}

// The end of the literal that begins at `at`.
size_t EndOfLiteral(std::string_view body, size_t at) {
  const char quote = body[at];
  for (++at; at < body.size() && body[at] != quote; ++at)
    if (body[at] == '\\') ++at;
  return std::min(at + 1, body.size());
}

// A line with a blank for each comment, as a compiler reads it.
std::string WithoutComments(std::string_view line) {
  std::string text;
  for (size_t at = 0; at < line.size();) {
    const std::string_view rest = line.substr(at);
    if (rest.starts_with("//")) break;
    size_t end = at + 1;
    if (rest.starts_with("/*")) {
      const size_t close = line.find("*/", at + 2);
      text += ' ';
      at = close == line.npos ? line.size() : close + 2;
      continue;
    }
    const bool isSeparator = line[at] == '\'' && at > 0 && IsNameChar(line[at - 1]);
    if ((line[at] == '"' || line[at] == '\'') && !isSeparator) end = EndOfLiteral(line, at);
    text += line.substr(at, end - at);
    at = end;
  }
  return text;
}

// Reads "a, b)" after the opening parenthesis. False if it doesn't end.
bool TakeParameters(std::string_view& text, MacroText& macro) {
  std::string name;
  const auto finish = [&] {
    if (name.ends_with("...")) {
      macro.isVariadic = true;
      name.resize(name.size() - 3);
      if (name.empty()) name = "__VA_ARGS__";
    }
    if (!name.empty()) macro.parameters.push_back(std::move(name));
    name.clear();
  };
  while (!text.empty()) {
    const char c = text.front();
    text.remove_prefix(1);
    if (c == ',' || c == ')') finish();
    if (c == ')') return true;
    if (IsNameChar(c) || c == '.') name += c;
  }
  return false;
}

// Writes a body with its parameters replaced.
class Expansion {
 public:
  Expansion(const MacroText& theMacro, const std::vector<std::string>& theArguments)
      : body(theMacro.body), parameters(theMacro.parameters), arguments(theArguments) {}

  std::optional<std::string> Write() {
    while (at < body.size() && out.size() <= cLongestExpansion) WriteNext();
    if (out.size() > cLongestExpansion) return std::nullopt;
    return std::move(out);
  }

 private:
  void WriteNext() {
    const char c = body[at];
    if (body.substr(at).starts_with("##"))
      Paste();
    else if (c == '#')
      Quote();
    else if (c == '"' || c == '\'')
      Copy(EndOfLiteral(body, at));
    else if (IsNameStart(c))
      WriteName();
    else
      Copy(c >= '0' && c <= '9' ? EndOfName() : at + 1);
  }

  void Copy(size_t end) {
    out += body.substr(at, end - at);
    at = end;
  }

  // Joins what comes before and after.
  void Paste() {
    DropBlanksAtEnd(out);
    at = std::min(body.find_first_not_of(cBlanks, at + 2), body.size());
  }

  void Quote() {
    at = std::min(body.find_first_not_of(cBlanks, at + 1), body.size());
    at = EndOfName();
    out += "\"\"";
  }

  size_t EndOfName() const {
    size_t end = at;
    while (end < body.size() && IsNameChar(body[end])) ++end;
    return end;
  }

  void WriteName() {
    const size_t end = EndOfName();
    const auto found = std::find(parameters.begin(), parameters.end(), body.substr(at, end - at));
    if (found == parameters.end()) return Copy(end);
    out += arguments[found - parameters.begin()];
    at = end;
  }

  const std::string_view body;
  const std::vector<std::string>& parameters;
  const std::vector<std::string>& arguments;
  std::string out;
  size_t at = 0;
};

}  // namespace

std::optional<MacroText> ReadMacro(std::string_view text, int line, std::string_view name) {
  for (int skipped = 1; skipped < line && !text.empty(); ++skipped)
    text.remove_prefix(std::min(text.find('\n'), text.size() - 1) + 1);
  const std::string whole = WithoutComments(JoinedLine(text));
  std::string_view rest = whole;
  if (!TakeWord(rest, "#") || !TakeWord(rest, "define") || !TakeWord(rest, name))
    return std::nullopt;
  if (!rest.empty() && IsNameChar(rest.front())) return std::nullopt;
  MacroText macro;
  macro.takesArguments = rest.starts_with('(');
  if (macro.takesArguments) {
    rest.remove_prefix(1);
    if (!TakeParameters(rest, macro)) return std::nullopt;
  }
  macro.body = rest;
  return macro;
}

std::optional<std::string> Expand(const MacroText& macro,
                                  const std::vector<std::string>& arguments) {
  std::vector<std::string> given = arguments;
  const size_t wanted = macro.parameters.size();
  if (macro.isVariadic) {
    while (given.size() > wanted) {
      given[given.size() - 2] += "," + given.back();
      given.pop_back();
    }
    if (given.size() + 1 == wanted) given.emplace_back();
  }
  if (given.size() != wanted) return std::nullopt;
  return Expansion(macro, given).Write();
}

}  // namespace zendry
