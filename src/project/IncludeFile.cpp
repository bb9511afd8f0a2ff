#include "project/IncludeFile.h"

#include <filesystem>
#include <string_view>
#include <vector>

#include "CommandLine.h"
#include "FilePath.h"
#include "FileText.h"
#include "base/Paths.h"
#include "base/SearchFolders.h"
#include "config/IdeConfig.h"
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

// The headers of the newest C++ library and those of C.
std::vector<std::string> SystemFolders() {
  namespace fs = std::filesystem;
  std::vector<std::string> folders;
  std::string newest;
  int newestVersion = 0;
  std::error_code error;
  for (const auto& entry : fs::directory_iterator("/usr/include/c++", error)) {
    const int version = std::atoi(entry.path().filename().c_str());
    if (version <= newestVersion) continue;
    newestVersion = version;
    newest = entry.path().string();
  }
  if (!newest.empty()) folders.push_back(newest);
  folders.push_back("/usr/local/include");
  for (const auto& entry : fs::directory_iterator("/usr/include", error)) {
    const std::string name = entry.path().filename().string();
    if (name.ends_with("-linux-gnu")) {
      if (!newest.empty())
        folders.push_back(entry.path().string() +
                          newest.substr(std::string("/usr/include").size()));
      folders.push_back(entry.path().string());
    }
  }
  folders.push_back("/usr/include");
  return folders;
}

}  // namespace

std::string FindIncludedFile(const Project& project, const std::string& from,
                             const std::string& name, bool isQuoted) {
  if (IsAbsolutePath(name)) return mavro::FileExists(name) ? name : "";
  if (isQuoted)
    if (std::string found = FindIncluded({true, name}, mavro::FolderOf(from)); !found.empty())
      return found;
  if (std::string found = project.ResolveInclude(name); !found.empty()) return found;
  std::string switches = project.includePath;
  if (project.current) switches += " " + project.current->comp;
  std::vector<std::string> folders =
      SearchFolders(mavro::SplitCommandLine(WithRoot(switches + " " + cBasicIncludes)));
  for (std::string& folder : folders) folder = project.GetFullPath(folder);
  for (std::string& folder : SystemFolders()) folders.push_back(std::move(folder));
  for (const std::string& folder : folders) {
    const std::string path = TidyPath(folder + "/" + name);
    if (mavro::FileExists(path)) return path;
  }
  return "";
}

}  // namespace zendry
