#include "tags/TagMacros.h"

#include <algorithm>

#include "tags/TagC.h"
#include "tags/TagChars.h"
#include "tags/TagParser.h"

namespace zendry {
namespace {

bool IsSmall(char c) {
  return c >= 'a' && c <= 'z';
}

bool IsCapital(char c) {
  return c >= 'A' && c <= 'Z';
}

// Names to the parser that stand before a type.
bool IsSpecifier(std::string_view word) {
  constexpr std::string_view cSpecifiers[] = {
      "constexpr", "inline",   "__inline",   "__inline__", "__extension__", "consteval",
      "constinit", "restrict", "_Noreturn",  "__restrict", "thread_local",  "_Thread_local",
      "__thread",  "__const",  "__volatile", "mutable",    "register"};
  return std::find(std::begin(cSpecifiers), std::end(cSpecifiers), word) != std::end(cSpecifiers);
}

bool IsTypeKeyword(Keyword keyword) {
  switch (keyword) {
    case Keyword::cBool:
    case Keyword::cChar:
    case Keyword::cDouble:
    case Keyword::cFloat:
    case Keyword::cInt:
    case Keyword::cLong:
    case Keyword::cShort:
    case Keyword::cSigned:
    case Keyword::cUnsigned:
    case Keyword::cVoid:
    case Keyword::cWcharT:
      return true;
    default:
      return false;
  }
}

bool IsParameterKeyword(Keyword keyword) {
  return IsTypeKeyword(keyword) || keyword == Keyword::cConst || keyword == Keyword::cStruct ||
         keyword == Keyword::cEnum || keyword == Keyword::cUnion || keyword == Keyword::cClass ||
         keyword == Keyword::cTypename || keyword == Keyword::cVolatile;
}

// Walks over the text of a group. Strings and comments are passed over.
class GroupScan {
 public:
  GroupScan(std::string_view newText, Language newLanguage)
      : text(newText), language(newLanguage) {}

  GroupAhead Run() {
    while (at < text.size() && depth > 0) Step();
    GroupAhead group;
    if (depth > 0) return group;
    group.isClosed = true;
    group.looksLikeParameters = isEmpty || hasParameters;
    while (at < text.size() && IsSpace(text[at])) ++at;
    if (at < text.size()) group.after = text[at];
    group.rest = text.substr(at);
    return group;
  }

 private:
  enum Before { cStart, cWord, cSign, cOther };

  static bool IsSpace(char c) { return IsClass(static_cast<unsigned char>(c), cSpaceChar); }
  static bool IsWordPart(char c) { return IsClass(static_cast<unsigned char>(c), cIdentifierChar); }

  void Step() {
    const char c = text[at];
    if (IsSpace(c)) {
      ++at;
      return;
    }
    if (c == '/' && text.substr(at, 2) == "/*") {
      const size_t end = text.find("*/", at + 2);
      at = end == text.npos ? text.size() : end + 2;
      return;
    }
    if (c == ')' && --depth == 0) {
      // `A *` and `A &` end a parameter without a name.
      hasParameters = hasParameters || before == cSign;
      ++at;
      return;
    }
    isEmpty = false;
    if (c == '"' || c == '\'')
      PassLiteral(c);
    else if (IsWordPart(c))
      PassWord();
    else
      PassSign(c);
  }

  void PassLiteral(char quote) {
    for (++at; at < text.size() && text[at] != quote; ++at)
      if (text[at] == '\\') ++at;
    ++at;
    before = cOther;
  }

  void PassWord() {
    const size_t start = at;
    while (at < text.size() && IsWordPart(text[at])) ++at;
    if (!IsClass(static_cast<unsigned char>(text[start]), cIdentifierStart)) {
      before = cOther;
      return;
    }
    const Keyword keyword = MeaningOf(text.substr(start, at - start), language).keyword;
    if (depth == 1 && (before == cWord || IsParameterKeyword(keyword))) hasParameters = true;
    before = cWord;
  }

  void PassSign(char c) {
    ++at;
    if (c == '(') ++depth;
    if (text.substr(at - 1, 3) == "...") hasParameters = true;
    if (c == ',' && before == cSign) hasParameters = true;
    const bool isSign =
        depth == 1 && (c == '*' || c == '&') && (before == cWord || before == cSign);
    before = isSign ? cSign : cOther;
  }

