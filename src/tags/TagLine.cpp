#include "tags/TagLine.h"

#include <array>

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

void AppendField(std::string& line, std::string_view key, std::string_view value) {
  if (value.empty()) return;
  line += '\t';
  line += key;
  line += ':';
  AppendEscaped(line, value);
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
  std::string scope(facts.namespaceName);
  if (facts.scopeKind.data() == nullptr) {
    AppendField(line, "namespace", scope);
    return;
  }
  if (!scope.empty()) scope += separator;
  scope += ScopeOf(facts, separator);
  AppendField(line, facts.scopeKind, scope);
}

}  // namespace

std::string EscapedForTags(std::string_view text) {
  std::string escaped;
  AppendEscaped(escaped, text);
  return escaped;
}

void AppendTagLine(std::string& line, const TagFacts& facts, std::string_view escapedFile,
                   Language language) {
  const std::string number = std::to_string(facts.lineNumber);
  AppendEscaped(line, facts.name);
  line += '\t';
  line += escapedFile;
  line.append(1, '\t').append(number).append(";\"\t").append(1, facts.kind);
  AppendField(line, "line", number);
  AppendScope(line, facts, language);
  AppendField(line, "signature", facts.signature);
  AppendField(line, "typeref", facts.typeRef);
  AppendField(line, "access", facts.access);
  AppendField(line, "implementation", facts.implementation);
  AppendField(line, "inherits", facts.inheritance);
  if (facts.isFileScope) line += "\tfile:";
}

std::string TagLine(const TagFacts& facts, std::string_view file, Language language) {
  std::string line;
  AppendTagLine(line, facts, EscapedForTags(file), language);
  return line;
}

}  // namespace zendry
