#pragma once

#include <string>
#include <vector>

namespace zendry {

// The file that the command line asks to open.
struct StartupFile {
  std::string path;  // empty when no argument names a known file
  int kind = 0;      // its FileKind
};

// The last argument with a known extension, normalised where that can be; all others are passed
// over without a word, options included.
StartupFile FindStartupFile(const std::vector<std::string>& arguments);

}  // namespace zendry
