#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "project/Import.h"

namespace zendry {

// Reads a compile_commands.json: its sources, and the include folders, macros, standard and other
// switches that they are compiled with. A project compiles all its files alike, so each switch of
// one file is given to all, and the findings say which ones differ. Files in folders of tests,
// examples and other systems are left out, unless there are no others. Headers below the folders of
// the sources are listed too. Nothing named in the file is started. A text that is cut or damaged
// is an error: half of the files would be another program. `folder` becomes the project's folder;
// empty: the nearest folder that holds all sources.
Import ReadCommands(const std::string& path, const std::string& folder);
// The same for a text as if it was in the file at a full path.
Import ReadCommandsText(const std::string& text, const std::string& path,
                        const std::string& folder);

// Splits a command as a shell does: blanks, quotes and backslashes; nothing is expanded.
std::vector<std::string> SplitShellWords(std::string_view command);

// Settles what follows from the files taken: the program's `main` (see ChooseMain), and the
// switches of the project. May be called again after files were ticked or unticked. Answers
// ChooseMain's error.
std::string SettleCommands(Import& import, const std::string& wantedMain);

// The compiler's switches of one file, sorted by what becomes of them.
struct CommandSwitches {
  std::vector<std::string> includeFolders;  // absolute
  std::vector<std::string> macros;          // "-DX=1", "-UX"
  std::string standard;                     // "-std=c++17"
  // As they stand in a command line, with their values.
  std::vector<std::string> others;
  std::vector<std::string> risky;    // can run a program
  std::vector<std::string> dropped;  // not understood
  std::string output;
};

// Reads the arguments of a compiler, its name first. Relative folders are taken from `directory`.
CommandSwitches ReadSwitches(const std::vector<std::string>& arguments,
                             const std::string& directory);

}  // namespace zendry
