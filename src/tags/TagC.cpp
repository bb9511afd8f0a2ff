#include "tags/TagC.h"

#include "Assert.h"
#include "tags/TagChars.h"
#include "tags/TagParser.h"

namespace zendry {

TagC theTagC;

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
      st.stepTokenForward(theCpp.lines.tagLine);
      continue;
    }
    CheckTag(st);
    if (type == TOKEN_BRACE_OPEN) {
      const bool isInitialiser = IsBraceInitialiser(st);
      ReadBlockBody(st, blockLevel);
      currentStatement = &st;
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

void TagC::ExtendContext(Statement& st) {
  const Token& name = st.earlierToken(1);
  if (!name.IsName()) return;
  if (!st.context.name.empty()) st.context.name += Separator();
  st.context.name += name.name;
  st.context.type = TOKEN_NAME;
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
    theCpp.midStatement = true;
    st.stepTokenForward(theCpp.lines.tagLine);
  }
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
      if (st.IsParent(DECLARES_ENUM)) MakeTag(st, st.activeToken(), true, TagType::cEnumerator);
      break;
    default:
      break;
  }
}

namespace {

// `class A;` announces a name and declares nothing.
bool IsForwardWord(const Token& token) {
  if (!token.Is(TOKEN_KEYWORD)) return false;
  switch (token.keyword) {
    case Keyword::cClass:
    case Keyword::cEnum:
    case Keyword::cInterface:
    case Keyword::cNamespace:
    case Keyword::cStruct:
    case Keyword::cUnion:
      return true;
    default:
      return false;
  }
}

}  // namespace

void TagC::CheckTagAtEnd(Statement& st) {
  const Token& prev = st.earlierToken(1);
  const Token& prev2 = st.earlierToken(2);
  if (prev.IsName()) {
    if (IsForwardWord(prev2))
      st.scope = SCOPEKIND_EXTERN;
    else
      tagVariable(st, prev);
  } else if (prev.Is(TOKEN_ARGS) && prev2.IsName()) {
    if (st.seen.isPointer)
      tagVariable(st, prev2);
    else if (IsJavaOrCSharp())
      tagFunction(st, prev2);
    else if (st.scope == SCOPEKIND_TYPEDEF)
      MakeTag(st, prev2, true, TagType::cTypedef);
    else if (IsTypeSpecifier(st.declaration))
      MakeTag(st, prev2, false, TagType::cPrototype);
  }
}

void TagC::CheckTagAtBrace(Statement& st) {
  const Token& prev = st.earlierToken(1);
  const Token& prev2 = st.earlierToken(2);
  if (prev.Is(TOKEN_ARGS)) {
    if (!st.seen.typeSeen) return;
    if (language != Language::cVera) st.declaration = DECLARES_FUNCTION;
    if (prev2.IsName()) st.openedName = prev2;
    tagFunction(st, prev2);
  } else if (IsPartOfScope(st.declaration)) {
    if (!prev.IsName()) return;
    st.openedName = prev;
    MakeTag(st, prev, st.declaration != DECLARES_NAMESPACE, TagTypeOf(st.declaration));
  } else if (language == Language::cCSharp) {
    MakeTag(st, prev, st.access == ACCESS_PRIVATE, TagType::cProperty);
  }
}

}  // namespace zendry
