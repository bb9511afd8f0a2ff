#include "tags/TagLine.h"

#include <array>
#include <charconv>

namespace zendry {
namespace {

// The letter behind the backslash, or 0 for a byte that is written as it is.
constexpr std::array<char, 256> cEscapeLetters = [] {
  std::array<char, 256> letters{};
  letters['\\'] = '\\';
  letters['\t'] = 't';
  letters['\n'] = 'n';
  letters['\r'] = 'r';
  return letters;
}();

// Plain stretches are appended as a whole, as nearly every text is one.
void AppendEscaped(std::string& line, std::string_view text) {
  size_t start = 0;
  for (size_t i = 0; i < text.size(); ++i) {
    const char letter = cEscapeLetters[static_cast<unsigned char>(text[i])];
    if (letter == 0) [[likely]]
      continue;
    line.append(text, start, i - start);
    line += '\\';
    line += letter;
    start = i + 1;
  }
  line.append(text, start);
}

// The field's key comes with the TAB before it and the colon behind it.
void AppendField(std::string& line, std::string_view key, std::string_view value) {
  if (value.empty()) return;
  line += key;
  AppendEscaped(line, value);
}

void AppendPlace(std::string& line, int lineNumber, char kind) {
  std::array<char, 16> digits;
  const char* const end =
      std::to_chars(digits.data(), digits.data() + digits.size(), lineNumber).ptr;
  const std::string_view number(digits.data(), static_cast<size_t>(end - digits.data()));
  line += number;
  const char middle[] = {';', '"', '\t', kind, '\t', 'l', 'i', 'n', 'e', ':'};
  line.append(middle, sizeof middle);
  line += number;
}

// The scope of a class has the class's own name at its end.
std::string_view ScopeOf(const TagFacts& facts, std::string_view separator) {
  const std::string_view scope = facts.scopeName;
  if (facts.kind != 'c' && facts.kind != 's' && facts.kind != 'u') return scope;
  const size_t own = facts.name.size() + separator.size();
  return scope.substr(0, scope.size() > own ? scope.size() - own : 0);
}

void AppendScope(std::string& line, const TagFacts& facts, Language language) {
  const bool hasDots = language == Language::cCSharp || language == Language::cJava;
  const std::string_view separator = hasDots ? "." : "::";
  if (facts.scopeKind.data() == nullptr) {
    AppendField(line, "\tnamespace:", facts.namespaceName);
    return;
  }
  const std::string_view scope = ScopeOf(facts, separator);
  if (facts.namespaceName.empty() && scope.empty()) return;
  line += '\t';
  line += facts.scopeKind;
  AppendField(line, ":", facts.namespaceName);
  AppendField(line, facts.namespaceName.empty() ? ":" : separator, scope);
}

}  // namespace

std::string EscapedForTags(std::string_view text) {
  std::string escaped;
  AppendEscaped(escaped, text);
  return escaped;
}

void AppendTagName(std::string& text, const TagFacts& facts) {
  AppendEscaped(text, facts.name);
  text += '\t';
}

void AppendTagFields(std::string& text, const TagFacts& facts, Language language) {
  AppendPlace(text, facts.lineNumber, facts.kind);
  AppendScope(text, facts, language);
  AppendField(text, "\tsignature:", facts.signature);
  AppendField(text, "\ttyperef:", facts.typeRef);
  AppendField(text, "\taccess:", facts.access);
  AppendField(text, "\timplementation:", facts.implementation);
  AppendField(text, "\tinherits:", facts.inheritance);
  if (facts.isFileScope) text += "\tfile:";
}

std::string TagLine(const TagFacts& facts, std::string_view file, Language language) {
  std::string line;
  AppendTagName(line, facts);
  AppendEscaped(line, file);
  line += '\t';
  AppendTagFields(line, facts, language);
  return line;
}

}  // namespace zendry
