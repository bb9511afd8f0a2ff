#pragma once

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

#include "code/CppLexer.h"

namespace zendry {

class CaretText;

// A piece of a source text: a word, a number, a literal or an operator.
struct CodeToken {
  using Kind = CppPiece::Kind;

  Kind kind = Kind::cSign;
  int start = 0;  // in the text
  int end = 0;
  int partner = -1;  // for a bracket: its counterpart; -1 without one
};

// The number of steps that the readers of tokens may still take together, so that no text makes
// them slow.
struct StepBudget {
  int steps = 200'000;

  // Takes some steps; false when none are left.
  bool Take(int cost = 1) {
    steps -= std::min(cost, steps);
    return steps > 0;
  }
};

// The tokens of a piece of C or C++ text, without comments and preprocessor lines. Broken text has
// tokens too: a literal that isn't closed ends with its line, and a bracket without its counterpart
// has no partner.
class CodeTokens {
 public:
  // The most bytes of a text that are read before the caret.
  static constexpr int cMostText = 65536;

  explicit CodeTokens(std::string theText);
  // The tokens before `place` in an editor's text, from up to cMostText bytes before it but not
  // from before `earliest`, which is the beginning of a line.
  static CodeTokens Before(const CaretText& editor, int place, int earliest = 0);

  // The bytes that were taken apart.
  int Size() const { return static_cast<int>(text.size()); }
  int Count() const { return static_cast<int>(tokens.size()); }
  // A token's letters; empty for an index outside.
  std::string_view Text(int index) const;
  bool Is(int index, std::string_view sign) const { return Text(index) == sign; }
  // True if it is in a list of words or signs that are separated by blanks, such as "; , )".
  bool IsOneOf(int index, std::string_view list) const;
  bool IsWord(int index) const { return IsKind(index, CodeToken::Kind::cWord); }
  bool IsKind(int index, CodeToken::Kind kind) const;
  // The other bracket of a pair; -1 without one.
  int Partner(int index) const;
  bool IsOpening(int index) const { return Partner(index) > index; }
  bool IsClosing(int index) const {
    return IsInside(index) && Partner(index) >= 0 && Partner(index) < index;
  }
  // The text from the token `begin` up to the token `end`.
  std::string_view Source(int begin, int end) const;
  // The end of a token in the text.
  int End(int index) const { return IsInside(index) ? tokens[index].end : 0; }
  int Start(int index) const { return IsInside(index) ? tokens[index].start : 0; }
  // The "<" of the template arguments that end at this ">", and the ">" of those that begin at this
  // "<". -1 if there is no such pair, or a very long one.
  int AngleStart(int index) const;
  int AngleEnd(int index) const;

 private:
  bool IsInside(int index) const { return index >= 0 && index < Count(); }
  void PairBrackets();

  std::string text;
  std::vector<CodeToken> tokens;
};

// True if a word is in a list of words that are separated by blanks.
bool IsInList(std::string_view list, std::string_view word);

}  // namespace zendry
