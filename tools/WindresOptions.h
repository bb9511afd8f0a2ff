#pragma once

#include <string>
#include <vector>

namespace zendry {

// The options of a windres command line.
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
  std::string error;  // the error in the command line; empty when there is none
};

// Reads the arguments after the program's name. Options without a meaning on this system are
// accepted and ignored; so are switches for the compiler, which the build passes to every tool.
WindresOptions ReadWindresOptions(const std::vector<std::string>& arguments);

// The help text.
extern const char* const cWindresHelp;

}  // namespace zendry
