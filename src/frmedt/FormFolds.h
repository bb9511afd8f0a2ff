#pragma once

#include <string_view>
#include <vector>

namespace zendry {

// The lines of a region, from 0, markers included.
struct FoldRegion {
  int first = 0;
  int last = 0;
};

constexpr int cFoldBase = 0x400;     // the level of a line in no block
constexpr int cFoldHeader = 0x2000;  // on a line that begins a block
constexpr int cFoldEmpty = 0x1000;   // on the line after the last line end

// The fold level of each line of C or C++, as the editing component counts them: brackets of all
// kinds outside of comments, literals and directives. A region is a block too, from its first line
// to its last.
std::vector<int> FoldLevels(std::string_view text, const std::vector<FoldRegion>& regions);

}  // namespace zendry
