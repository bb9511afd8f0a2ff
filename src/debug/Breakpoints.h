#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace zendry {

// A breakpoint as the user has set it. It lives longer than a gdb.
struct Breakpoint {
  std::string condition;   // gdb's expression; empty for none
  int id = 0;              // gdb's number in this session; 0: gdb doesn't have it
  int handle = -1;         // of the mark in the editor; -1: the file isn't open
  int line = 0;            // from 0
  std::string file;        // full path
  bool isPending = false;  // gdb waits for a library that has its source
  std::string refusal;     // what gdb has said instead of setting it; empty if it has
  int locations = 1;       // of a template or an inlined function: more than one
  int key = 0;             // tells it apart from all others
};

// The project's breakpoints, in the order in which they were set.
class Breakpoints {
 public:
  static constexpr int cNone = -1;

  // Appends an entry and answers its index.
  int Add(const std::string& file, int line, int handle);
  void Remove(int index);
  void Clear();
  // The entry of a file's line, else cNone.
  int Find(std::string_view file, int line) const;
  // The entry of a key, else cNone.
  int FindKey(int key) const;
  bool Has(int index) const;
  // A new gdb has no number for any of them.
  void ForgetNumbers();

  std::vector<Breakpoint> entries;
  int awaited = cNone;  // the entry whose reply is awaited

 private:
  int lastKey = 0;
};

}  // namespace zendry
