#pragma once

#include <algorithm>
#include <cstddef>
#include <vector>

namespace mavro {

// A caret of the editor with the text that it selects; positions are bytes of the shown text.
struct Caret {
  int anchor = 0;
  int position = 0;
  int Start() const { return std::min(anchor, position); }
  int End() const { return std::max(anchor, position); }
};

// All carets in the order of the text. The main one has this place among them.
struct CaretList {
  std::vector<Caret> carets;
  size_t main = 0;
};

}  // namespace mavro
