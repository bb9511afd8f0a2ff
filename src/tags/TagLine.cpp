#include "tags/TagLine.h"

#include <algorithm>
#include <charconv>

#include "ByteBlock.h"

namespace zendry {
namespace {

mavro::ByteBlock EscapedIn(mavro::ByteBlock bytes) {
  return reinterpret_cast<mavro::ByteBlock>((bytes == '\\') | (bytes == '\t') | (bytes == '\n') |
                                            (bytes == '\r'));
}

// What stands behind the backslash for an escaped byte.
char EscapeLetter(char byte) {
  switch (byte) {
    case '\t':
      return 't';
    case '\n':
      return 'n';
    case '\r':
      return 'r';
    default:
      return '\\';
  }
}

// Plain stretches are appended as a whole, as nearly every text is one.
void AppendEscaped(std::string& line, std::string_view text) {
  const char* const end = text.data() + text.size();
  for (const char* at = text.data();;) {
    const char* const escaped = mavro::FindMarked(at, end, EscapedIn);
    line.append(at, escaped);
    if (escaped == end) return;
    line += '\\';
    line += EscapeLetter(*escaped);
    at = escaped + 1;
  }
}

// The field's key comes with the TAB before it and the colon behind it.
void AppendField(std::string& line, std::string_view key, std::string_view value) {
  if (value.empty()) return;
  line += key;
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

TagPlace::TagPlace(int lineNumber, char kind) {
  constexpr std::string_view cBeforeKind = ";\"\t", cBehindKind = "\tline:";
  char* at = std::to_chars(text.data(), text.data() + text.size(), lineNumber).ptr;
  const auto digits = static_cast<size_t>(at - text.data());
  at = std::copy(cBeforeKind.begin(), cBeforeKind.end(), at);
  *at++ = kind;
  at = std::copy(cBehindKind.begin(), cBehindKind.end(), at);
  at = std::copy_n(text.data(), digits, at);
  size = static_cast<size_t>(at - text.data());
}

void AppendTagFields(std::string& text, const TagFacts& facts, Language language) {
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
  line += TagPlace(facts.lineNumber, facts.kind).Text();
  AppendTagFields(line, facts, language);
  return line;
}

}  // namespace zendry
