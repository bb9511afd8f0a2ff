#pragma once

#include <string>
#include <vector>

namespace zendry {

// What a command line of windres asks for.
struct WindresOptions {
  std::string input;
  std::string output;
  std::vector<std::string> includeFolders;
  std::vector<std::string> defines;       // "NAME" or "NAME=VALUE"
  std::vector<std::string> undefines;     // names
  std::vector<std::string> preprocessor;  // command and switches in place of gcc's; may be empty
  std::vector<std::string> preprocessorArguments;
  bool isVerbose = false;
  bool wantsHelp = false;
  bool wantsVersion = false;
  std::string error;  // what is wrong with the command line; empty when nothing is
};

// Reads the arguments behind the program's name. Options that have no meaning for this system are
// accepted and dropped, as are switches for the compiler, which the build passes to every tool.
WindresOptions ReadWindresOptions(const std::vector<std::string>& arguments);

// The help text.
extern const char* const cWindresHelp;

}  // namespace zendry
