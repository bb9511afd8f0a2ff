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
  std::string_view text;  // lies in the text that was split
  int header = -1;        // index of the header that it came by; -1: the source itself

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

// What `g++ -E` has made of a source that includes one header after another.
struct ExpandedSource {
  std::vector<CppToken> tokens;
  std::vector<std::string> headers;  // names without folders
};

// Splits the compiler's output; its line markers tell the header of each token.
ExpandedSource SplitTokens(std::string_view expanded);

// A place in a run of tokens. Behind its end stand empty tokens.
class CppCursor {
 public:
  explicit CppCursor(const std::vector<CppToken>& readFrom) : tokens(&readFrom) {}

  const CppToken& Peek(size_t ahead = 0) const;
  const CppToken& Next();
  bool Is(std::string_view text) const { return Peek().Is(text); }
  // Moves behind the token if it is this one.
  bool Accept(std::string_view text);
  bool AtEnd() const { return position >= tokens->size(); }

  // From an opening bracket to behind its match; over one token where none stands. SkipAngles does
  // it for "<", and gives up before a ";".
  void SkipBalanced();
  void SkipAngles();
  // Behind the next ";" that stands in no bracket.
  void SkipStatement();
  // Over what stands here of attributes, alignments and the compiler's own words.
  void SkipAttributes();
  // Behind a requires clause, whose keyword comes next.
  void SkipRequires();

  size_t position = 0;

 private:
  const std::vector<CppToken>* tokens;
};

}  // namespace zendry
