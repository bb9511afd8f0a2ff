#pragma once

#include <cstdint>
#include <map>
#include <string>

namespace zendry {

class Project;
struct ProjectFile;

// The objects of a project's sources. The first source of a base name has ObjectPath's object; each
// further one has the folders of its path in the name, so that no two share one.
class ObjectNames {
 public:
  ObjectNames() = default;
  ObjectNames(const Project& project, const std::string& outDirName);

  // As a path from the project's folder.
  std::string Of(const ProjectFile& source) const;

 private:
  std::string outDirName;
  std::map<int32_t, std::string> furtherObjects;  // by the file's id
};

}  // namespace zendry
