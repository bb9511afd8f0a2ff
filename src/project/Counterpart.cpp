#include "project/Counterpart.h"

#include <set>
#include <vector>

#include "FilePath.h"
#include "FileText.h"
#include "base/Paths.h"
#include "project/Project.h"

namespace zendry {

namespace {

const std::vector<std::string>& ExtensionsFor(int kind) {
  static const std::vector<std::string> headers = {"h", "hpp"}, sources = {"cpp", "c", "cp"}, none;
  if (kind == cCppSource || kind == cCSource) return headers;
  return kind == cHeader ? sources : none;
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
