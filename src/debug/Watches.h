#pragma once

#include <array>
#include <string>
#include <string_view>
#include <vector>

namespace zendry {

// An expression that is watched, and its last value.
struct Watch {
  std::string expression;
  std::string value;        // for the column
  std::string whole;        // the value up to its limit, for a tip
  std::string error;        // why it has no value; empty if it has one or wasn't asked for
  bool hasChanged = false;  // since the stop before
  int number = 0;           // of gdb's display; 0: gdb doesn't have it
  int key = 0;              // tells it apart from all others
  int seenAt = 0;           // the stop that has given the value
  bool isHeld = false;      // takes too long: isn't asked for again unless it is edited
};

// The watched expressions in their four lists. The window shows one empty row more at each list's
// end, which is no row here.
class Watches {
 public:
  static constexpr int cLists = 4;
  static constexpr int cNone = -1;

  // The row of an expression in a list, else cNone.
  int Find(int list, std::string_view expression) const;
  // The row of a key in a list, else cNone.
  int FindKey(int list, int key) const;
  // Appends a row and answers its index.
  int Add(int list, const std::string& expression);
  void Clear();
  // A new gdb displays none of them. The values stay.
  void ForgetNumbers();

  std::array<std::vector<Watch>, cLists> lists;

 private:
  int lastKey = 0;
};

}  // namespace zendry
