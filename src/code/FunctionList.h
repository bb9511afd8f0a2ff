#pragma once

#include <string>
#include <vector>

namespace zendry {

class TagData;

// A function that a text defines.
struct FunctionPlace {
  int line = 0;  // from 0
  std::string name;
  friend bool operator==(const FunctionPlace&, const FunctionPlace&) = default;
};

// The functions that a store's text defines, in the order of lines. Members are named with their
// class.
std::vector<FunctionPlace> FunctionsOf(const TagData& module);

}  // namespace zendry
