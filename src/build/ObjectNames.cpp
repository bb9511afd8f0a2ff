#include "build/ObjectNames.h"

#include <set>

#include "base/Paths.h"
#include "build/CommandLines.h"
#include "project/Project.h"

namespace zendry {

namespace {

// "src/b/x.c" gives "src-b-x.c".
std::string FlatName(const std::string& path) {
  std::string flat;
  for (const char c : path) {
    if (c != '/')
      flat += c;
    else if (!flat.empty() && flat.back() != '-')
      flat += '-';
  }
  return flat;
}

}  // namespace

ObjectNames::ObjectNames(const Project& project, const std::string& outDirName)
    : outDirName(outDirName) {
  std::set<std::string> taken;
  for (const auto& file : project.Files()) {
    if (file->type != cCppSource && file->type != cCSource) continue;
    std::string object = ObjectPath(outDirName, file->name, "o");
    if (taken.insert(object).second) continue;
    const std::string flat = FlatName(project.RelativeIfSame(file->name));
    object = ObjectPath(outDirName, flat, "o");
    for (int number = 2; !taken.insert(object).second; ++number)
      object = ObjectPath(outDirName, std::to_string(number) + "-" + flat, "o");
    furtherObjects[file->id] = object;
  }
}

std::string ObjectNames::Of(const ProjectFile& source) const {
  const auto found = furtherObjects.find(source.id);
  return found == furtherObjects.end() ? ObjectPath(outDirName, source.name, "o") : found->second;
}

}  // namespace zendry
