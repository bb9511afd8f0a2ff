#pragma once

#include <string_view>

namespace zendry {

// A piece of C or C++ text. It points into the text that was read.
struct CppPiece {
  // A directive is a preprocessor line with its continuation lines; `cEnd` comes after the last
  // piece.
  enum class Kind : char { cWord, cNumber, cLiteral, cSign, cDirective, cEnd };

  Kind kind = Kind::cEnd;
  std::string_view text;
};

// Reads a text piece by piece from its start to its end; blanks and comments are skipped. Every
// text can be read: a literal that isn't closed ends with its line, a comment that isn't closed is
// a literal without letters at the end, "*/" without a comment is a sign. ">>" gives two signs,
// since it may close two lists of template arguments; every other sign is as long as it can be.
class CppLexer {
 public:
  // The longest delimiter of a raw string.
  static constexpr size_t cLongestRawMark = 16;

  explicit CppLexer(std::string_view theText) : text(theText) {}

  CppPiece Next();

 private:
  using Kind = CppPiece::Kind;

  char Peek(size_t ahead = 0) const { return at + ahead < text.size() ? text[at + ahead] : '\0'; }
  bool StartsWith(std::string_view sign) const { return text.substr(at).starts_with(sign); }
  CppPiece Piece(Kind kind, size_t start) const { return {kind, text.substr(start, at - start)}; }
  void SkipBlanks();
  // False when the comment is not closed.
  bool SkipComment();
  CppPiece Directive();
  CppPiece Number();
  CppPiece Word();
  CppPiece Literal(size_t start, char sign);
  CppPiece RawLiteral(size_t start);
  CppPiece Sign();

  const std::string_view text;
  size_t at = 0;
  bool isLineStart = true;
};

}  // namespace zendry
