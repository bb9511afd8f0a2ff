#pragma once

#include <array>
#include <bitset>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace mavro {

// A regular expression that is looked for in one line of a text. It has . [] ^ $ | () (?:) * + ?
// {n,m}, the same with ? after them for as little as possible, \d \w \s \b and their opposites,
// \t, and \1 to \9 for what a group has matched. Letters beyond ASCII are characters like others;
// only the case of ASCII letters can be ignored.
//
// The search tries one way after the other, so some expressions take a time that doubles with each
// letter of the line: the steps are counted, and it gives up.
class RegularExpr {
 public:
  static constexpr size_t cGroups = 10;  // the first one is the whole match
  static constexpr size_t cNowhere = std::string_view::npos;
  using Range = std::pair<size_t, size_t>;  // start and end; cNowhere if it has no part in a match
  struct Match {
    std::array<Range, cGroups> groups;
  };
  enum class Outcome { cFound, cNone, cTooLong };

  RegularExpr(std::string_view pattern, bool matchCase);

  // Why the pattern is no expression, with the place; empty if it is one. A broken one is found
  // nowhere.
  const std::string& Error() const { return error; }
  // Finds the first match that begins at or after `from`. `match` is changed only if there is one.
  Outcome Find(std::string_view line, size_t from, Match& match) const;

 private:
  friend class ExprReader;
  enum class Op : uint8_t {
    cByte,          // `a` is the byte
    cAny,           // a character
    cSet,           // `a` is its number
    cStart,         // of the line
    cEnd,           // of the line
    cWordEdge,      // `a` is 1 for its opposite
    cGroupAgain,    // `a` is the group
    cSave,          // the place, as number `a`
    cSplit,         // goes on at `a`, and if that fails at `b`
    cGoTo,          // `a`
    cMark,          // notes the place as number `a`, at the start of a round of a loop
    cLeaveIfStill,  // fails if the place is the one noted as `a`: the round has matched nothing
    cDone
  };
  struct Step {
    Op op;
    int a = 0;
    int b = 0;
  };
  struct Set {
    std::bitset<128> ascii;
    std::vector<std::pair<uint32_t, uint32_t>> ranges;  // beyond ASCII
    bool isNegated = false;
    bool Has(uint32_t character) const;
  };
  class Run;

  void FindFirstBytes();

  std::vector<Step> steps;
  std::vector<Set> sets;
  int marks = 0;
  bool foldsCase = false;
  bool canBeEmpty = true;
  std::bitset<256> firstBytes;  // that a match can begin with, unless it can be empty
  std::string error;
};

}  // namespace mavro
