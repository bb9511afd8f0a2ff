#include "code/CppLexer.h"

#include <algorithm>
#include <string>

#include "code/TextScanner.h"

namespace zendry {

namespace {

// Signs of more than one character, longest first.
constexpr std::string_view cLongSigns[] = {
    "<=>", "<<=", ">>=", "->*", "...", "::", "->", "&&", "||", "==", "!=", "<=", ">=",
    "++",  "--",  "+=",  "-=",  "*=",  "/=", "%=", "&=", "|=", "^=", "<<", "*/"};
constexpr std::string_view cPrefixes[] = {"R", "L", "u", "U", "u8", "LR", "uR", "UR", "u8R"};

bool IsWordByte(char c) {
  return IsWordChar(static_cast<unsigned char>(c)) || c < 0 || c == '$';
}

bool IsDigit(char c) {
  return c >= '0' && c <= '9';
}

// Where a comment begins that the line doesn't close; npos if there is none.
size_t OpenComment(std::string_view line) {
  for (size_t at = line.find('/'); at < line.size(); at = line.find('/', at)) {
    if (line.substr(at, 2) == "//") break;
    if (line.substr(at, 2) != "/*") {
      ++at;
      continue;
    }
    const size_t close = line.find("*/", at + 2);
    if (close == line.npos) return at;
    at = close + 2;
  }
  return line.npos;
}

}  // namespace

CppPiece CppLexer::Next() {
  for (;;) {
    SkipBlanks();
    if (at >= text.size()) return {};
    if (isLineStart && Peek() == '#') return Directive();
    isLineStart = false;
    if (!StartsWith("//") && !StartsWith("/*")) break;
    if (!SkipComment()) return Piece(Kind::cLiteral, at);
  }
  const char c = Peek();
  if (IsDigit(c)) return Number();
  if (IsWordByte(c)) return Word();
  if (c == '"' || c == '\'') return Literal(at, c);
  return Sign();
}

void CppLexer::SkipBlanks() {
  for (; at < text.size(); ++at) {
    const char c = text[at];
    if (c == '\n') isLineStart = true;
    if (!IsWhiteSpace(static_cast<unsigned char>(c)) && c != '\0') return;
  }
}

bool CppLexer::SkipComment() {
  const std::string_view end = StartsWith("//") ? "\n" : "*/";
  const size_t found = text.find(end, at + 2);
  at = found == text.npos ? text.size() : end == "\n" ? found : found + end.size();
  return found != text.npos || end == "\n";
}

// A comment that begins in the directive may end lines below; the rest of that line belongs to it.
CppPiece CppLexer::Directive() {
  const size_t start = at;
  for (;;) {
    const size_t line = at;
    at = std::min(text.find('\n', at), text.size());
    if (const size_t open = OpenComment(text.substr(line, at - line)); open != text.npos) {
      at = std::min(text.find("*/", line + open + 2), text.size());
      continue;
    }
    if (at == text.size()) break;
    const size_t last = text.find_last_not_of('\r', at - 1);
    if (text[last] != '\\') break;
    ++at;
  }
  isLineStart = false;
  return Piece(Kind::cDirective, start);
}

// Reads a number like the preprocessor: a sign after an exponent's letter belongs to it.
CppPiece CppLexer::Number() {
  const size_t start = at;
  const auto isSignOfExponent = [this](size_t place) {
    constexpr std::string_view cDecimal = "eE", cHexadecimal = "pP";
    const bool isHex = Peek() != '\0' && text.substr(at, 2).find_first_of("xX") == 1;
    const char before = text[place - 1];
    return (text[place] == '+' || text[place] == '-') &&
           (isHex ? cHexadecimal : cDecimal).find(before) != std::string_view::npos;
  };
  size_t end = start + 1;
  for (; end < text.size(); ++end) {
    const char c = text[end];
    const bool isSeparator = c == '\'' && end + 1 < text.size() && IsWordByte(text[end + 1]);
    if (!IsWordByte(c) && c != '.' && !isSeparator && !isSignOfExponent(end)) break;
  }
  at = end;
  return Piece(Kind::cNumber, start);
}

CppPiece CppLexer::Word() {
  const size_t start = at;
  while (at < text.size() && IsWordByte(text[at])) ++at;
  const std::string_view word = text.substr(start, at - start);
  const bool isPrefix =
      std::find(std::begin(cPrefixes), std::end(cPrefixes), word) != std::end(cPrefixes);
  if (isPrefix && Peek() == '"')
    return word.ends_with('R') ? RawLiteral(start) : Literal(start, '"');
  if (isPrefix && Peek() == '\'') return Literal(start, '\'');
  return Piece(Kind::cWord, start);
}

// `at` is at the opening sign on entry.
CppPiece CppLexer::Literal(size_t start, char sign) {
  for (++at; at < text.size() && Peek() != sign && Peek() != '\n'; ++at)
    if (Peek() == '\\' && Peek(1) != '\n') ++at;
  at = std::min(at + (Peek() == sign ? 1 : 0), text.size());
  while (at < text.size() && IsWordByte(text[at])) ++at;  // "text"s
  return Piece(Kind::cLiteral, start);
}

CppPiece CppLexer::RawLiteral(size_t start) {
  const size_t open = text.find('(', at);
  if (open == text.npos || open - at > cLongestRawMark + 1) return Literal(start, '"');
  const std::string end = ")" + std::string(text.substr(at + 1, open - at - 1)) + "\"";
  const size_t close = text.find(end, open);
  if (close == text.npos) return Literal(start, '"');
  at = close + end.size();
  return Piece(Kind::cLiteral, start);
}

CppPiece CppLexer::Sign() {
  const size_t start = at;
  constexpr std::string_view cSecond = "=:>&|+-<./";  // only these characters continue a sign
  if (cSecond.find(Peek(1)) == cSecond.npos) {
    ++at;
    return Piece(Kind::cSign, start);
  }
  const auto isHere = [this](std::string_view sign) { return StartsWith(sign); };
  const auto* found = std::find_if(std::begin(cLongSigns), std::end(cLongSigns), isHere);
  at += found == std::end(cLongSigns) ? 1 : found->size();
  return Piece(Kind::cSign, start);
}

}  // namespace zendry
