#pragma once

#include <string>

namespace zendry {

// The result of reading a file. The caller shows it.
struct LoadResult {
  std::string error;  // why nothing could be read; empty on success
  std::string doubt;  // what looks wrong in a file that could be read; empty when nothing does
  bool Ok() const { return error.empty(); }
  // The error, else the doubt; empty when there is nothing to say.
  const std::string& Words() const { return error.empty() ? doubt : error; }
};

// The reason why a file could not be read just now, in words after the path.
std::string WhyUnreadable(const std::string& path);

// True if anything exists at a path, readable or not; a link counts.
bool IsTaken(const std::string& path);

}  // namespace zendry
