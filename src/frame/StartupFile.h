#pragma once

#include <string>
#include <vector>

namespace zendry {

// A file that the command line asks to open.
struct StartupFile {
  std::string path;
  int kind = 0;  // its FileKind
  friend bool operator==(const StartupFile&, const StartupFile&) = default;
};

// The arguments with a known extension, in their order, normalised if possible. All other
// arguments, including options, are silently ignored. Of several projects only the last one counts,
// since only one can be open.
std::vector<StartupFile> FindStartupFiles(const std::vector<std::string>& arguments);

// The text that the program prints to the terminal instead of opening a window, if "--help" or
// "--version" is the only argument. Empty for all other arguments.
std::string TerminalAnswer(const std::vector<std::string>& arguments);

}  // namespace zendry
