#include <algorithm>
#include <utility>

#include "tags/TagC.h"
#include "tags/TagChars.h"
#include "tags/TagMacros.h"
#include "tags/TagParser.h"

namespace zendry {
namespace {

// As far is the end of template arguments looked for in a value, so that time stays linear.
constexpr size_t cLongestArguments = 512;

}  // namespace

void TagC::ResetStatement(bool partial) {
  currentStatement->resetStatement(partial, theCpp.lines.tagLine);
}

// The next character that isn't white space. The text of a parameter list keeps one blank for white
// space.
int TagC::NextChar() {
  const int c = theCpp.skipBlanks();
  if (inArgText && theCpp.blanksSkipped) argText += ' ';
  return c;
}

// Appends a character of a parameter list; the mark of a literal becomes the literal.
void TagC::AppendToArgText(int c) {
  if (c == STRING_MARK || c == CHAR_MARK) {
    const std::string literal = theCpp.TakeLiteral();
    if (!literal.empty()) {
      argText += literal;
      return;
    }
  }
  argText += static_cast<char>(c);
}

// Passes over characters that neither open nor close anything.
void TagC::PassPlain() {
  const std::string_view plain = theCpp.TakePlain();
  if (inArgText) argText += plain;
}

int TagC::PeekChar() {
  const int c = NextChar();
  theCpp.sourceUngetc(c);
  return c;
}

// Skips the next character if it is the wanted one.
void TagC::DropNext(int wanted) {
  const int c = theCpp.sourceGetc();
  if (c != wanted) theCpp.sourceUngetc(c);
}

// Reads until the active token has a type, or to the end.
void TagC::readToken() {
  Statement& st = *currentStatement;
  const auto mark = [&st](TokenType type) { st.markToken(type, theCpp.lines.tagLine); };
  do {
    const int c = NextChar();
    switch (c) {
      case -1:
        return;
      case '(':
        readParenGroup();
        break;
      case '*':
        st.seen.typeSeen = false;
        break;
      case ',':
        mark(TOKEN_COMMA);
        break;
      case ':':
        ReadColon();
        break;
      case ';':
        mark(TOKEN_SEMICOLON);
        break;
      case '=':
        skipInitialiser();
        break;
      case '<':
        ReadLess();
        break;
      case '[':
        skipBalanced("[]");
        break;
      case '{':
        mark(TOKEN_BRACE_OPEN);
        break;
      case '}':
        mark(TOKEN_BRACE_CLOSE);
        break;
      default:
        ReadOther(c);
    }
  } while (st.activeToken().type == TOKEN_NONE);
}

void TagC::ReadOther(int c) {
  Statement& st = *currentStatement;
  if (theCpp.IsIdentifierStart(c)) {
    ReadWord(c);
  } else if (c == '.' || c == '-') {
    if (!st.seen.assignment) st.seen.cannotBeVariable = true;
    if (c == '-') DropNext('>');
  } else if (c == '>' || c == '!') {
    DropNext('=');
  } else if (c == STRING_MARK && !st.seen.typeSeen && st.scope == SCOPEKIND_EXTERN) {
    st.declaration = DECLARES_PLAIN_NAMES;
    st.scope = SCOPEKIND_GLOBAL;
  }
}

void TagC::ReadWord(int c) {
  Statement& st = *currentStatement;
  ReadIdentifier(st.activeToken(), c);
  ApplyWord(st.activeToken());
  const bool isQualified = std::exchange(st.seen.isQualified, false);
  if (st.context.IsName() && st.activeToken().IsName() && !isQualified &&
      st.earlierToken(1).IsName())
    st.context.Reset(theCpp.lines.tagLine);
}

// True for a word of C++ that a header of C uses as the name of a member: `int private;`.
bool TagC::IsNameInC(const Token& token) {
  if (!IsCpp() || !isHeader || !token.Is(TOKEN_KEYWORD)) return false;
  switch (token.keyword) {
    case Keyword::cCatch:
    case Keyword::cClass:
    case Keyword::cNew:
    case Keyword::cNamespace:
    case Keyword::cPrivate:
    case Keyword::cProtected:
    case Keyword::cPublic:
    case Keyword::cTemplate:
    case Keyword::cTry:
    case Keyword::cTypename:
    case Keyword::cUsing:
    case Keyword::cVirtual:
      break;
    default:
      return false;
  }
  const Statement& st = *currentStatement;
  if (!st.isPartial && !IsTypeWord(currentStatement->earlierToken(1))) return false;
  const int c = PeekChar();
  return c == ';' || c == ',' || c == '[';
}

void TagC::ApplyWord(Token& token) {
  if (IsNameInC(token)) {
    token.keyword = Keyword::cNone;
    token.type = TOKEN_NAME;
  }
  if (token.Is(TOKEN_KEYWORD))
    applyKeyword(token);
  else if (token.modern == ModernWord::cNone)
    currentStatement->noteName();
  else
    ApplyModern(token);
}

void TagC::ReadIdentifier(Token& token, int first) {
  token.Reset(theCpp.lines.tagLine);
  token.name = static_cast<char>(first);
  theCpp.ReadIdentifierRest(token.name);
  if (inArgText) argText.append(token.name, 1);
  const WordMeaning meaning = MeaningOf(token.name, language);
  token.keyword = meaning.keyword;
  token.modern = meaning.modern;
  token.type = meaning.keyword == Keyword::cNone ? TOKEN_NAME : TOKEN_KEYWORD;
}

void TagC::ReadColon() {
  Statement& st = *currentStatement;
  const int next = theCpp.sourceGetc();
  if (next == ':') {
    st.markToken(TOKEN_DOUBLE_COLON, theCpp.lines.tagLine);
    st.seen.typeSeen = false;
    return;
  }
  theCpp.sourceUngetc(next);
  const bool hasBases = st.declaration == DECLARES_STRUCT || st.declaration == DECLARES_CLASS ||
                        st.declaration == DECLARES_INTERFACE;
  if ((IsCpp() || language == Language::cCSharp) && hasBases) {
    readParents(':');
  } else if (IsCOrCpp() && IsEnumHead(st)) {
    theCpp.sourceUngetc(skipTo("{;"));  // the enumerators' underlying type
  } else if (st.IsParent(DECLARES_STRUCT)) {
    ReadBitField();
  } else if (st.parent == nullptr || st.earlierToken(1).IsKeyword(Keyword::cDefault) ||
             st.earlierToken(2).IsKeyword(Keyword::cCase)) {
    ResetStatement(false);
  }
}

// True at the colon of `enum E : int`, not at that of a bit field `enum E e : 3`.
bool TagC::IsEnumHead(Statement& st) const {
  if (st.declaration != DECLARES_ENUM) return false;
  const Token& before = st.earlierToken(1);
  if (IsForwardWord(before)) return true;
  return before.IsName() && (IsForwardWord(st.earlierToken(2)) || !st.IsParent(DECLARES_STRUCT));
}

// A body there is that of a constructor: a macro after its parameters hid that the colon belongs to
// the constructor.
void TagC::ReadBitField() {
  int c = skipTo(IsCpp() ? ",;{" : ",;");
  if (c == '{') {
    if (!skipBalanced("{}")) return;
    c = PeekChar();
    if (c != ',' && c != ';') {
      ResetStatement(false);
      return;
    }
    NextChar();
  }
  const TokenType end = c == ',' ? TOKEN_COMMA : TOKEN_SEMICOLON;
  if (c != -1) currentStatement->markToken(end, theCpp.lines.tagLine);
}

void TagC::ReadLess() {
  const int next = theCpp.sourceGetc();
  if (next == '>') return;
  theCpp.sourceUngetc(next);
  if (IsCpp() && next != '=' && next != '<') skipBalanced("<>");
}

// Skips the value after a `=`, up to the sign that ends it. A 0 there makes a function pure.
void TagC::skipInitialiser() {
  Statement& st = *currentStatement;
  const bool isEnum = st.IsParent(DECLARES_ENUM);
  int c = theCpp.sourceGetc();
  if (c == '=') return;
  theCpp.sourceUngetc(c);
  for (bool isDone = false; !isDone;) {
    c = NextChar();
    switch (c) {
      case -1:
      case ',':
      case ';':
        isDone = true;
        break;
      case '0':
        if (st.implementation == IMP_VIRTUAL) st.implementation = IMP_PURE_VIRTUAL;
        break;
      case '(':
        skipBalanced("()");
        break;
      case '{':
        skipBalanced("{}");
        break;
      case '[':
        skipBalanced("[]");
        break;
      case '<':
        if (IsCpp() && !DropOperatorRest() && IsTemplateAhead()) skipBalanced("<>");
        break;
      case '}':
        isDone = isEnum;
        if (!isEnum && !theCpp.laterPass)
          theTagParser.logMessage("unexpected closing brace at line:" +
                                  std::to_string(theCpp.lines.lineNumber));
        break;
      default:
        break;
    }
  }
  st.seen.assignment = true;
  if (c == '}') theCpp.sourceUngetc(c);
  if (c != -1) st.markToken(c == ';' ? TOKEN_SEMICOLON : TOKEN_COMMA, theCpp.lines.tagLine);
  if (st.scope == SCOPEKIND_EXTERN) st.scope = SCOPEKIND_GLOBAL;
}

// True if the text after a "<" looks like template arguments: it has a match before anything that
// can't be one.
bool TagC::IsTemplateAhead() const {
  int depth = 1;
  int groups = 0;
  char before = 0;
  for (const char c : theCpp.lines.Ahead().substr(0, cLongestArguments)) {
    if (c == '(' || c == '[')
      ++groups;
    else if ((c == ')' || c == ']') && --groups < 0)
      return false;
    else if (c == ';' || c == '{' || c == '}' || c == '"' ||
             (c == before && (c == '&' || c == '|')))
      return false;
    else if (groups == 0 && c == '<')
      ++depth;
    else if (groups == 0 && c == '>' && before != '-' && --depth == 0)
      return true;
    before = c;
  }
  return false;
}

// Skips everything up to one of these characters. Returns that one, or -1 at the end.
int TagC::skipTo(std::string_view ends) {
  int c;
  do c = NextChar();
  while (c != -1 && (c > 127 || ends.find(static_cast<char>(c)) == ends.npos));
  return c;
}

bool TagC::FailToMatch(char opening, int line) {
  theTagParser.logMessage(std::string("failed to find match for ") + opening +
                          " at line:" + std::to_string(line));
  return false;
}

// Skips everything up to the match of an opening character that has been read. Returns false, and
// logs a line, when the input ends before it.
bool TagC::skipBalanced(std::string_view pair) {
  if (pair == "{}" && !inArgText) return SkipBody();
  if (pair == "<>") return SkipTemplateArguments();
  const int line = theCpp.lines.lineNumber;
  for (int depth = 1; depth > 0;) {
    PassPlain();
    const int c = NextChar();
    if (c == -1) return FailToMatch(pair[0], line);
    if (inArgText) AppendToArgText(c);
    if (c == pair[0])
      ++depth;
    else if (c == pair[1])
      --depth;
  }
  return true;
}

// Skips the body of a block, and notes it if it is between two braces of the text.
bool TagC::SkipBody() {
  BodyNotes& bodies = theTagParser.bodies;
  const size_t noted = bodies.Count();
  const bool isNoted = theCpp.IsJustAfter('{') && !theCpp.laterPass;
  const bool isEnded = PassBody();
  if (!isNoted || !isEnded || !theCpp.IsJustAfter('}')) bodies.DropAfter(noted);
  return isEnded;
}

// Passes over everything up to the end of a body; only the braces count.
bool TagC::PassBody() {
  const int line = theCpp.lines.lineNumber;
  const unsigned depthAtStart = theCpp.directive.condDepth;
  int start = theCpp.Place();
  for (int depth = 1; depth > 0;) {
    theCpp.SkipToBrace();
    const int end = theCpp.Place();
    const int directives = theCpp.directivesRead;
    const int c = theCpp.sourceGetc();
    if (c == -1) return FailToMatch('{', line);
    if (c == '{')
      ++depth;
    else if (c == '}')
      --depth;
    if (depth > 0 && IsBodyGivenUp(depthAtStart)) return true;
    if (depth > 0 && directives == theCpp.directivesRead) continue;
    theTagParser.bodies.Add({start, std::min(end, theCpp.Place() - 1)});
    start = theCpp.Place();
  }
  return true;
}

// In a later pass braces aren't trusted across a conditional: the body goes on to the next `}` at
// the beginning of a line.
bool TagC::IsBodyGivenUp(unsigned depthAtStart) {
  if (!theCpp.laterPass || theCpp.directive.condDepth == depthAtStart) return false;
  int before = 0;
  int c = theCpp.sourceGetc();
  while (c != -1 && !(c == '}' && before == '\n')) {
    before = c;
    c = theCpp.sourceGetc();
  }
  return true;
}

// True if a "<" is the beginning of "<=" or "<<", which open no list, or a ">" that of ">=", which
// closes none; the rest of the sign is then skipped.
bool TagC::DropOperatorRest(char first) {
  const int next = theCpp.sourceGetc();
  const bool isOperator = next == '=' || (next == '<' && first == '<');
  if (!isOperator)
    theCpp.sourceUngetc(next);
  else if (inArgText)
    argText += static_cast<char>(next);
  return isOperator;
}

// Brackets within parentheses are often comparisons, so a group counts as a whole. A character that
// can't be in a template argument ends the list: the "<" was then a comparison or a shift, which is
// no error.
bool TagC::SkipTemplateArguments() {
  const int line = theCpp.lines.lineNumber;
  int groups = 0;
  for (int depth = 1; depth > 0;) {
    PassPlain();
    const int c = NextChar();
    const bool isEnd = c == -1 || (groups == 0 && (c == ';' || c == '{' || c == '}' || c == ')'));
    if (isEnd) {
      if (c == -1) return FailToMatch('<', line);
      theCpp.sourceUngetc(c);
      return false;
    }
    if (inArgText) AppendToArgText(c);
    if (c == '(')
      ++groups;
    else if (c == ')')
      --groups;
    else if (groups == 0 && c == '<' && !DropOperatorRest())
      ++depth;
    else if (groups == 0 && c == '>' && !DropOperatorRest('>'))
      --depth;
  }
  return true;
}

void TagC::SkipGroupIfAny() {
  const int c = NextChar();
  if (c == '(')
    skipBalanced("()");
  else
    theCpp.sourceUngetc(c);
}

}  // namespace zendry
