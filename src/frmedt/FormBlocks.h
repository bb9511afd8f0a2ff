#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

#include "frmedt/FormTag.h"

namespace zendry {

// A class or a function with its block: the bytes between its braces.
struct FormBlock {
  FormTag tag;
  size_t start = 0;
  size_t end = 0;
};

// The classes and functions of a text, in the order of their blocks' beginnings. Of a function only
// the outer block counts. A block that isn't closed ends with the text.
std::vector<FormBlock> FindFormBlocks(std::string_view text);

}  // namespace zendry
