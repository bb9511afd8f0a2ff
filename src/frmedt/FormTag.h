#pragma once

#include <string>

namespace zendry {

// The tag that a line of a source belongs to: the class around it, or a method.
struct FormTag {
  std::string className;  // in full, with its namespaces; empty without a class
  std::string name;       // of the tag itself, without them
  char kind = 0;          // 'c' class, 's' structure, 'u' union, 'f' function; 0 without a tag
};

}  // namespace zendry
