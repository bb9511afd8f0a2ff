#pragma once

#include <cstdint>
#include <string>
#include <unordered_map>

namespace zendry {

class Project;
struct ProjectFile;

// The objects of a project's sources. The first source of a base name has ObjectPath's object; each
// further one has the folders of its path in the name, so that no two share one.
class ObjectNames {
 public:
  ObjectNames() = default;
  ObjectNames(const Project& project, const std::string& outDirName);

  // As a path from the project's folder. A source that came later has ObjectPath's object.
  std::string Of(const ProjectFile& source) const;

 private:
  std::string outDirName;
  std::unordered_map<int32_t, std::string> objects;  // by the file's id
};

}  // namespace zendry
