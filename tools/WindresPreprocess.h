#pragma once

#include <string>
#include <vector>

namespace zendry {

struct PreprocessedText {
  std::string text;
  std::string messages;  // of the preprocessor, each line as "file:line: text"
  bool ok = false;
};

// Runs the C preprocessor, whose command and switches are given, over a script. Its output is kept
// in memory; no temporary file is created.
PreprocessedText Preprocess(const std::vector<std::string>& command);

// Converts gcc's messages to the form of this program: "file:line:column: fatal error: text"
// becomes "file:line: text". If there is such a message, all other lines are dropped.
std::string PlainMessages(const std::string& printed);

}  // namespace zendry
