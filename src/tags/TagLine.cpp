#include "tags/TagLine.h"

namespace zendry {
namespace {

struct Escape {
  char plain;
  char letter;
};

constexpr Escape cEscapes[] = {{'\\', '\\'}, {'\t', 't'}, {'\n', 'n'}, {'\r', 'r'}};

void AppendEscaped(std::string& line, std::string_view text) {
  for (const char c : text) {
    char letter = 0;
    for (const Escape& escape : cEscapes)
      if (escape.plain == c) letter = escape.letter;
    if (letter != 0) line += '\\';
    line += letter != 0 ? letter : c;
  }
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

std::string TagLine(const TagFacts& facts, std::string_view file, Language language) {
  std::string line;
  const std::string number = std::to_string(facts.lineNumber);
  AppendEscaped(line, facts.name);
  line += '\t';
  AppendEscaped(line, file);
  line.append(1, '\t').append(number).append(";\"\t").append(1, facts.kind);
  AppendField(line, "line", number);
  AppendScope(line, facts, language);
  AppendField(line, "signature", facts.signature);
  AppendField(line, "typeref", facts.typeRef);
  AppendField(line, "access", facts.access);
  AppendField(line, "implementation", facts.implementation);
  AppendField(line, "inherits", facts.inheritance);
  if (facts.isFileScope) line += "\tfile:";
  return line;
}

}  // namespace zendry
