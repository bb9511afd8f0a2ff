#pragma once

#include <algorithm>
#include <iterator>
#include <string>
#include <string_view>
#include <vector>

#include "code/CppLexer.h"

namespace zendry {

// A token of preprocessed C++.
struct CppToken {
  using Kind = CppPiece::Kind;

  Kind kind = Kind::cSign;
  std::string_view text;  // points into the text that was split
  int header = -1;        // index of the header that it comes from; -1: the source itself

  bool Is(std::string_view other) const { return text == other; }
};

template <size_t count>
bool IsOneOf(std::string_view text, const std::string_view (&words)[count]) {
  return std::find(std::begin(words), std::end(words), text) != std::end(words);
}

template <size_t count>
bool IsOneOf(const CppToken& token, const std::string_view (&words)[count]) {
  return IsOneOf(token.text, words);
}

// A macro of a header: "(a, b)" if it takes arguments.
struct ExpandedMacro {
  std::string name;
  std::string parameters;
};

// The output of `g++ -E` for a source that includes one header after another; with `-dD` the macros
// of the headers are in it too.
struct ExpandedSource {
  std::vector<CppToken> tokens;
  std::vector<std::string> headers;  // names without folders
  std::vector<ExpandedMacro> macros;
};

// Splits the compiler's output; its line markers say which header each token comes from.
ExpandedSource SplitTokens(std::string_view expanded);

// A position in a row of tokens. After the end, all tokens are empty.
class CppCursor {
 public:
  explicit CppCursor(const std::vector<CppToken>& readFrom) : tokens(&readFrom) {}

  const CppToken& Peek(size_t ahead = 0) const;
  const CppToken& Next();
  bool Is(std::string_view text) const { return Peek().Is(text); }
  // If the current token has this text, moves after it.
  bool Accept(std::string_view text);
  bool AtEnd() const { return position >= tokens->size(); }

  // Moves from an opening bracket to the token after its match; if there is no bracket, moves by
  // one token. SkipAngles does the same for "<", and stops before a ";".
  void SkipBalanced();
  void SkipAngles();
  // Moves after the next ";" outside of brackets.
  void SkipStatement();
  // Moves over attributes, alignments and the compiler's own words.
  void SkipAttributes();
  // Moves after a requires clause; its keyword is the next token.
  void SkipRequires();

  size_t position = 0;

 private:
  const std::vector<CppToken>* tokens;
};

}  // namespace zendry
