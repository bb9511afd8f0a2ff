#pragma once

#include <string>
#include <vector>

namespace zendry {

struct PreprocessedText {
  std::string text;
  std::string messages;  // of the preprocessor, each line as "file:line: text"
  bool ok = false;
};

// Runs the C preprocessor, whose command and switches are given, over a script. What it prints is
// kept in memory; no temporary file is made.
PreprocessedText Preprocess(const std::vector<std::string>& command);

// gcc's messages in the form of ours: "file:line:column: fatal error: text" becomes
// "file:line: text". Lines that only lead to an error or end it are dropped where there is one.
std::string PlainMessages(const std::string& printed);

}  // namespace zendry
