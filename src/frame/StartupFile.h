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

// The arguments with a known extension, in their order, normalised where that can be. All others
// are passed over without a word, options included; so are projects that another one follows, since
// one can be open.
std::vector<StartupFile> FindStartupFiles(const std::vector<std::string>& arguments);

// What the program answers on the terminal instead of opening a window: to "--help" or "--version"
// as the only argument. Empty for all else.
std::string TerminalAnswer(const std::vector<std::string>& arguments);

}  // namespace zendry
