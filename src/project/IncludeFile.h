#pragma once

#include <optional>
#include <string>
#include <vector>

namespace zendry {

class Project;

// Finds the files that "#include" lines of a project name.
class IncludeSearch {
 public:
  // `theProject` must outlive it and keep its switches.
  explicit IncludeSearch(const Project& theProject) : project(theProject) {}

  // The file that an include in the file `from` names: beside it, among the project's files, in
  // the folders that the project's switches name, or in those of its compiler, which may be asked
  // for them. Empty if there is none.
  std::string Find(const std::string& from, const std::string& name, bool isQuoted);

 private:
  const std::vector<std::string>& SwitchFolders();
  const std::vector<std::string>& OwnFolders(const std::string& from) const;

  const Project& project;
  std::optional<std::vector<std::string>> folders;  // of the switches
};

// The same for a single include.
std::string FindIncludedFile(const Project& project, const std::string& from,
                             const std::string& name, bool isQuoted);

}  // namespace zendry
