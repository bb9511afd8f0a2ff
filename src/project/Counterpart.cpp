#include "project/Counterpart.h"

#include <algorithm>
#include <set>
#include <vector>

#include "FilePath.h"
#include "FileText.h"
#include "base/FileKinds.h"
#include "project/Project.h"

namespace zendry {

namespace {

// The usual endings come first, then all others of the kinds.
std::vector<std::string> ExtensionsFor(int kind) {
  std::vector<std::string> wanted;
  const auto add = [&wanted](const std::string& extension) {
    if (std::find(wanted.begin(), wanted.end(), extension) == wanted.end())
      wanted.push_back(extension);
  };
  const bool isSource = kind == cCppSource || kind == cCSource;
  if (!isSource && kind != cHeader) return wanted;
  for (const char* usual : {isSource ? "h" : "cpp", isSource ? "hpp" : "c"}) add(usual);
  for (const int other : isSource ? std::vector{cHeader} : std::vector{cCppSource, cCSource})
    for (const std::string& extension : ExtensionsOf(other)) add(extension);
  return wanted;
}

// The folder of a path, with its trailing slash.
}  // namespace

std::string FindCounterpart(const std::string& path, const Project& project) {
  const std::string name = path.substr(mavro::FolderOf(path).size());
  std::vector<std::string> folders = {mavro::FolderOf(path)};
  std::set<std::string> seen(folders.begin(), folders.end());
  for (const auto& file : project.Files())
    if (seen.insert(mavro::FolderOf(file->name)).second)
      folders.push_back(mavro::FolderOf(file->name));
  for (const std::string& extension : ExtensionsFor(FileKind(path)))
    for (const std::string& folder : folders) {
      const std::string wanted = ChangeExtension(folder + name, extension);
      if (wanted != path && mavro::FileExists(wanted)) return wanted;
    }
  return "";
}

}  // namespace zendry
