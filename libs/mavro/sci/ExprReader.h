#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "RegularExpr.h"

namespace mavro {

// One character of a text, and its number of bytes.
struct CharacterAt {
  uint32_t character = 0;
  size_t length = 1;
};
CharacterAt DecodeCharacter(std::string_view text, size_t at);

// Reads a pattern into the steps of an expression.
class ExprReader {
 public:
  ExprReader(std::string_view newPattern, RegularExpr& newExpr)
      : pattern(newPattern), expr(newExpr) {}

  // Why the pattern is broken, with the place; empty if it isn't.
  std::string Read();

 private:
  using Op = RegularExpr::Op;
  using Step = RegularExpr::Step;
  using Set = RegularExpr::Set;
  using Steps = std::vector<Step>;

  Steps Choice();
  Steps Sequence();
  Steps Item();
  Steps Atom();
  Steps Group();
  Steps Escape();
  Steps Class();
  void ClassPiece(Set& set);
  uint32_t ClassEscape(Set& set, bool& isSet);
  Steps Repeated(const Steps& once, int least, int most);
  Steps Loop(const Steps& once, bool isShort);
  Steps Optional(const Steps& once, bool isShort);
  Steps Character(uint32_t character, size_t length);
  Steps SetStep(Set set);
  bool Bounds(int& least, int& most);
  int Number();

  bool AtEnd() const { return at >= pattern.size(); }
  bool Match(char wanted);
  Steps Fail(const std::string& why);
  static void Append(Steps& to, const Steps& added);

  const std::string_view pattern;
  RegularExpr& expr;
  size_t at = 0;
  int groups = 0;
  int depth = 0;
  bool isShort = false;  // of the repetition that was read last
  std::string error;
};

}  // namespace mavro
