#pragma once

#include <string>
#include <vector>

#include "FileText.h"

namespace zendry {

constexpr char cCompileCommandsName[] = "compile_commands.json";

// How one source of a project is compiled.
struct CompileCommand {
  std::string folder;  // where the compiler runs
  std::string file;    // as in the command line
  std::string line;
  std::string object;
};

// The commands in the form that tools like clang-tidy read.
struct CommandsText {
  std::string text;
  std::vector<std::string> leftOut;  // sources that the form can't name: it holds UTF-8 only
};
CommandsText CompileCommandsText(const std::vector<CompileCommand>& commands);

// Writes the text. Refuses to replace a file that another program has made.
mavro::FileResult SaveCompileCommands(const std::string& path, const std::string& text);

}  // namespace zendry
