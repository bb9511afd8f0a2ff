#include <algorithm>

#include "tags/TagC.h"
#include "tags/TagChars.h"
#include "tags/TagParser.h"

namespace zendry {
namespace {

constexpr std::string_view cOperatorChars = "+-*/%^&|~!=<>,[]";

bool IsOperatorChar(int c) {
  return c > 0 && c < 128 && cOperatorChars.find(static_cast<char>(c)) != std::string_view::npos;
}

struct DeclaringWord {
  Keyword keyword;
  Declaration declaration;
};

using enum Keyword;

constexpr DeclaringWord cDeclaringWords[] = {
    {cBind, DECLARES_BASE},           {cBit, DECLARES_BASE},
    {cBool, DECLARES_BASE},           {cWcharT, DECLARES_BASE},
    {cChar, DECLARES_BASE},           {cConst, DECLARES_BASE},
    {cDouble, DECLARES_BASE},         {cFloat, DECLARES_BASE},
    {cFunction, DECLARES_BASE},       {cInt, DECLARES_BASE},
    {cInteger, DECLARES_BASE},        {cLong, DECLARES_BASE},
    {cShort, DECLARES_BASE},          {cSigned, DECLARES_BASE},
    {cString, DECLARES_BASE},         {cUnsigned, DECLARES_BASE},
    {cVoid, DECLARES_BASE},           {cVolatile, DECLARES_BASE},
    {cClass, DECLARES_CLASS},         {cEnum, DECLARES_ENUM},
    {cInterface, DECLARES_INTERFACE}, {cNamespace, DECLARES_NAMESPACE},
    {cProgram, DECLARES_PROGRAM},     {cStruct, DECLARES_STRUCT},
    {cTask, DECLARES_TASK},           {cUnion, DECLARES_UNION},
};

// The declaration that a keyword alone gives to the statement, by the keyword's id.
constexpr auto cDeclarationOf = [] {
  std::array<Declaration, cKeywordCount> declarations{};
  for (const DeclaringWord& row : cDeclaringWords)
    declarations[static_cast<size_t>(row.keyword)] = row.declaration;
  return declarations;
}();

}  // namespace

void TagC::applyKeyword(Token& token) {
  Statement& st = *currentStatement;
  const Keyword keyword = token.keyword;
  if (ApplyScopeOrDeclaration(keyword)) return;
  switch (keyword) {
    case cAttribute:
      SkipGroupIfAny();
      st.activeToken().Reset(theCpp.lines.tagLine);
      break;
    case cAbstract:
      st.implementation = IMP_ABSTRACT;
      break;
    case cVirtual:
      st.implementation = IMP_VIRTUAL;
      break;
    case cCatch:
      ApplyCatch();
      break;
    case cExtends:
    case cImplements:
      readParents('.');
      st.activeToken().Reset(theCpp.lines.tagLine);
      break;
    case cFor:
    case cIf:
    case cSwitch:
    case cWhile:
      SkipGroupIfAny();
      break;
    case cGoto:
    case cImport:
    case cReturn:
      st.declaration = DECLARES_IGNORE;
      SkipStatement();
      break;
    case cUsing:
      ApplyUsing();
      break;
    case cTemplate:
      ApplyTemplate();
      break;
    case cLocal:
      ApplyAccess(ACCESS_LOCAL);
      break;
    case cPrivate:
      ApplyAccess(ACCESS_PRIVATE);
      break;
    case cProtected:
      ApplyAccess(ACCESS_PROTECTED);
      break;
    case cPublic:
      ApplyAccess(ACCESS_PUBLIC);
      break;
    case cOperator:
      ApplyOperator(token);
      break;
    case cPackage:
      ReadPackage(token);
      break;
    case cThrows:
      SkipThrows();
      break;
    default:
      break;
  }
}

// Handles keywords that only give the kind of the declaration and its visibility.
bool TagC::ApplyScopeOrDeclaration(Keyword keyword) {
  Statement& st = *currentStatement;
  const Declaration declaration = cDeclarationOf[static_cast<size_t>(keyword)];
  if (declaration != DECLARES_NONE) {
    const bool isScopedEnum =
        IsCpp() && (keyword == cClass || keyword == cStruct) && st.earlierToken(1).IsKeyword(cEnum);
    if (!isScopedEnum) st.declaration = declaration;
    return true;
  }
  switch (keyword) {
    case cEvent:
      if (language == Language::cCSharp) st.declaration = DECLARES_EVENT;
      return true;
    case cExtern:
      if (language == Language::cCSharp && st.seen.nameSeen) return true;
      ResetStatement(false);
      st.scope = SCOPEKIND_EXTERN;
      st.declaration = DECLARES_BASE;
      return true;
    case cFriend:
      st.scope = SCOPEKIND_FRIEND;
      return true;
    case cStatic:
      if (IsJavaOrCSharp()) return true;
      ResetStatement(false);
      st.scope = SCOPEKIND_STATIC;
      st.declaration = DECLARES_BASE;
      return true;
    case cTypedef:
      ResetStatement(false);
      st.scope = SCOPEKIND_TYPEDEF;
      return true;
    default:
      return false;
  }
}

// Words that follow a parameter list have a meaning only there; elsewhere they are names.
void TagC::ApplyModern(Token& token) {
  Statement& st = *currentStatement;
  switch (token.modern) {
    case ModernWord::cFinal:
      if (IsContextual(st.declaration) && st.earlierToken(1).IsName())
        token.Reset(theCpp.lines.tagLine);
      else
        st.noteName();
      break;
    case ModernWord::cWithGroup:
      SkipGroupIfAny();
      token.Reset(theCpp.lines.tagLine);
      break;
    case ModernWord::cTypeWithGroup:
      SkipGroupIfAny();
      st.noteName();
      break;
    case ModernWord::cRequires:
      SkipConstraint();
      token.Reset(theCpp.lines.tagLine);
      break;
    case ModernWord::cAssertion:
      SkipStatement();
      break;
    case ModernWord::cAfterIf:
      if (st.earlierToken(1).IsKeyword(cIf)) {
        SkipGroupIfAny();
        token.Reset(theCpp.lines.tagLine);
      } else {
        st.noteName();
      }
      break;
    case ModernWord::cExport:
      ApplyExport(token);
      break;
    case ModernWord::cModule:
      ApplyModule();
      break;
    default:
      st.noteName();
  }
}

// Only at the beginning of a statement it is more than a name: the declarations after it, or those
// of the block after it, are read as if it weren't there.
void TagC::ApplyExport(Token& token) {
  Statement& st = *currentStatement;
  if (st.TokensBefore() > 0 || st.seen.nameSeen) return st.noteName();
  token.Reset(theCpp.lines.tagLine);
  if (PeekChar() == '{') st.declaration = DECLARES_PLAIN_NAMES;
}

void TagC::ApplyModule() {
  Statement& st = *currentStatement;
  const bool isFirst = st.TokensBefore() == 0 && !st.seen.nameSeen && st.parent == nullptr &&
                       st.scope == SCOPEKIND_GLOBAL && st.declaration == DECLARES_NONE;
  if (!isFirst || !IsModuleStatement()) return st.noteName();
  st.declaration = DECLARES_IGNORE;
  SkipStatement();
}

// True before the rest of `import a.b;`, `import :part;`, `import <a>;` or `module a:part;`. Both
// words are names elsewhere, also of types and functions.
bool TagC::IsModuleStatement() const {
  std::string_view text = theCpp.lines.Ahead();
  const std::string_view rest = text.substr(0, text.find(';'));
  theTagParser.NoteLook(rest.data() + rest.size());
  const size_t start = rest.find_first_not_of(" \t");
  if (rest.size() == text.size()) return false;
  if (start == rest.npos) return currentStatement->activeToken().name == "module";
  if (rest[start] == '<' || rest[start] == '"')
    return currentStatement->activeToken().name == "import";
  return rest.find("::") == rest.npos && std::ranges::all_of(rest, [](char c) {
           return IsClass(static_cast<unsigned char>(c), cIdentifierChar | cBlankChar) ||
                  c == '.' || c == ':';
         });
}

void TagC::ApplyCatch() {
  SkipGroupIfAny();
  const int c = NextChar();
  if (c == '{')
    skipBalanced("{}");
  else
    theCpp.sourceUngetc(c);
}

// Skips up to the semicolon that ends the statement. The semicolons of a lambda's body, as in
// `return find(a, [](int b) { return b; });`, don't end it. After a surplus brace the statement has
// no semicolon of its own: the next one ends it, so that the braces are counted right again.
void TagC::SkipStatement() {
  int c = skipTo(";{}");
  while (c == '{' && skipBalanced("{}")) c = skipTo(";{}");
  if (c == '}') c = skipTo(";");
  if (c == ';')
    currentStatement->markToken(TOKEN_SEMICOLON, theCpp.lines.tagLine);
  else
    currentStatement->activeToken().Reset(theCpp.lines.tagLine);
}

void TagC::ApplyAccess(Access access) {
  Statement& st = *currentStatement;
  if (!st.IsMember()) return;
  if (IsCpp()) {
    const int c = NextChar();
    if (c == ':') {
      ResetStatement(false);
      st.defaultAccess = access;
    } else {
      theCpp.sourceUngetc(c);
    }
  }
  st.access = access;
}

// `operator (`: the call operator keeps its parentheses. Returns the character after the name.
int TagC::ReadOperatorCall(Token& token) {
  int c = NextChar();
  if (c != ')') {
    theCpp.sourceUngetc(c);
    skipBalanced("()");
    return NextChar();
  }
  token.name += ' ';
  c = NextChar();
  if (c == '(') token.name += "()";
  return c;
}

void TagC::ApplyOperator(Token& token) {
  const Token& before = currentStatement->earlierToken(1);
  if (before.IsKeyword(cEnum) || before.IsKeyword(cStruct) || before.IsKeyword(cUnion)) return;
  int c = NextChar();
  if (c == STRING_MARK) {
    ReadLiteralOperator(token);
    return;
  }
  if (c == '(') {
    c = ReadOperatorCall(token);
  } else if (theCpp.IsIdentifierStart(c) && c != '~') {
    token.name += ' ';
    bool isBlank = false;
    for (; c != -1 && c != '(' && c != ';'; c = theCpp.sourceGetc()) {
      const bool wasBlank = isBlank;
      isBlank = IsClass(c, cSpaceChar);
      if (isBlank) continue;
      if (wasBlank) token.name += ' ';
      token.name += static_cast<char>(c);
    }
  } else if (IsOperatorChar(c)) {
    token.name += ' ';
    for (; IsOperatorChar(c); c = theCpp.sourceGetc()) token.name += static_cast<char>(c);
  }
  theCpp.sourceUngetc(c);
  token.type = TOKEN_NAME;
  token.keyword = cNone;
  currentStatement->noteName();
}

// `operator""_x` and `operator"" _x`.
void TagC::ReadLiteralOperator(Token& token) {
  token.name += " \"\"";
  const int c = NextChar();
  if (theCpp.IsIdentifierStart(c)) {
    ReadIdentifier(scratch, c);
    token.name += scratch.name;
  } else {
    theCpp.sourceUngetc(c);
  }
  token.type = TOKEN_NAME;
  token.keyword = cNone;
  currentStatement->noteName();
}

// `using A = B;` is a typedef; every other `using` declares nothing.
void TagC::ApplyUsing() {
  int c = NextChar();
  if (!IsCpp() || !theCpp.IsIdentifierStart(c)) {
    theCpp.sourceUngetc(c);
    SkipStatement();
    return;
  }
  Token name;
  ReadIdentifier(name, c);
  for (c = NextChar(); c == '[' || theCpp.IsIdentifierStart(c); c = NextChar()) {
    if (c == '[') {
      skipBalanced("[]");
    } else {
      ReadIdentifier(scratch, c);
      SkipGroupIfAny();
    }
  }
  if (c == '=' && name.IsName()) {
    ReadAlias(name);
  } else {
    theCpp.sourceUngetc(c);
    if (currentStatement->IsMember()) NoteReopened();
    SkipStatement();
  }
}

// The rest of "using Base<T>::name;" in a class: its last word is declared in the class.
void TagC::NoteReopened() {
  bool isName = false;
  int c = NextChar();
  for (; c == ':' || c == '<' || theCpp.IsIdentifierStart(c); c = NextChar()) {
    isName = theCpp.IsIdentifierStart(c);
    if (isName)
      ReadIdentifier(scratch, c);
    else if (c == '<')
      skipBalanced("<>");
  }
  theCpp.sourceUngetc(c);
  if (!isName || c != ';' || !scratch.IsName()) return;
  FindFullScope(*currentStatement);
  theTagParser.AddReopened(fullScope, scratch.name);
}

// Reads what the alias stands for; the statement then ends like that of a typedef. The last word of
// the first qualified name is the type.
void TagC::ReadAlias(const Token& name) {
  Statement& st = *currentStatement;
  Token type;
  bool goesOn = true;
  int c;
  while ((c = NextChar()) != -1 && c != ';' && c != '}') {
    if (theCpp.IsIdentifierStart(c)) {
      ReadIdentifier(scratch, c);
      if (goesOn && scratch.keyword != cTypename && scratch.keyword != cConst &&
          scratch.keyword != cTemplate && scratch.keyword != cStruct &&
          scratch.keyword != cVolatile) {
        type = scratch;
        goesOn = false;
      }
    } else if (c == ':') {
      goesOn = goesOn || type.IsName();
      if (theCpp.sourceGetc() != ':') break;
    } else if (c == '<') {
      skipBalanced("<>");
    } else if (c == '(' || c == '[' || c == '{') {
      skipBalanced(c == '(' ? "()" : c == '[' ? "[]" : "{}");
      type.name.clear();
    }
  }
  if (c == '}') theCpp.sourceUngetc(c);
  ResetStatement(false);
  st.scope = SCOPEKIND_TYPEDEF;
  if (type.type != TOKEN_NONE && !type.name.empty()) {
    st.activeToken() = type;
    st.stepTokenForward(name.lineNumber);
  }
  st.activeToken() = name;
  st.stepTokenForward(name.lineNumber);
  st.markToken(TOKEN_SEMICOLON, theCpp.lines.tagLine);
}

// `template class A<int>;` names what is declared elsewhere.
void TagC::ApplyTemplate() {
  Statement& st = *currentStatement;
  if (st.TokensBefore() > 1 || st.seen.isQualified) return;
  if (st.TokensBefore() == 1 && !st.earlierToken(1).IsKeyword(cExtern)) return;
  const int c = PeekChar();
  if (c != '<' && theCpp.IsIdentifierStart(c)) SkipStatement();
}

void TagC::ReadPackage(Token& token) {
  Statement& st = *currentStatement;
  int c = NextChar();
  if (theCpp.IsIdentifierStart(c)) {
    token.name.clear();
    for (; theCpp.IsIdentifierStart(c) || c == '.'; c = NextChar()) {
      token.name += static_cast<char>(c);
      if (c != '.') theCpp.ReadIdentifierRest(token.name);
    }
  }
  theCpp.sourceUngetc(c);
  token.type = TOKEN_NAME;
  token.keyword = cNone;
  st.declaration = DECLARES_PACKAGE;
  st.seen.nameSeen = st.seen.typeSeen = true;
}

// A constraint: parts joined by && and ||. Each part is a group in parentheses, the name of a
// concept, or a list of requirements.
void TagC::SkipConstraint() {
  for (bool goesOn = true; goesOn;) {
    int c = NextChar();
    while (c == '!') c = NextChar();
    if (c == '(') {
      skipBalanced("()");
    } else if (theCpp.IsIdentifierStart(c)) {
      SkipConcept(c);
    } else {
      theCpp.sourceUngetc(c);
      return;
    }
    c = NextChar();
    goesOn = c == '&' || c == '|';
    if (goesOn)
      DropNext(c);
    else
      theCpp.sourceUngetc(c);
  }
}

void TagC::SkipConcept(int first) {
  ReadIdentifier(scratch, first);
  if (scratch.modern == ModernWord::cRequires) {
    SkipGroupIfAny();
    const int c = NextChar();
    if (c == '{')
      skipBalanced("{}");
    else
      theCpp.sourceUngetc(c);
    return;
  }
  for (;;) {
    const int c = NextChar();
    if (c == '<') {
      skipBalanced("<>");
    } else if (c == ':') {
      DropNext(':');
      const int next = NextChar();
      if (theCpp.IsIdentifierStart(next))
        ReadIdentifier(scratch, next);
      else
        theCpp.sourceUngetc(next);
    } else {
      theCpp.sourceUngetc(c);
      return;
    }
  }
}

// Names joined by commas or dots.
void TagC::SkipThrows() {
  int c = NextChar();
  while (theCpp.IsIdentifierStart(c) || c == ',' || c == '.') {
    if (theCpp.IsIdentifierStart(c)) ReadIdentifier(scratch, c);
    c = NextChar();
  }
  theCpp.sourceUngetc(c);
}

// Collects the names of bases up to the block. `separator` joins the parts of a name.
void TagC::readParents(char separator) {
  Statement& st = *currentStatement;
  const bool isHiddenAtFirst = IsCpp() && st.declaration == DECLARES_CLASS;
  bool isHidden = isHiddenAtFirst;
  std::string name;
  const auto finish = [&] {
    if (name.empty()) return;
    PutAfter(st.baseNames, name, ",");
    if (isHidden) PutAfter(st.hiddenBases, name, ",");
    name.clear();
  };
  int c;
  int before = 0;
  do {
    c = NextChar();
    if (theCpp.IsIdentifierStart(c)) {
      ReadIdentifier(scratch, c);
      if (scratch.Is(TOKEN_KEYWORD) || before != separator) finish();
      if (scratch.IsName()) name += scratch.name;
      if (scratch.IsKeyword(Keyword::cPublic)) isHidden = false;
      isHidden = isHidden || scratch.IsKeyword(Keyword::cPrivate) ||
                 scratch.IsKeyword(Keyword::cProtected);
    } else if (c == separator) {
      if (separator == '.' || !name.empty()) name += separator;
    } else if (c == '<') {
      skipBalanced("<>");
    } else {
      finish();
      if (c == ',') isHidden = isHiddenAtFirst;
    }
    before = c;
  } while (c != '{' && c != ';' && c != -1);
  theCpp.sourceUngetc(c);
}

}  // namespace zendry
