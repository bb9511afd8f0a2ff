#include <algorithm>

#include "tags/TagC.h"
#include "tags/TagChars.h"
#include "tags/TagMacros.h"
#include "tags/TagParser.h"

namespace zendry {

// A group in parentheses is a parameter list, a name such as in `int (*name)(int)`, or neither,
// such as the arguments of a macro.
void TagC::readParenGroup() {
  Statement& st = *currentStatement;
  if (st.seen.inFunction && !st.seen.assignment) st.seen.cannotBeVariable = true;
  const bool isOfMacro = LooksLikeMacro(st.earlierToken(1).name);
  if (st.earlierToken(1).Is(TOKEN_NONE) || TakeMacroGroup()) return;
  ParenGroup group;
  group.isOfMacro = isOfMacro;
  group.isOldStyleList = language == Language::cC;
  inArgText = theCpp.keepsLiterals = true;
  argText = "(";
  ReadGroupChars(group);
  CloseGroup(group);
  inArgText = theCpp.keepsLiterals = false;
  AnalyzeGroup(group);
}

void TagC::ReadGroupChars(ParenGroup& group) {
  while (!group.argsInArgs && group.depth > 0 && (group.isOldStyleList || group.mayBeName)) {
    const int c = NextChar();
    if (c == -1) return;
    AppendToArgText(c);
    ReadGroupChar(group, c);
    group.firstChar = false;
  }
}

void TagC::ReadGroupChar(ParenGroup& group, int c) {
  Token& active = currentStatement->activeToken();
  switch (c) {
    case '&':
    case '*':
      group.isPointer = true;
      group.isOldStyleList = false;
      if (group.wordCount == 0) group.isArgList = false;
      active.Reset(theCpp.lines.tagLine);
      break;
    case ':':
      group.isOldStyleList = false;
      break;
    case '.':
      group.mayBeName = group.isOldStyleList = false;
      break;
    case ',':
      group.mayBeName = false;
      if (!group.isOldStyleList) break;
      ++group.paramCount;
      group.wordCount = 0;
      break;
    case '=':
      group.isOldStyleList = group.mayBeName = false;
      if (!group.firstChar) break;
      group.isArgList = false;
      skipBalanced("()");
      group.depth = 0;
      break;
    case '[':
      group.isOldStyleList = false;
      skipBalanced("[]");
      break;
    case '<':
      group.isOldStyleList = false;
      skipBalanced("<>");
      break;
    case ')':
      if (group.firstChar) group.paramCount = 0;
      --group.depth;
      break;
    case '(':
      OpenInGroup(group);
      break;
    default:
      if (theCpp.IsIdentifierStart(c)) {
        ReadGroupWord(group, c);
      } else {
        group.isArgList = group.isOldStyleList = group.mayBeName = false;
        group.badContents = true;
      }
  }
}

namespace {

// True for the rest of the qualifier in `(A::*name)(int)`.
bool IsMemberPointer(std::string_view text) {
  const size_t star = text.find('*');
  if (star == text.npos || star < 2 || text.substr(star - 2, 2) != "::") return false;
  return std::all_of(text.begin(), text.begin() + star, [](char c) {
    return IsClass(static_cast<unsigned char>(c), cIdentifierChar | cBlankChar) || c == ':' ||
           c == '<' || c == '>' || c == ',';
  });
}

}  // namespace

// A parenthesis within the group: that of a macro call, of a pointer to a function, of parameters
// within parameters, or one without a meaning here.
void TagC::OpenInGroup(ParenGroup& group) {
  group.isOldStyleList = false;
  if (group.firstChar) {
    group.mayBeName = false;
    // No parameter begins with a parenthesis, but those that a macro takes as one argument do.
    group.badContents = IsCpp() && currentStatement->earlierToken(1).IsName() && !group.isOfMacro &&
                        !LookAtNextGroup().looksLikeParameters;
    theCpp.sourceUngetc('(');
    argText.clear();
    skipBalanced("()");
    group.depth = 0;
    if (!argText.empty()) argText.pop_back();
  } else if (currentStatement->activeToken().Is(TOKEN_PAREN_NAME)) {
    const int c = NextChar();
    if (c == '*' || c == '&') {
      argText += static_cast<char>(c);
      skipBalanced("()");
      const int next = NextChar();
      if (next == '(') {
        argText += '(';
        skipBalanced("()");
      } else {
        theCpp.sourceUngetc(next);
      }
    } else if (group.wordCount == 1 && !IsMemberPointer(theCpp.lines.Ahead()) &&
               MayHoldParameters(group) && EndsGroupAhead(c)) {
      theCpp.sourceUngetc(c);
      theCpp.sourceUngetc('(');
      group.argsInArgs = true;
    } else {
      theCpp.sourceUngetc(c);
      group.mayBeName = false;
      skipBalanced("()");
    }
  } else {
    ++group.depth;
  }
}

// True if parentheses within the group may hold the parameters of the name before them, as in
// `int (*f(int))` and `MACRO(f(int))`.
bool TagC::MayHoldParameters(const ParenGroup& group) const {
  const Token& before = currentStatement->earlierToken(1);
  return !group.isArgList || !before.IsName() || LooksLikeMacro(before.name);
}

// True if the parentheses within the group, which begin with this character, are the last of the
// group: in `SLOT(f(), void g())` they are those of an argument.
bool TagC::EndsGroupAhead(int first) const {
  const std::string_view ahead = theCpp.lines.Ahead();
  std::string text(1, static_cast<char>(first));
  text.append(ahead);
  theTagParser.NoteLook(ahead.data() + ahead.size());
  return LookAtGroup(text, language).after != ',';
}

void TagC::ReadGroupWord(ParenGroup& group, int c) {
  if (++group.wordCount > 1) group.isOldStyleList = false;
  Token& active = currentStatement->activeToken();
  ReadIdentifier(active, c);
  if (active.Is(TOKEN_KEYWORD)) {
    if (active.keyword != Keyword::cConst && active.keyword != Keyword::cVolatile)
      group.isOldStyleList = group.mayBeName = false;
  } else if (active.modern == ModernWord::cTypeWithGroup) {
    group.mayBeName = false;
  } else if (group.mayBeName) {
    active.type = TOKEN_PAREN_NAME;
  }
}

void TagC::CloseGroup(ParenGroup& group) {
  if (!group.argsInArgs)
    while (group.depth > 0 && skipBalanced("()")) --group.depth;
  if (!group.mayBeName) currentStatement->activeToken().Reset(theCpp.lines.tagLine);
  if (group.isOldStyleList) argText.clear();
}

// True before the rest of `= default` and `= delete`, which only functions have.
bool TagC::IsSpecialValueAhead() const {
  std::string_view text = theCpp.lines.Ahead();
  text.remove_prefix(std::min(text.find_first_not_of(" \t\n="), text.size()));
  return IsCpp() && (text.starts_with("default") || text.starts_with("delete"));
}

// True if the group is a name in parentheses. `c` is the character after the group.
bool TagC::IsNameInParens(const ParenGroup& group, int c) {
  Statement& st = *currentStatement;
  if (!group.mayBeName || !st.activeToken().Is(TOKEN_PAREN_NAME) || st.seen.parenNameSeen)
    return false;
  const bool isMacroCall = IsCOrCpp() && (c == ';' || c == ',') && st.TokensBefore() == 1 &&
                           st.earlierToken(1).IsName() && IsInCapitals(st.earlierToken(1).name);
  if (isMacroCall) return false;
  return !group.isArgList || !st.seen.typeSeen || c == '(' ||
         (c == '=' && st.implementation != IMP_VIRTUAL && !IsSpecialValueAhead()) ||
         (st.declaration == DECLARES_NONE && (c == ',' || c == ';'));
}

// True for `int a(5);` outside of classes, where a type comes before the name. `c` is the character
// after the group.
bool TagC::IsValueOfVariable(int c) {
  Statement& st = *currentStatement;
  const Token& name = st.earlierToken(1);
  return IsCpp() && (c == ';' || c == ',') && !st.HasContextualParent() && !st.seen.inFunction &&
         name.IsName() && !LooksLikeMacro(name.name) && (st.isPartial || HasTypeBefore(1, false));
}

void TagC::AnalyzeGroup(const ParenGroup& group) {
  Statement& st = *currentStatement;
  const int c = PeekChar();
  if (group.badContents) {
    if (IsValueOfVariable(c))
      st.markToken(TOKEN_NONE, theCpp.lines.tagLine);
    else
      ResetStatement(false);
  } else if (IsNameInParens(group, c)) {
    st.activeToken().type = TOKEN_NAME;
    st.noteName();
    st.seen.parenNameSeen = true;
    if (c != '(' || !group.argsInArgs) st.seen.isPointer = group.isPointer;
  } else if (!st.seen.argsSeen && group.isArgList) {
    st.seen.argsSeen = true;
    st.markToken(TOKEN_ARGS, theCpp.lines.tagLine);
    st.stepTokenForward(theCpp.lines.tagLine);
    if (st.scope == SCOPEKIND_TYPEDEF)
      SkipWordsBehindTypedef();
    else
      ReadPostParens(group);
  } else {
    st.markToken(TOKEN_NONE, theCpp.lines.tagLine);
  }
}

}  // namespace zendry