  std::string_view text;
  Language language;
  size_t at = 0;
  int depth = 1;
  bool isEmpty = true;
  bool hasParameters = false;
  Before before = cStart;
};

}  // namespace

bool IsInCapitals(std::string_view name) {
  if (name.size() < 2 || IsSmall(name[0]) || IsSmall(name[1])) return false;
  return std::none_of(name.begin(), name.end(), IsSmall) &&
         std::any_of(name.begin(), name.end(), IsCapital);
}

bool LooksLikeMacro(std::string_view name) {
  return name.starts_with("__") || IsInCapitals(name);
}

bool IsTypeWord(const Token& token) {
  if (token.IsName()) return !IsSpecifier(token.name);
  return token.Is(TOKEN_BRACE_CLOSE) || (token.Is(TOKEN_KEYWORD) && IsTypeKeyword(token.keyword));
}

GroupAhead LookAtGroup(std::string_view text, Language language) {
  return GroupScan(text, language).Run();
}

// The group whose opening parenthesis has been read last.
GroupAhead TagC::LookAtNextGroup() const {
  const std::string_view ahead = theCpp.lines.Ahead();
  const GroupAhead group = LookAtGroup(ahead, language);
  theTagParser.NoteLook(group.isClosed ? group.rest.data() : ahead.data() + ahead.size());
  return group;
}

// True if a type comes before the token that was active n tokens ago. A name in capitals counts
// when it `mayBeInCapitals`: it is a type or the macro of a library's exports.
bool TagC::HasTypeBefore(int n, bool mayBeInCapitals) const {
  Statement& st = *currentStatement;
  for (++n; n <= st.TokensBefore(); ++n) {
    const Token& token = st.earlierToken(n);
    if (IsTypeWord(token) && (mayBeInCapitals || !token.IsName() || !IsInCapitals(token.name)))
      return true;
  }
  return false;
}

// True if the text is a declarator up to the character behind its name: `*a;`, `a[`, `a(`. A name
// with parameters isn't that of the class, as `MACRO(x) A();` declares a constructor.
bool TagC::IsDeclaratorAhead(std::string_view text, bool mayHaveParameters) const {
  const size_t start = text.find_first_not_of(" \t\n*&");
  if (start == text.npos || !IsClass(static_cast<unsigned char>(text[start]), cIdentifierStart))
    return false;
  size_t end = start;
  while (end < text.size() && IsClass(static_cast<unsigned char>(text[end]), cIdentifierChar))
    ++end;
  const std::string_view word = text.substr(start, end - start);
  const WordMeaning meaning = MeaningOf(word, language);
  if (meaning.keyword != Keyword::cNone || meaning.modern != ModernWord::cNone) return false;
  end = text.find_first_not_of(" \t\n", end);
  if (end == text.npos || LooksLikeMacro(word)) return false;
  if (text[end] != '(') return std::string_view(";,[=").find(text[end]) != std::string_view::npos;
  const Statement* parent = currentStatement->parent;
  return mayHaveParameters && (parent == nullptr || parent->openedName.name != word);
}

// `STACK_OF(A) *a;`: the macro makes a type. Its arguments vanish, its name stays as the type.
bool TagC::TakeTypeMacro() {
  Statement& st = *currentStatement;
  const Token& name = st.earlierToken(1);
  const bool isPossible = IsCOrCpp() && name.IsName() && name.modern == ModernWord::cNone &&
                          !st.seen.inFunction && !st.seen.isQualified && !st.context.IsName() &&
                          !IsContextual(st.declaration) && st.declaration != DECLARES_NAMESPACE &&
                          !st.IsParent(DECLARES_ENUM) && !HasTypeBefore(1, true);
  if (!isPossible) return false;
  const GroupAhead group = LookAtNextGroup();
  if (!group.isClosed || !IsDeclaratorAhead(group.rest, IsInCapitals(name.name))) return false;
  skipBalanced("()");
  return true;
}

// Handles a group that belongs to the macro before it. Returns false if it doesn't.
bool TagC::TakeMacroGroup() {
  Statement& st = *currentStatement;
  const Token& name = st.earlierToken(1);
  if (TakeTypeMacro()) return true;
  if (IsJavaOrCSharp() || !name.IsName() || !LooksLikeMacro(name.name)) return false;
  if (IsContextual(st.declaration) || st.declaration == DECLARES_NAMESPACE)
    return TakeMacroInHead();
  const Token& declared = st.earlierToken(2);
  if (st.TokensBefore() < 2 || !declared.IsName() || LooksLikeMacro(declared.name)) return false;
  const GroupAhead group = LookAtNextGroup();
  if (!group.isClosed) return false;
  const bool isDouble = theCpp.lines.Ahead().starts_with('(');
  if (group.looksLikeParameters || isDouble || group.after == '{') {
    // `T min PREVENT_MACRO (int a)`, `int f OF((int))`: the parameters of the name before it.
    const bool mayBeInCapitals = isDouble;
    if (!HasTypeBefore(2, mayBeInCapitals)) return false;
    st.stepTokenBack(theCpp.lines.tagLine);
    return false;
  }
  if (!HasTypeBefore(2, true)) return false;
  skipBalanced("()");
  st.stepTokenBack(theCpp.lines.tagLine);
  return true;
}

// `class EXPORT(x) A`, `enum E UNDERLYING(int) {`, `namespace MACRO(x) {`.
bool TagC::TakeMacroInHead() {
  Statement& st = *currentStatement;
  const GroupAhead group = LookAtNextGroup();
  if (!group.isClosed) return false;
  const bool isFirst = IsForwardWord(st.earlierToken(2));
  const bool isAfterName = st.earlierToken(2).IsName() && IsForwardWord(st.earlierToken(3)) &&
                           (group.after == '{' || group.after == ':');
  const bool goesOn = group.after == '{' || group.after == ':' || group.after == ';' ||
                      IsClass(static_cast<unsigned char>(group.after), cIdentifierStart);
  if (!(isFirst && goesOn) && !isAfterName) return false;
  if (isAfterName && st.declaration == DECLARES_STRUCT && group.looksLikeParameters) return false;
  skipBalanced("()");
  const bool namesBlock =
      isFirst && st.declaration == DECLARES_NAMESPACE && (group.after == '{' || group.after == ':');
  if (!namesBlock) st.stepTokenBack(theCpp.lines.tagLine);
  return true;
}

// The name that a statement or a head declares, if `name` is the last word before its end: a macro
// may follow it.
const Token& TagC::DeclaredName(const Token& name, bool isHead) const {
  Statement& st = *currentStatement;
  if (IsJavaOrCSharp() || !LooksLikeMacro(name.name) || st.TokensBefore() < 2) return name;
  const Token& before = st.earlierToken(2);
  if (!before.IsName() || LooksLikeMacro(before.name)) return name;
  if (isHead) return before;
  return HasTypeBefore(2, true) ? before : name;
}

// False for the call of a macro: a name in capitals without a type, and in a class any name without
// a type that isn't that of the class.
bool TagC::CanBeFunction(Statement& st) const {
  if (!IsCOrCpp() || IsDeclaratorBehindType()) return true;
  return !st.HasContextualParent() && !IsInCapitals(st.earlierToken(2).name);
}

// `TEST_F(A, b) {`: the block is that of a function b of the class A.
bool TagC::NameMacroBody(Statement& st) {
  const size_t comma = argText.find(',');
  if (!IsCpp() || st.HasContextualParent() || comma == std::string::npos) return false;
  const auto isWord = [](std::string_view text) {
    return !text.empty() && IsClass(static_cast<unsigned char>(text[0]), cIdentifierStart) &&
           std::all_of(text.begin(), text.end(), [](char c) {
             return IsClass(static_cast<unsigned char>(c), cIdentifierChar);
           });
  };
  const size_t start = argText.find_first_not_of(' ', comma + 1);
  const std::string fixture = argText.substr(1, comma - 1);
  const std::string name = argText.substr(start, argText.size() - 1 - start);
  if (!isWord(fixture) || !isWord(name)) return false;
  st.context.name = fixture;
  st.context.type = TOKEN_NAME;
  st.earlierToken(2).name = name;
  st.openedName = st.earlierToken(2);
  st.declaration = DECLARES_FUNCTION;
  argText = "()";
  return true;
}

}  // namespace zendry
