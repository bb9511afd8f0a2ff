#pragma once

#include <string>
#include <vector>

namespace zendry {

// The sources of a folder that has no project file.
struct LspSources {
  static constexpr size_t cMostFiles = 20'000;
  static constexpr size_t cMostEntries = 200'000;  // of folders, looked at
  static constexpr int cDeepestFolder = 24;
  static constexpr int64_t cLargestFile = int64_t{5} << 20;  // bytes

  std::vector<std::string> files;    // absolute, each once
  std::vector<std::string> folders;  // where their includes are looked for
  std::string note;                  // what was left out or can't be read; empty if nothing
};

// The one project file directly in a folder; empty if there is none or more than one.
std::string ProjectFileIn(const std::string& folder);

// The sources that a "compile_commands.json" lists, and the folders of its -I, -iquote and -isystem
// that lie in `root`.
LspSources SourcesOfCommands(const std::string& path, const std::string& root);

// The sources and headers below a folder, in the order of their names. Links to folders, hidden
// folders and those that builds leave are passed over.
LspSources SourcesBelow(const std::string& folder);

// True if a C or C++ source or header is no larger than cLargestFile.
bool IsSourceToRead(const std::string& path);

}  // namespace zendry
