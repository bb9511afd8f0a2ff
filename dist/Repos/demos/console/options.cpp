// SPDX-License-Identifier: MIT-0
#include "options.h"

#include <cstdlib>
#include <string_view>

namespace {

// A whole number of up to six digits; -1 for anything else.
int ReadNumber(std::string_view text) {
  if (text.empty() || text.size() > 6) return -1;
  for (char c : text)
    if (c < '0' || c > '9') return -1;
  return std::atoi(std::string(text).c_str());
}

}  // namespace

Options ReadOptions(int argc, char** argv) {
  Options options;
  for (int i = 1; i < argc && options.error.empty(); ++i) {
    const std::string_view argument = argv[i];
    if (argument == "--help" || argument == "-h") {
      options.showHelp = true;
    } else if (argument == "-n") {
      const int number = i + 1 < argc ? ReadNumber(argv[++i]) : -1;
      if (number < 0) options.error = "-n needs a number";
      options.frequentWords = static_cast<std::size_t>(number);
    } else if (argument.size() > 1 && argument[0] == '-') {
      options.error = "unknown option " + std::string(argument);
    } else {
      options.files.emplace_back(argument);
    }
  }
  return options;
}

const char* HelpText() {
  return "Usage: console [-n NUMBER] [FILE...]\n"
         "Counts the lines, words and characters of texts and lists the most frequent words.\n"
         "  -n NUMBER   how many words to list (10)\n"
         "  -           stands for the standard input\n"
         "Without a file a short text of its own is counted.\n";
}
