#include "tags/TagC.h"

#include "Assert.h"
#include "tags/TagChars.h"
#include "tags/TagMacros.h"
#include "tags/TagParser.h"

namespace zendry {

TagC theTagC;

namespace {

bool IsClassLike(Declaration declaration) {
  return declaration == DECLARES_CLASS || declaration == DECLARES_STRUCT ||
         declaration == DECLARES_UNION;
}

}  // namespace

bool TagC::runPass(int passCount, Language theLanguage, bool isHeaderFile) {
  MAVRO_ASSERT_AS(passCount < 3, "passCount < 3");
  language = theLanguage;
  isHeader = isHeaderFile;
  inArgText = false;
  argText.clear();
  theCpp.sourceInit(passCount > 1, language, isHeader);
  parseBlock(0, nullptr);
  return false;
}

Statement& TagC::StatementOf(int blockLevel) {
  const auto level = static_cast<size_t>(blockLevel);
  while (statements.size() <= level) statements.push_back(std::make_unique<Statement>());
  return *statements[level];
}

void TagC::parseBlock(int blockLevel, Statement* parent) {
  Statement& st = StatementOf(blockLevel);
  st.Start(parent, language, theCpp.lines.tagLine);
  currentStatement = &st;
  tokenAtLastTag = TOKEN_NONE;
  theCpp.midStatement = false;
  theCpp.blockLevel = blockLevel;
  for (;;) {
    readToken();
    const TokenType type = st.activeToken().type;
    if (type == TOKEN_NONE) break;
    if (type == TOKEN_BRACE_CLOSE) {
      if (blockLevel == 0)
        theTagParser.logMessage("unexpected closing brace at line:" +
                                std::to_string(theCpp.lines.lineNumber));
      break;
    }
    if (type == TOKEN_DOUBLE_COLON) {
      ExtendContext(st);
      continue;
    }
    CheckTag(st);
    if (type == TOKEN_BRACE_OPEN) {
      const bool isInitialiser = IsBraceInitialiser(st);
      const UnnamedBlock unnamed = NoteUnnamedBlock(st);
      ReadBlockBody(st, blockLevel);
      currentStatement = &st;
      theCpp.blockLevel = blockLevel;
      if (IsCOrCpp() && IsClassLike(st.declaration)) EndClassBlock(st, unnamed);
      if (isInitialiser) {
        const int c = PeekChar();
        if (c == ';' || c == ',') {
          st.activeToken().Reset(theCpp.lines.tagLine);
          continue;
        }
      }
      st.stepTokenForward(theCpp.lines.tagLine);
      st.activeToken().type = TOKEN_BRACE_CLOSE;
    }
    EndStatement(st);
  }
  currentStatement = parent;
}

// The name before the colons goes to the context, and the next name takes its place, so that a
// qualified name is one token.
void TagC::ExtendContext(Statement& st) {
  const Token& name = st.earlierToken(1);
  if (name.IsName()) {
    if (!st.context.name.empty()) st.context.name += Separator();
    st.context.name += name.name;
    st.context.type = TOKEN_NAME;
    st.stepTokenBack(theCpp.lines.tagLine);
  } else {
    st.activeToken().Reset(theCpp.lines.tagLine);
  }
  st.seen.isQualified = true;
}

TagC::UnnamedBlock TagC::NoteUnnamedBlock(Statement& st) {
  UnnamedBlock block;
  const bool isUnnamed =
      IsClassLike(st.declaration) && !st.openedName.IsName() && !st.earlierToken(1).Is(TOKEN_ARGS);
  if (!IsCOrCpp() || !isUnnamed) return block;
  FindFullScope(st);
  block.isNoted = true;
  block.outerName = fullScope;
  if (!fullScope.empty()) block.name = fullScope + "::<anonymous>";
  block.memberCount = theTagParser.MemberCount(block.name);
  return block;
}

// The members of `union { int a; };` belong to the class around it. Those of `union { int a; } u;`
// get a class of their own, which is the type of `u`; those of a block with a name have one.
void TagC::EndClassBlock(Statement& st, const UnnamedBlock& unnamed) {
  const bool isVariable = PeekChar() != ';';
  if (unnamed.isNoted && isVariable) {
    st.blockType = theTagParser.NameBlock(unnamed.name, unnamed.memberCount,
                                          KindOf(language, TagTypeOf(st.declaration)).letter,
                                          theCpp.lines.tagLine);
  } else if (unnamed.isNoted && !unnamed.outerName.empty() && st.scope != SCOPEKIND_TYPEDEF) {
    theTagParser.MoveMembers(unnamed.name, unnamed.memberCount, unnamed.outerName,
                             AccessText(st.access)[2]);
  } else if (isVariable && st.openedName.IsName()) {
    FindFullScope(st);
    st.blockType = fullScope;
    PutAfter(st.blockType, st.openedName.name, Separator());
  }
}

// True for values in braces directly after a declared name: `int x{1};`.
bool TagC::IsBraceInitialiser(Statement& st) const {
  return IsCpp() && st.declaration == DECLARES_BASE && !st.seen.argsSeen &&
         st.earlierToken(1).IsName() && (st.isPartial || st.earlierToken(2).type != TOKEN_NONE);
}

void TagC::ReadBlockBody(Statement& st, int blockLevel) {
  if (st.declaration == DECLARES_FUNCTION || st.declaration == DECLARES_TASK)
    st.seen.inFunction = true;
  const bool isRead = IsReadBlock(st.declaration) ||
                      (IsKindEnabled(language, TagType::cLocal) && !IsBraceInitialiser(st));
  if (isRead && blockLevel < cDeepestBlock)
    parseBlock(blockLevel + 1, &st);
  else
    skipBalanced("{}");
}

void TagC::EndStatement(Statement& st) {
  const TokenType type = st.activeToken().type;
  if (type == TOKEN_COMMA) {
    ResetStatement(true);
  } else if (type == TOKEN_SEMICOLON ||
             (type == TOKEN_BRACE_CLOSE && (IsJavaOrCSharp() || !IsContextual(st.declaration)))) {
    ResetStatement(false);
    theCpp.midStatement = false;
  } else {
    if (IsMacroAlone(st)) NoteMemberMacro(st, st.activeToken());
    theCpp.midStatement = theCpp.midStatement || !MayStandAlone(st);
    st.stepTokenForward(theCpp.lines.tagLine);
  }
}

// True for enumerators and for macros without a semicolon, such as BEGIN_NAMESPACE.
bool TagC::MayStandAlone(Statement& st) const {
  return st.IsParent(DECLARES_ENUM) ||
         (st.activeToken().IsName() && IsInCapitals(st.activeToken().name));
}

// True for a word in capitals that ends its line in the block of a class, where nothing but such
// words came before: `HANDLE_FIELDS` above the members.
bool TagC::IsMacroAlone(Statement& st) const {
  const bool isInClass = st.parent != nullptr && IsClassLike(st.parent->declaration);
  if (!isInClass || !IsCOrCpp()) return false;
  for (int n = 0; n <= st.TokensBefore(); ++n)
    if (!st.earlierToken(n).IsName() || !IsInCapitals(st.earlierToken(n).name)) return false;
  return !theCpp.HasMoreOnLine();
}

void TagC::CheckTag(Statement& st) {
  switch (st.activeToken().type) {
    case TOKEN_COMMA:
    case TOKEN_SEMICOLON:
      if (!st.IsParent(DECLARES_ENUM)) CheckTagAtEnd(st);
      break;
    case TOKEN_BRACE_OPEN:
      CheckTagAtBrace(st);
      break;
    case TOKEN_NAME:
      if (st.IsParent(DECLARES_ENUM)) CheckEnumerator(st);
      break;
    default:
      break;
  }
}

// A macro behind an enumerator, or one with arguments that makes enumerators, isn't one itself.
void TagC::CheckEnumerator(Statement& st) {
  const Token& name = st.activeToken();
  if (LooksLikeMacro(name.name)) {
    const Token& before = st.earlierToken(1);
    if (st.TokensBefore() > 0 && before.IsName() && !LooksLikeMacro(before.name)) return;
    if (PeekChar() == '(' && st.TokensBefore() == 0) return;
  }
  MakeTag(st, name, true, TagType::cEnumerator);
}

// True for `T A::b(c);` outside of classes: a prototype there has no qualifier, unless it is that
// of a template or a friend.
bool TagC::IsMemberWithValue(Statement& st) const {
  if (!IsCpp() || !st.context.IsName() || st.HasContextualParent() ||
      st.scope != SCOPEKIND_GLOBAL || argText.empty() || !HasTypeBefore(2, false))
    return false;
  for (int n = 3; n <= st.TokensBefore(); ++n)
    if (st.earlierToken(n).IsKeyword(Keyword::cTemplate)) return false;
  return !LookAtGroup(std::string_view(argText).substr(1), language).looksLikeParameters;
}

void TagC::CheckTagAtEnd(Statement& st) {
  const Token& prev = st.earlierToken(1);
  const Token& prev2 = st.earlierToken(2);
  if (prev.IsName()) {
    const bool isClass = IsForwardWord(prev2) || prev2.IsKeyword(Keyword::cFriend);
    if (st.scope == SCOPEKIND_FRIEND && isClass) NoteFriend(st, prev);
    if (IsForwardWord(prev2))
      st.scope = SCOPEKIND_EXTERN;
    else
      tagVariable(st, DeclaredName(prev, false));
  } else if (prev.Is(TOKEN_ARGS) && prev2.IsName()) {
    if (st.seen.isPointer || IsMemberWithValue(st))
      tagVariable(st, prev2);
    else if (IsJavaOrCSharp())
      tagFunction(st, prev2);
    else if (st.scope == SCOPEKIND_TYPEDEF)
      MakeTag(st, prev2, true, TagType::cTypedef);
    else if (st.seen.bodyInMacro)
      tagFunction(st, prev2);
    else if (IsTypeSpecifier(st.declaration) && CanBeFunction(st))
      MakeTag(st, prev2, false, TagType::cPrototype);
  }
}

void TagC::NoteFriend(Statement& st, const Token& name) {
  FindScope(st);
  theTagParser.AddFriend(st.outerScope, name.name);
}

void TagC::CheckTagAtBrace(Statement& st) {
  const Token& prev = st.earlierToken(1);
  const Token& prev2 = st.earlierToken(2);
  if (prev.Is(TOKEN_ARGS)) {
    if (!st.seen.typeSeen) return;
    if (!CanBeFunction(st)) {
      if (NameMacroBody(st)) tagFunction(st, prev2);
      return;
    }
    if (language != Language::cVera) st.declaration = DECLARES_FUNCTION;
    if (prev2.IsName()) st.openedName = prev2;
    tagFunction(st, prev2);
  } else if (IsPartOfScope(st.declaration)) {
    if (!prev.IsName()) return;
    st.openedName = DeclaredName(prev, true);
    MakeTag(st, st.openedName, st.declaration != DECLARES_NAMESPACE, TagTypeOf(st.declaration));
  } else if (language == Language::cCSharp) {
    MakeTag(st, prev, st.access == ACCESS_PRIVATE, TagType::cProperty);
  }
}

}  // namespace zendry
