#include "project/IncludeFile.h"

#include <string_view>
#include <vector>

#include "CommandLine.h"
#include "FilePath.h"
#include "FileText.h"
#include "base/FileKinds.h"
#include "base/Paths.h"
#include "base/SearchFolders.h"
#include "config/IdeConfig.h"
#include "project/CompilerFolders.h"
#include "project/Project.h"
#include "project/StandAlone.h"

namespace zendry {

namespace {

// "@" stands for the folder of the installation.
std::string WithRoot(std::string_view switches) {
  std::string root = InstallRoot(theIdeConfig.appDir);
  if (root.ends_with('/')) root.pop_back();
  std::string text;
  for (const char c : switches) c == '@' ? text += root : text += c;
  return text;
}

std::string FirstIn(const std::vector<std::string>& folders, const std::string& name) {
  for (const std::string& folder : folders) {
    std::string path = TidyPath(folder + "/" + name);
    if (mavro::FileExists(path)) return path;
  }
  return "";
}

}  // namespace

const std::vector<std::string>& IncludeSearch::SwitchFolders() {
  if (folders) return *folders;
  std::string switches = project.includePath;
  if (project.current) switches += " " + project.current->comp;
  folders = SearchFolders(mavro::SplitCommandLine(WithRoot(switches + " " + cBasicIncludes)));
  for (std::string& folder : *folders) folder = project.GetFullPath(folder);
  return *folders;
}

const std::vector<std::string>& IncludeSearch::OwnFolders(const std::string& from) const {
  const bool isCpp = FileKind(from) != cCSource;
  const int number = project.current ? project.current->gcc : 0;
  const bool isSet = number >= 0 && static_cast<size_t>(number) < theIdeConfig.toolSets.size();
  const ToolSet& set = theIdeConfig.toolSets[isSet ? static_cast<size_t>(number) : 0];
  return CompilerFolders(ResolveToolPath(set.folder, isCpp ? theIdeConfig.gpp : theIdeConfig.gcc),
                         isCpp);
}

std::string IncludeSearch::Find(const std::string& from, const std::string& name, bool isQuoted) {
  if (IsAbsolutePath(name)) return mavro::FileExists(name) ? name : "";
  if (isQuoted)
    if (std::string found = FindIncluded({true, false, name}, mavro::FolderOf(from));
        !found.empty())
      return found;
  if (std::string found = project.ResolveInclude(name); !found.empty()) return found;
  if (std::string found = FirstIn(SwitchFolders(), name); !found.empty()) return found;
  return FirstIn(OwnFolders(from), name);
}

std::string FindIncludedFile(const Project& project, const std::string& from,
                             const std::string& name, bool isQuoted) {
  return IncludeSearch(project).Find(from, name, isQuoted);
}

}  // namespace zendry
