#pragma once

#include <string>

namespace zendry {

// What came of reading a file. Who asked for it shows it.
struct LoadResult {
  std::string error;  // why nothing could be read; empty on success
  std::string doubt;  // what looks wrong with a file that could be read; empty when nothing does
  bool Ok() const { return error.empty(); }
  // The error, else the doubt; empty when there is nothing to say.
  const std::string& Words() const { return error.empty() ? doubt : error; }
};

// In words, with the path before them, why a file could not be read just now.
std::string WhyUnreadable(const std::string& path);

// True if a path names anything at all, readable or not; a link in its place counts.
bool IsTaken(const std::string& path);

}  // namespace zendry
