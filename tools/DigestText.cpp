#include "DigestText.h"

#include <algorithm>
#include <cctype>
#include <iterator>

namespace zendry {

namespace {

constexpr std::string_view cDropped[] = {"typename",     "class",     "struct",   "enum",
                                         "constexpr",    "noexcept",  "template", "volatile",
                                         "__restrict__", "__restrict"};
constexpr std::string_view cTagWords[] = {"struct", "union", "enum"};
// Names that must not appear without their underscores.
constexpr std::string_view cKeywords[] = {
    "alignof", "asm",    "auto",   "bool", "const",  "decltype", "default",  "delete",
    "final",   "float",  "inline", "int",  "int128", "long",     "operator", "private",
    "short",   "signed", "static", "this", "union",  "unsigned", "void",     "volatile"};
// Templates that say when a member exists; they don't describe its type.
constexpr std::string_view cConditions[] = {"enable_if",     "enable_if_t", "__enable_if",
                                            "__enable_if_t", "_Requires",   "_Require"};
constexpr size_t cMostInAngles = 12;  // tokens of template arguments that are still readable
constexpr size_t cMostInDefault = 5;  // tokens of a default argument
constexpr size_t cLongestType = 80;
constexpr size_t cLongestList = 400;

// The index after the bracket that matches the one at `open`.
size_t AfterMatch(const CppTokens& tokens, size_t open) {
  CppCursor cursor(tokens);
  cursor.position = open;
  if (cursor.Is("<"))
    cursor.SkipAngles();
  else
    cursor.SkipBalanced();
  return std::min(cursor.position, tokens.size());
}

bool IsReadable(const CppToken& token) {
  constexpr std::string_view cReadable[] = {",", "<", ">", "::", "*", "&", "&&", "..."};
  return token.kind == CppToken::Kind::cWord || token.kind == CppToken::Kind::cNumber ||
         IsOneOf(token.text, cReadable);
}

bool IsWord(const CppToken& token) {
  return token.kind == CppToken::Kind::cWord || token.kind == CppToken::Kind::cNumber;
}

// True if there is a blank between two tokens.
bool IsApart(const CppToken& left, const CppToken& right) {
  constexpr std::string_view cAfterType[] = {"&", "*", "&&", ">", "...", ",", ")"};
  if (left.Is(",") || left.Is("=") || right.Is("=")) return true;
  return IsWord(right) && (IsWord(left) || (IsOneOf(left.text, cAfterType) && !left.Is(")")));
}

// The tokens of each parameter.
std::vector<CppTokens> SplitParameters(const CppTokens& tokens) {
  std::vector<CppTokens> parameters(1);
  for (size_t i = 0; i < tokens.size();) {
    if (tokens[i].Is(",")) {
      parameters.emplace_back();
      ++i;
      continue;
    }
    const bool isName = i > 0 && tokens[i - 1].kind == CppToken::Kind::cWord;
    const bool isOpening = tokens[i].Is("(") || tokens[i].Is("[") || tokens[i].Is("{") ||
                           (tokens[i].Is("<") && isName);
    const size_t end = isOpening ? AfterMatch(tokens, i) : i + 1;
    for (; i < end; ++i) parameters.back().push_back(tokens[i]);
  }
  return parameters;
}

}  // namespace

std::string DigestText::Name(std::string_view name) const {
  if (name.starts_with(cFamilyPrefix) && families.contains(name.substr(cFamilyPrefix.size())))
    return std::string(name.substr(cFamilyPrefix.size()));
  const size_t start = std::min(name.find_first_not_of('_'), name.size());
  const std::string_view shortened = name.substr(start);
  const bool isName = !shortened.empty() && !std::isdigit(static_cast<unsigned char>(shortened[0]));
  return std::string(isName && !IsOneOf(shortened, cKeywords) ? shortened : name);
}

// The tokens without parts that readers don't need: "std::", template arguments that compute,
// decltype.
CppTokens DigestText::Simplified(const CppTokens& tokens) const {
  CppTokens simple;
  for (size_t i = 0; i < tokens.size();) {
    const CppToken& token = tokens[i];
    const bool isTag = keepsTags && IsOneOf(token.text, cTagWords);
    if ((IsOneOf(token.text, cDropped) && !isTag) || token.kind == CppToken::Kind::cLiteral) {
      ++i;
    } else if (token.Is("std") && i + 1 < tokens.size() && tokens[i + 1].Is("::")) {
      i += 2;
    } else if (token.Is("::") &&
               (simple.empty() || !(IsWord(simple.back()) || simple.back().Is(">")))) {
      ++i;
    } else if (token.Is("decltype") || token.Is("__typeof__")) {
      simple.push_back({CppToken::Kind::cWord, "auto", -1});
      i = AfterMatch(tokens, i + 1);
    } else if (token.Is("[") && i + 1 < tokens.size() && tokens[i + 1].Is("[")) {
      i = AfterMatch(tokens, i);
    } else if (token.Is("<") && !simple.empty() && simple.back().kind == CppToken::Kind::cWord) {
      const size_t end = AfterMatch(tokens, i);
      const bool isFamily = Name(simple.back().text) != simple.back().text &&
                            simple.back().text.starts_with(cFamilyPrefix);
      const auto first = tokens.begin() + static_cast<std::ptrdiff_t>(i);
      const auto last = tokens.begin() + static_cast<std::ptrdiff_t>(end);
      if (!isFamily && end - i <= cMostInAngles && std::all_of(first, last, IsReadable)) {
        const CppTokens inner = Simplified(CppTokens(first + 1, last - 1));
        simple.push_back(token);
        simple.insert(simple.end(), inner.begin(), inner.end());
        simple.push_back(*(last - 1));
      }
      i = end;
    } else {
      simple.push_back(token);
      ++i;
    }
  }
  return simple;
}

std::string DigestText::Joined(const CppTokens& tokens) const {
  std::string text;
  for (size_t i = 0; i < tokens.size(); ++i) {
    if (i > 0 && IsApart(tokens[i - 1], tokens[i])) text += ' ';
    text += tokens[i].kind == CppToken::Kind::cWord ? Name(tokens[i].text)
                                                    : std::string(tokens[i].text);
  }
  return text;
}

std::string DigestText::Type(const CppTokens& tokens) const {
  const CppTokens simple = Simplified(tokens);
  const bool isReadable = std::all_of(simple.begin(), simple.end(), IsReadable);
  if (simple.empty() || !isReadable || IsOneOf(simple.front().text, cConditions)) return "auto";
  std::string text = Joined(simple);
  return text.size() > cLongestType ? "auto" : text;
}

std::string DigestText::Parameters(const CppTokens& tokens) const {
  std::string text;
  for (const CppTokens& parameter : SplitParameters(tokens)) {
    const auto isAssign = [](const CppToken& token) { return token.Is("="); };
    const auto assign = std::find_if(parameter.begin(), parameter.end(), isAssign);
    const auto inDefault = static_cast<size_t>(parameter.end() - assign);
    const auto isHard = [](const CppToken& token) {
      return token.kind == CppToken::Kind::cLiteral || token.Is("<") || token.Is("{");
    };
    const bool keepsDefault =
        inDefault <= cMostInDefault && std::none_of(assign, parameter.end(), isHard);
    const CppTokens kept(parameter.begin(), keepsDefault ? parameter.end() : assign);
    text += (text.empty() ? "" : ", ") + Joined(Simplified(kept));
  }
  return "(" + (text.size() > cLongestList ? "..." : text) + ")";
}

}  // namespace zendry
