#include "code/TypeText.h"

#include "code/CodeTokens.h"
#include "code/DeclScan.h"
#include "tags/TagMacros.h"

namespace zendry {

namespace {

constexpr int cMostDepth = 12;  // of template arguments within each other
constexpr size_t cMostParts = 16;
constexpr size_t cMostArguments = 16;

// Words that make up a type together: "unsigned long int".
constexpr std::string_view cBuiltIn =
    "bool char char8_t char16_t char32_t double float int long short signed unsigned void wchar_t";

std::optional<TypeText> ReadTypeAt(const CodeTokens& tokens, int& at, int depth);

// Moves past an argument that isn't a type, such as "3 + 4": to the "," or ">".
void SkipArgument(const CodeTokens& tokens, int& at, int end) {
  while (at < end && !tokens.Is(at, ",")) {
    if (tokens.IsOpening(at)) at = tokens.Partner(at);
    ++at;
  }
}

TypeText ReadArgument(const CodeTokens& tokens, int& at, int end, int depth) {
  const int start = at;
  std::optional<TypeText> type = ReadTypeAt(tokens, at, depth);
  if (type) {
    type->pointers = ReadPointers(tokens, at);
    if (tokens.Is(at, "[") && tokens.IsOpening(at)) {
      ++type->pointers;
      at = tokens.Partner(at) + 1;
    }
    if (at == end || tokens.Is(at, ",")) return *type;
    // For a function type the result counts.
    if (tokens.Is(at, "(")) {
      SkipArgument(tokens, at, end);
      return *type;
    }
  }
  at = start;
  SkipArgument(tokens, at, end);
  return {};
}

// Begins at the "<" and ends after the ">".
bool ReadArguments(const CodeTokens& tokens, int& at, TypePart& part, int depth) {
  const int end = tokens.AngleEnd(at);
  if (end < 0 || depth >= cMostDepth) return false;
  for (++at; at < end && part.arguments.size() < cMostArguments; ++at)
    part.arguments.push_back(ReadArgument(tokens, at, end, depth + 1));
  at = end + 1;
  return true;
}

// "unsigned long int" is one name.
void ReadBuiltIn(const CodeTokens& tokens, int& at, TypeText& type) {
  while (tokens.IsOneOf(at + 1, cBuiltIn) || tokens.Is(at + 1, "const")) ++at;
  type.path.push_back({std::string(tokens.Text(tokens.Is(at, "const") ? at - 1 : at)), {}});
  ++at;
}

std::optional<TypeText> ReadTypeAt(const CodeTokens& tokens, int& at, int depth) {
  TypeText type;
  while (IsPassedOver(tokens.Text(at))) ++at;
  if (tokens.IsOneOf(at, cBuiltIn)) {
    ReadBuiltIn(tokens, at, type);
    return type;
  }
  if (tokens.Is(at, "::")) ++at;
  while (type.path.size() < cMostParts) {
    if (!tokens.IsWord(at) || !CanNameType(tokens.Text(at))) return std::nullopt;
    TypePart& part = type.path.emplace_back();
    part.name = tokens.Text(at++);
    if (tokens.Is(at, "<") && !ReadArguments(tokens, at, part, depth)) return std::nullopt;
    if (!tokens.Is(at, "::")) return type;
    ++at;
    if (tokens.Is(at, "template")) ++at;
  }
  return std::nullopt;
}

}  // namespace

const std::string& TypeText::Name() const {
  static const std::string cNone;
  return path.empty() ? cNone : path.back().name;
}

const std::vector<TypeText>& TypeText::Arguments() const {
  static const std::vector<TypeText> cNone;
  return path.empty() ? cNone : path.back().arguments;
}

TypeText TypeText::Argument(size_t index) const {
  return index < Arguments().size() ? Arguments()[index] : TypeText();
}

std::string TypeText::Names(size_t first) const {
  std::string names;
  for (size_t i = first; i < path.size(); ++i) names += (names.empty() ? "" : "::") + path[i].name;
  return names;
}

TypeText TypeText::Outer() const {
  TypeText outer;
  if (!path.empty()) outer.path.assign(path.begin(), path.end() - 1);
  return outer;
}

bool IsBuiltIn(const TypeText& type) {
  return type.path.size() == 1 && IsInList(cBuiltIn, type.Name());
}

TypeText TypeOfName(std::string_view name, bool isExact) {
  TypeText type;
  type.path.push_back({std::string(name), {}});
  type.isExact = isExact;
  return type;
}

std::optional<TypeText> ReadType(const CodeTokens& tokens, int& at) {
  return ReadTypeAt(tokens, at, 0);
}

bool IsMacroBeforePointer(const CodeTokens& tokens, int at) {
  int type = at - 1;
  while (tokens.IsOneOf(type, "const volatile")) --type;
  const bool isBetween = tokens.Is(at + 1, "*") && tokens.IsWord(type) && tokens.IsWord(at);
  return isBetween && IsInCapitals(tokens.Text(at)) && CanNameType(tokens.Text(type));
}

int ReadPointers(const CodeTokens& tokens, int& at) {
  int pointers = 0;
  for (; tokens.IsOneOf(at, "* & && const volatile") || IsMacroBeforePointer(tokens, at); ++at)
    if (tokens.Is(at, "*")) ++pointers;
  return pointers;
}

std::optional<TypeText> ReadTypeText(std::string_view text) {
  const CodeTokens tokens{std::string(text)};
  int at = 0;
  std::optional<TypeText> type = ReadType(tokens, at);
  if (!type) return std::nullopt;
  type->pointers = ReadPointers(tokens, at);
  if (at < tokens.Count()) return std::nullopt;
  return type;
}

std::string Print(const TypeText& type) {
  std::string text;
  for (const TypePart& part : type.path) {
    text += (text.empty() ? "" : "::") + part.name;
    if (part.arguments.empty()) continue;
    std::string arguments;
    for (const TypeText& argument : part.arguments) arguments += "," + Print(argument);
    text += "<" + arguments.substr(1) + ">";
  }
  return text + std::string(static_cast<size_t>(type.pointers), '*');
}

}  // namespace zendry
