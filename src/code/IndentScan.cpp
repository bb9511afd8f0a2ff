#include "code/IndentScan.h"

#include <initializer_list>
#include <tuple>
#include <utility>

namespace zendry {

namespace {

using PieceKind = CppPiece::Kind;

constexpr size_t cMostConditionals = 64;
constexpr int cAssignLevel = 0, cStreamLevel = 8;
bool IsOneOf(std::string_view word, std::initializer_list<std::string_view> words) {
  return std::find(words.begin(), words.end(), word) != words.end();
}

bool IsAccess(std::string_view word) {
  return IsOneOf(word, {"public", "private", "protected", "signals", "Q_SIGNALS"});
}

bool IsMacroName(std::string_view word) {
  const auto isUpper = [](char c) {
    return (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_';
  };
  return word.size() > 2 && std::all_of(word.begin(), word.end(), isUpper);
}

// True if the piece can end an operand, so that an operator after it has two sides.
bool EndsOperand(const CppPiece& piece) {
  if (piece.kind == PieceKind::cSign) return IsOneOf(piece.text, {")", "]", "}"});
  if (piece.kind == PieceKind::cWord) return !IsOneOf(piece.text, {"return", "case", "throw"});
  return piece.kind != PieceKind::cEnd;
}

bool IsString(const CppPiece& piece) {
  return piece.kind == PieceKind::cLiteral && piece.text.ends_with('"');
}

}  // namespace

IndentScan::IndentScan(std::string_view theText, int theTabWidth, Visit theVisit)
    : text(theText), tabWidth(std::max(1, theTabWidth)), visit(std::move(theVisit)) {
  frames.emplace_back();
}

void IndentScan::Run() {
  CppLexer lexer(text);
  size_t end = 0;
  BeginLine(0);
  for (;;) {
    const CppPiece piece = lexer.Next();
    const bool isLast = piece.text.empty();
    const size_t start =
        isLast ? text.size() : static_cast<size_t>(piece.text.data() - text.data());
    ReadGap(end, start);
    if (isLast) {
      if (startsLine) visit(lineStart, PlaceOf({}), ColumnOf(text.size()));
      return;
    }
    if (piece.kind == PieceKind::cDirective)
      ReadDirective(piece, start);
    else
      ReadPiece(piece, start);
    end = start + piece.text.size();
  }
}

void IndentScan::BeginLine(size_t start) {
  lineStart = knownPlace = start;
  knownColumn = 0;
  startsLine = true;
}

// Places are asked for in the order of the text.
int IndentScan::ColumnOf(size_t place) {
  if (place < knownPlace) std::tie(knownPlace, knownColumn) = std::pair(lineStart, 0);
  for (; knownPlace < place; ++knownPlace) {
    const char c = text[knownPlace];
    if (c == '\t')
      knownColumn += tabWidth - knownColumn % tabWidth;
    else if ((c & 0xC0) != 0x80)
      ++knownColumn;
  }
  return knownColumn;
}

size_t IndentScan::FirstOfLine(size_t start) const {
  return std::min(text.find_first_not_of(" \t", start), text.size());
}

// Between two pieces there are blanks, line ends and comments.
void IndentScan::ReadGap(size_t from, size_t to) {
  for (size_t at = from; at < to;) {
    if (text[at] == '\n') {
      BeginLine(++at);
      continue;
    }
    if (text[at] != '/' || at + 1 >= text.size()) {
      ++at;
      continue;
    }
    if (startsLine) {
      lineIndent = ColumnOf(at);
      visit(lineStart, PlaceOf({PieceKind::cDirective, text.substr(at, 2)}), lineIndent);
      startsLine = false;
    }
    if (text[at + 1] == '/')
      at = std::min(text.find('\n', at), to);
    else
      at = ReadComment(at, to);
  }
}

// Each line of a comment is below its first; stars are below its star.
size_t IndentScan::ReadComment(size_t at, size_t to) {
  const int sign = ColumnOf(at);
  const size_t close = text.find("*/", at + 2);
  const size_t firstWord = text.find_first_not_of("*! \t\r", at + 1);
  const bool hasWords = firstWord != text.npos && text[firstWord] != '\n';
  int words = hasWords ? sign + 3 : sign;
  bool hasStars = hasWords;
  const size_t end = close == text.npos ? to : std::min(close + 2, to);
  for (; at < end; ++at) {
    if (text[at] != '\n') continue;
    BeginLine(at + 1);
    const size_t first = FirstOfLine(lineStart);
    lineIndent = ColumnOf(first);
    const bool isStar = first < text.size() && text[first] == '*';
    const bool isEnd = isStar && text.substr(first).starts_with("*/");
    hasStars |= isStar && !isEnd;
    const int below = isStar ? sign + (isEnd && !hasStars && words == sign ? 0 : 1) : words;
    visit(lineStart, {IndentHabit::cSame, below}, lineIndent);
    const bool isBlank = first >= text.size() || text[first] == '\n';
    if (!isStar && !isBlank) words = lineIndent;
    startsLine = false;
  }
  return end;
}

void IndentScan::ReadDirective(const CppPiece& piece, size_t start) {
  const int column = ColumnOf(start);
  visit(lineStart, {IndentHabit::cDirective, 0}, column);
  startsLine = false;
  const size_t wordAt = std::min(piece.text.find_first_not_of(" \t", 1), piece.text.size());
  const std::string_view word = piece.text.substr(wordAt);
  if (word.starts_with("if") && conditionals.size() < cMostConditionals)
    conditionals.push_back(frames);
  else if (word.starts_with("el") && !conditionals.empty())
    frames = conditionals.back();
  else if (word.starts_with("endif") && !conditionals.empty())
    conditionals.pop_back();
  ReadMacroBody(start, start + piece.text.size());
}

// The lines of a macro's body are indented by a block, and by its own braces.
void IndentScan::ReadMacroBody(size_t start, size_t end) {
  IndentPlace place{IndentHabit::cBlock, 0};
  std::vector<int> braces;
  for (size_t at = text.find('\n', start); at < end; at = text.find('\n', at + 1)) {
    BeginLine(at + 1);
    startsLine = false;
    const size_t first = FirstOfLine(lineStart);
    const int column = ColumnOf(first);
    if (!braces.empty() && first < text.size() && text[first] == '}') {
      place = {IndentHabit::cSame, braces.back()};
      braces.pop_back();
    }
    visit(lineStart, place, column);
    const size_t lineEnd = std::min(text.find('\n', first), end);
    const size_t last = text.find_last_not_of(" \t\r\\", lineEnd - 1);
    if (last == text.npos || last < first) continue;
    place = {IndentHabit::cSame, column};
    if (text[last] != '{') continue;
    place = {IndentHabit::cBlock, column};
    braces.push_back(column);
  }
}

void IndentScan::ReadPiece(const CppPiece& piece, size_t start) {
  const int column = ColumnOf(start);
  if (startsLine) {
    lineIndent = column;
    visit(lineStart, PlaceOf(piece), column);
  }
  Consume(piece, column);
  before = piece;
  startsLine = false;
  const size_t lineEnd = piece.text.rfind('\n');
  if (lineEnd == piece.text.npos) return;
  BeginLine(start + lineEnd + 1);
  startsLine = false;
}

// The first character after a piece in its line.
char IndentScan::SignAfter(const CppPiece& piece) const {
  const size_t end = static_cast<size_t>(piece.text.data() - text.data()) + piece.text.size();
  const size_t next = FirstOfLine(end);
  if (next >= text.size() || text.substr(next).starts_with("::")) return '\0';
  return text[next];
}

bool IndentScan::IsLabel(const CppPiece& piece) const {
  const Kind kind = frames.back().kind;
  if (piece.kind != PieceKind::cWord || kind == Kind::cEnum || kind == Kind::cInit) return false;
  const bool isOutside = kind == Kind::cClass || kind == Kind::cFile;
  if (piece.text == "case" || (IsAccess(piece.text) && isOutside)) return true;
  if (SignAfter(piece) != ':') return false;
  return kind == Kind::cBlock || piece.text == "default" || IsAccess(piece.text) ||
         (kind == Kind::cClass && IsMacroName(piece.text));
}

// A macro alone in its line needs no semicolon.
bool IndentScan::EndsAsMacro(const CppPiece& next) const {
  const Frame& frame = frames.back();
  if (!frame.isOpen || !frame.isMacro || frame.tokens != 1 || !startsLine) return false;
  return next.kind == PieceKind::cWord || next.kind == PieceKind::cEnd || next.text == "}" ||
         next.text == "~";
}

// Group: reading.

void IndentScan::Consume(const CppPiece& piece, int column) {
  const bool isSign = piece.kind == PieceKind::cSign;
  const bool closes =
      isSign && (IsOneOf(piece.text, {")", "]", "}"}) || (Top().sign == '<' && piece.text == ">"));
  if (EndsAsMacro(piece)) EndStatement();
  if (closes) return Close(piece.text[0]);
  if (Top().isEmpty) {
    Top().isEmpty = false;
    if (!startsLine)
      Top().after = column;
    else if (Top().kind == Kind::cParen)
      Top().inner = column;
  }
  if (Top().kind != Kind::cParen && !Top().isOpen && BeginStatement(piece, column)) return;
  if (Top().kind != Kind::cParen && piece.text != "(") ++Top().tokens;
  if (Top().inMembers && Top().member < 0) Top().member = column;
  Expression& expression = Top().expression;
  const bool isOperator = LevelOf(piece.text) >= 0 && EndsOperand(before);
  if (!isOperator && piece.text != ",") {
    if (expression.first < 0) expression.first = column;
    for (int& start : expression.starts)
      if (start < 0) start = column;
  }
  if (IsString(piece)) expression.literal = column;
  const bool isName = before.text == "operator" && piece.text != "(";
  if (piece.kind == PieceKind::cWord)
    ReadWord(piece.text);
  else if (isSign && !isName)
    ReadSign(piece, column);
}

// True if nothing more is to be read from the piece.
bool IndentScan::BeginStatement(const CppPiece& piece, int column) {
  Frame& frame = Top();
  const std::string_view word = piece.text;
  if (word == ";") return EndStatement(), true;
  if (frame.isEnded && ContinueOwner(word)) return true;
  if (frame.isEnded) {
    frame.owners.clear();
    frame.isEnded = false;
  }
  int line = startsLine ? column : lineIndent;
  if (!startsLine && !frame.owners.empty() && frame.owners.back().control == Control::cElse) {
    line = frame.owners.back().column;
    if (word == "if") frame.owners.pop_back();
  }
  frame.isOpen = true;
  frame.column = line;
  frame.tokens = 0;
  frame.isMacro = piece.kind == PieceKind::cWord && IsMacroName(word);
  if (IsLabel(piece)) {
    frame.isLabel = true;
    if (word == "case" || word == "default") {
      frame.label = line;
      frame.inner = -1;
    }
    return false;
  }
  const bool isCaseBrace = word == "{" && frame.label >= 0 && frame.inner < 0;
  if (startsLine && frame.owners.empty() && !isCaseBrace) frame.inner = column;
  frame.isJump = IsOneOf(word, {"break", "return", "continue", "goto"});
  if (piece.kind == PieceKind::cSign && word == "{") return OpenBare(column), true;
  return BeginControl(word, line);
}

// `else`, `while` after `do`, `catch`: true if the word belongs to the statement before.
bool IndentScan::ContinueOwner(std::string_view word) {
  Frame& frame = Top();
  const auto dropTo = [&frame](Control control) {
    auto at = frame.owners.rbegin();
    while (at != frame.owners.rend() && at->control != control) ++at;
    if (at == frame.owners.rend()) return false;
    frame.owners.erase(at.base(), frame.owners.end());
    frame.isEnded = false;
    return true;
  };
  if (word == "else" && dropTo(Control::cIf)) {
    frame.owners.back().control = Control::cElse;
    return true;
  }
  if (word == "catch" && dropTo(Control::cTry)) {
    frame.isOpen = frame.needsHeader = true;
    return true;
  }
  if (word != "while" || !dropTo(Control::cDo)) return false;
  frame.isOpen = true;
  frame.column = frame.owners.back().column;
  frame.owners.pop_back();
  return true;
}

bool IndentScan::BeginControl(std::string_view word, int column) {
  Frame& frame = Top();
  const auto govern = [&](Control control, bool hasHeader) {
    frame.owners.push_back({control, column});
    frame.needsHeader = frame.isOpen = hasHeader;
    return true;
  };
  if (word == "if") return govern(Control::cIf, true);
  if (IsOneOf(word, {"for", "while", "switch", "catch", "foreach"}))
    return govern(Control::cLoop, true);
  if (word == "else") return govern(Control::cElse, false);
  if (word == "do") return govern(Control::cDo, false);
  if (word == "try") return govern(Control::cTry, false);
  return false;
}

void IndentScan::EndStatement() {
  Frame& frame = Top();
  const bool wasLabel = frame.isLabel;
  Frame fresh;
  fresh.kind = frame.kind;
  fresh.sign = frame.sign;
  fresh.isLambda = frame.isLambda;
  fresh.base = frame.base;
  fresh.after = frame.after;
  fresh.isEmpty = frame.isEmpty;
  fresh.inner = frame.inner;
  fresh.label = frame.label;
  fresh.owners = std::move(frame.owners);
  fresh.hasJumped = frame.isJump && fresh.owners.empty();
  fresh.isEnded = !fresh.owners.empty() && !wasLabel;
  frame = std::move(fresh);
}

// The head of an `if` is complete; its statement comes.
void IndentScan::EndHeader() {
  Frame& frame = Top();
  frame.needsHeader = frame.isOpen = false;
  frame.expression = {};
}

void IndentScan::ReadWord(std::string_view word) {
  Frame& frame = Top();
  if (frame.kind != Kind::cParen) {
    if (IsOneOf(word, {"class", "struct", "union"})) frame.isClass = true;
    if (word == "enum") frame.isEnum = true;
    if (word == "namespace") frame.isNamespace = true;
    if (word == "template") frame.isTemplate = true;
  }
  if (!IsOneOf(word, {"return", "throw", "co_return"})) return;
  frame.hasAssign = true;
  frame.expression = {};
}

void IndentScan::ReadSign(const CppPiece& piece, int column) {
  Frame& frame = Top();
  const std::string_view sign = piece.text;
  if (sign == "(" || sign == "[") return OpenParen(sign[0]);
  if (sign == "<" && (before.text == "template" || frame.sign == '<')) return OpenParen('<');
  if (sign == "{") return OpenBrace(column);
  if (sign == ";") {
    if (frame.kind != Kind::cParen) return EndStatement();
    frame.expression = {};
  } else if (sign == ",") {
    if (frame.kind == Kind::cEnum || frame.kind == Kind::cInit) return EndStatement();
    frame.expression = {};
    frame.lambdaComes = false;
  } else if (sign == ":" && frame.kind != Kind::cParen && ReadColon()) {
    return;
  } else if ((sign == "." || sign == "->") && startsLine) {
    frame.expression.chain = column;
  } else {
    ReadOperator(sign, column);
  }
}

void IndentScan::ReadOperator(std::string_view sign, int column) {
  Frame& frame = Top();
  const int level = LevelOf(sign);
  if (level < 0 || !EndsOperand(before)) return;
  Expression& expression = frame.expression;
  if (level == cAssignLevel) {
    frame.hasAssign = true;
    expression = {};
    return;
  }
  if (sign == "?") expression.question = column;
  if (level == cStreamLevel && expression.stream < 0) expression.stream = column;
  expression.Restart(static_cast<size_t>(level) + 1);
}

// True if the colon is no operator.
bool IndentScan::ReadColon() {
  Frame& frame = Top();
  if (frame.isLabel) return EndStatement(), true;
  if (frame.expression.question >= 0) return false;
  if (frame.kind == Kind::cBlock || (!frame.hasParens && !frame.isClass)) return false;
  frame.inMembers = true;
  frame.colon = startsLine ? lineIndent : -1;
  frame.member = -1;
  return true;
}

void IndentScan::OpenParen(char sign) {
  Top().isAttribute = before.kind == PieceKind::cWord &&
                      (IsMacroName(before.text) || before.text.starts_with("__attribute"));
  Frame frame;
  frame.kind = Kind::cParen;
  frame.sign = sign;
  frame.isArray = sign == '[' && !EndsOperand(before);
  frame.base = lineIndent;
  frames.push_back(std::move(frame));
}

// A brace where a statement begins: a block of its own, of an `if`, or a list in a list.
void IndentScan::OpenBare(int column) {
  Frame& frame = Top();
  Frame block;
  block.sign = '{';
  block.kind = frame.kind == Kind::cInit ? Kind::cInit : Kind::cBlock;
  block.isLambda = frame.kind == Kind::cInit;
  const int owner = frame.owners.empty() ? lineIndent : frame.owners.back().column;
  block.base = startsLine ? column : owner;
  frames.push_back(std::move(block));
}

IndentScan::Kind IndentScan::KindOfBrace() {
  Frame& frame = Top();
  const bool isLambda = std::exchange(frame.lambdaComes, false);
  if (isLambda) return Kind::cBlock;
  if (frame.kind == Kind::cParen || frame.kind == Kind::cInit) return Kind::cInit;
  if (frame.hasAssign) return Kind::cInit;
  if (frame.isEnum) return Kind::cEnum;
  if (frame.isNamespace || IsString(before)) return Kind::cNamespace;
  if (frame.isClass && !frame.hasParens) return Kind::cClass;
  const bool followsName = before.kind == PieceKind::cWord || before.text == ">";
  const bool isQualifier =
      IsOneOf(before.text, {"const", "noexcept", "override", "final", "try", "else", "do"});
  if (frame.inMembers && followsName && !isQualifier) return Kind::cInit;
  if (frame.kind == Kind::cBlock && !frame.hasParens && followsName) return Kind::cInit;
  return Kind::cBlock;
}

void IndentScan::OpenBrace(int column) {
  const bool isLambda = Top().lambdaComes;
  Frame block;
  block.sign = '{';
  block.kind = KindOfBrace();
  block.isLambda = isLambda || block.kind == Kind::cInit;
  const int owner = block.isLambda ? lineIndent : Top().column;
  block.base = startsLine ? column : owner;
  frames.push_back(std::move(block));
}

// A sign without its partner changes nothing, except that "}" ends what is open inside it.
void IndentScan::Close(char sign) {
  const char open = sign == ')' ? '(' : sign == ']' ? '[' : sign == '>' ? '<' : '{';
  size_t at = frames.size() - 1;
  while (at > 0 && frames[at].sign != open && (open == '{' || frames[at].sign != '{')) --at;
  if (at == 0 || frames[at].sign != open) {
    if (open == '{') EndStatement();
    return;
  }
  const Frame closed = std::move(frames[at]);
  frames.resize(at);
  Frame& frame = Top();
  if (open == '(' && frame.kind != Kind::cParen) {
    if (frame.needsHeader) return EndHeader();
    frame.hasParens = true;
  }
  if (open == '[' && closed.isArray) frame.lambdaComes = true;
  if (open != '{' || closed.isLambda) return;
  if (closed.kind != Kind::cClass && closed.kind != Kind::cEnum) EndStatement();
}

}  // namespace zendry
