#include <algorithm>

#include "tags/TagC.h"
#include "tags/TagChars.h"
#include "tags/TagMacros.h"
#include "tags/TagParser.h"

namespace zendry {
namespace {

// The actions of the scan after a parameter list at a keyword; all other keywords count as plain
// names.
enum class AfterArgs { cPlain, cTypeWord, cSkipGroup, cNothing, cQualifier, cRestart };

AfterArgs ActAt(Keyword keyword) {
  using enum Keyword;
  switch (keyword) {
    case cAttribute:
    case cThrow:
      return AfterArgs::cSkipGroup;
    case cTry:
      return AfterArgs::cNothing;
    case cConst:
    case cVolatile:
      return AfterArgs::cQualifier;
    case cBool:
    case cChar:
    case cDouble:
    case cEnum:
    case cFloat:
    case cInt:
    case cLong:
    case cShort:
    case cSigned:
    case cStruct:
    case cUnion:
    case cUnsigned:
    case cVoid:
    case cWcharT:
      return AfterArgs::cTypeWord;
    case cCatch:
    case cClass:
    case cExplicit:
    case cExtern:
    case cFriend:
    case cInline:
    case cMutable:
    case cNamespace:
    case cNew:
    case cNewcov:
    case cOperator:
    case cOverload:
    case cPrivate:
    case cProtected:
    case cPublic:
    case cStatic:
    case cTemplate:
    case cTypedef:
    case cTypename:
    case cUsing:
    case cVirtual:
      return AfterArgs::cRestart;
    default:
      return AfterArgs::cPlain;
  }
}

}  // namespace

// Reads the text between a parameter list and the body, the semicolon or the comma.
void TagC::ReadPostParens(const ParenGroup& group) {
  const int line = theCpp.lines.lineNumber;
  int c = PeekChar();
  if (c == '{' || c == ';' || c == ',' || c == '=') return;
  if (language == Language::cJava) {
    ReadJavaThrows();
    return;
  }
  PostParens post;
  post.parameters = group.paramCount;
  do {
    c = NextChar();
    if (c == -1) {
      theTagParser.logMessage("confusing argument declarations beginning at line:" +
                              std::to_string(line));
      return;
    }
    ReadPostParensChar(group, post, c);
  } while (!post.end);
}

void TagC::ReadJavaThrows() {
  Token& active = currentStatement->activeToken();
  const int c = NextChar();
  if (!theCpp.IsIdentifierStart(c)) {
    theCpp.sourceUngetc(c);
    return;
  }
  ReadIdentifier(active, c);
  if (active.IsKeyword(Keyword::cThrows)) {
    SkipThrows();
    active.Reset(theCpp.lines.tagLine);
  } else {
    ApplyWord(active);
  }
}

void TagC::ReadPostParensChar(const ParenGroup& group, PostParens& post, int c) {
  switch (c) {
    case ':':
      SkipMemberInitialisers();
      break;
    case '[':
      skipBalanced("[]");
      break;
    case '=':
    case '{':
    case '}':
      theCpp.sourceUngetc(c);
      post.end = true;
      break;
    case '(':
      if (post.elementCount > 0) ++post.elementCount;
      skipBalanced("()");
      break;
    case ';':
      if (post.parameters == 0 || post.elementCount < 2) {
        theCpp.sourceUngetc(c);
        post.end = true;
      } else {
        post.end = --post.parameters == 0;
      }
      break;
    case '-':
      SkipTrailingReturn();
      break;
    default:
      if (theCpp.IsIdentifierStart(c)) post.end = ReadPostParensWord(group, post, c);
  }
}

// True if the word begins a statement of its own, so that the scan is over.
bool TagC::ReadPostParensWord(const ParenGroup& group, PostParens& post, int c) {
  Token& token = currentStatement->activeToken();
  ReadIdentifier(token, c);
  const AfterArgs act = ActAt(token.keyword);
  switch (act) {
    case AfterArgs::cSkipGroup:
      SkipGroupIfAny();
      break;
    case AfterArgs::cNothing:
      break;
    case AfterArgs::cQualifier:
      if (!argText.empty()) argText.append(1, ' ').append(token.name);
      break;
    case AfterArgs::cRestart:
      RestartWith(token);
      return true;
    case AfterArgs::cTypeWord:
    case AfterArgs::cPlain:
      if (IsMacroBeforeDeclarator(token)) {
        DropMacroBefore(token);
        return true;
      }
      if (group.isOldStyleList && group.paramCount > 0 && !IsClassHead(token)) {
        ++post.elementCount;
      } else if (!SkipModernAfterParameters(token.modern) &&
                 !(act == AfterArgs::cPlain && SkipMacroAfterParameters())) {
        RestartWith(token);
        return true;
      }
  }
  currentStatement->activeToken().Reset(theCpp.lines.tagLine);
  return false;
}

bool TagC::SkipModernAfterParameters(ModernWord word) {
  switch (word) {
    case ModernWord::cAfterParameters:
    case ModernWord::cFinal:
    case ModernWord::cWithGroup:
      SkipGroupIfAny();
      return true;
    case ModernWord::cRequires:
      SkipConstraint();
      return true;
    default:
      return false;
  }
}

// True if the parameter list belongs to a name with a type, to a constructor or to the like. Then
// words behind the list are macros; behind anything else the list is that of a macro, and words
// begin a statement of their own.
bool TagC::IsDeclaratorBehindType() const {
  Statement& st = *currentStatement;
  const Token& name = st.earlierToken(2);
  if (st.seen.parenNameSeen || name.name.starts_with('~') || name.name.starts_with("operator"))
    return true;
  if (HasTypeBefore(2, !IsInCapitals(name.name))) return true;
  std::string_view context = st.context.name;
  context.remove_prefix(std::min(context.rfind(':') + 1, context.size()));
  if (!context.empty() && context == name.name) return true;
  return st.parent != nullptr && st.parent->openedName.name == name.name;
}

bool TagC::SkipMacroAfterParameters() {
  if (IsJavaOrCSharp() || !IsDeclaratorBehindType()) return false;
  // `auto f() RETURNS(a + b);`: without a body nobody knows the type, so the macro is the body.
  const bool isBody = PeekChar() == '(' && currentStatement->earlierToken(3).name == "auto";
  if (isBody) currentStatement->seen.bodyInMacro = true;
  SkipGroupIfAny();
  return true;
}

// True if the parameter list was that of a macro before a declaration: `int API(x) f(int)`.
bool TagC::IsMacroBeforeDeclarator(const Token& word) const {
  const Token& name = currentStatement->earlierToken(2);
  return !IsJavaOrCSharp() && IsInCapitals(name.name) && !LooksLikeMacro(word.name) &&
         word.modern == ModernWord::cNone && !currentStatement->seen.parenNameSeen &&
         (currentStatement->TokensBefore() < 3 || !currentStatement->earlierToken(3).IsName());
}

// The macro and its arguments vanish, and the word goes on with the statement.
void TagC::DropMacroBefore(const Token& word) {
  Statement& st = *currentStatement;
  const Token copy = word;
  const int line = theCpp.lines.tagLine;
  st.stepTokenBack(line);
  st.stepTokenBack(line);
  st.seen.argsSeen = st.seen.nameSeen = false;
  argText.clear();
  st.activeToken() = copy;
  ApplyWord(st.activeToken());
}

// True for `struct A {`, which is no declaration of an old-style parameter. The name isn't read.
bool TagC::IsClassHead(const Token& token) const {
  if (!IsForwardWord(token)) return false;
  std::string_view text = theCpp.lines.Ahead();
  const size_t end = text.find_first_of("{;,*()");
  theTagParser.NoteLook(text.data() + std::min(end, text.size()));
  return end != text.npos && text[end] == '{';
}

// `typedef void (*H)(int) noexcept;`, `typedef int f(int) MACRO;`
void TagC::SkipWordsBehindTypedef() {
  if (IsJavaOrCSharp() || !IsDeclaratorBehindType()) return;
  const std::string parameters = argText;
  for (int c = PeekChar(); theCpp.IsIdentifierStart(c); c = PeekChar()) {
    ReadIdentifier(scratch, NextChar());
    SkipGroupIfAny();
  }
  argText = parameters;
}

// The token that was found begins a new statement.
void TagC::RestartWith(Token& token) {
  const Token copy = token;
  ResetStatement(false);
  currentStatement->activeToken() = copy;
  ApplyWord(currentStatement->activeToken());
}

// `: a(1), b{2}`. A brace directly after a name holds a value; the body's brace is never there.
void TagC::SkipMemberInitialisers() {
  int c;
  do {
    c = NextChar();
    bool isAfterName = false;
    for (;; c = NextChar()) {
      if (theCpp.IsIdentifierStart(c)) {
        ReadIdentifier(scratch, c);
      } else if (c == '<') {
        skipBalanced("<>");
      } else if (c == '(') {
        skipBalanced("()");
      } else if (c == '{' && isAfterName) {
        skipBalanced("{}");
      } else if (c != ':' && c != '.') {
        break;
      }
      isAfterName = IsCpp() && (theCpp.IsIdentifierStart(c) || c == '<');
    }
  } while (c == ',');
  theCpp.sourceUngetc(c);
}

// `-> type`, up to the body or the end of the statement.
void TagC::SkipTrailingReturn() {
  const int next = theCpp.sourceGetc();
  if (next != '>' || !IsCpp()) {
    theCpp.sourceUngetc(next);
    return;
  }
  for (;;) {
    const int c = NextChar();
    switch (c) {
      case '(':
        skipBalanced("()");
        break;
      case '[':
        skipBalanced("[]");
        break;
      case '<':
        skipBalanced("<>");
        break;
      case '{':
      case '}':
      case ';':
      case '=':
      case ',':
      case -1:
        theCpp.sourceUngetc(c);
        return;
      default:
        break;
    }
  }
}

}  // namespace zendry
