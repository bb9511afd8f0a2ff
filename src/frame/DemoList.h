#pragma once

#include <string>
#include <vector>

namespace zendry {

// A demo of the installation.
struct Demo {
  int place = 0;  // in the wizard's list of demos
  std::string title;
  std::string sentence;  // what it shows
  std::string picture;   // the path of its picture, which may be missing
};

// The demos that "Repos/items.def" in the program's folder lists. Empty if it can't be read.
// Folders outside of "Repos" are left out.
std::vector<Demo> ReadDemos(const std::string& appDir);

}  // namespace zendry
