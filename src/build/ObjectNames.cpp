#include "build/ObjectNames.h"

#include <unordered_set>
#include <utility>

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
  std::unordered_set<std::string> taken;
  for (const auto& file : project.Files()) {
    if (file->type != cCppSource && file->type != cCSource) continue;
    std::string object = ObjectPath(outDirName, file->name, "o");
    if (taken.insert(object).second) {
      objects.emplace(file->id, std::move(object));
      continue;
    }
    const std::string flat = FlatName(project.RelativeIfSame(file->name));
    object = ObjectPath(outDirName, flat, "o");
    for (int number = 2; !taken.insert(object).second; ++number)
      object = ObjectPath(outDirName, std::to_string(number) + "-" + flat, "o");
    objects.emplace(file->id, std::move(object));
  }
}

std::string ObjectNames::Of(const ProjectFile& source) const {
  const auto found = objects.find(source.id);
  return found == objects.end() ? ObjectPath(outDirName, source.name, "o") : found->second;
}

}  // namespace zendry
