// SPDX-License-Identifier: MIT-0
#pragma once

#include <cstddef>
#include <string>
#include <vector>

// What the command line asks for.
struct Options {
  std::size_t frequentWords = 10;
  bool showHelp = false;
  std::vector<std::string> files;  // none: a sample text is counted
  std::string error;               // why the command line can't be understood; empty if it can
};

Options ReadOptions(int argc, char** argv);
const char* HelpText();
