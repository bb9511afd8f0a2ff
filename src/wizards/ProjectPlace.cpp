#include "wizards/ProjectPlace.h"

#include <unistd.h>

#include "base/Paths.h"
#include "project/Project.h"
#include "project/ProjectFileFormat.h"
#include "wizards/Repository.h"

namespace zendry {

namespace {

mavro::FileResult WriteProject(const Project& project, const std::string& path) {
  const ProjectText content = WriteProjectText(project);
  if (!content.unwritable.empty())
    return {path + ": the project file can't hold " + content.unwritable};
  return mavro::SaveFileText(path, content.text);
}

}  // namespace

bool ProjectPlace::IsTaken() const {
  return !mavro::ReadFileText(FileOf("zpj")).isMissing ||
         !mavro::ReadFileText(FileOf("cpp")).isMissing;
}

mavro::FileResult WriteConsoleProject(const ProjectPlace& place, bool isCpp) {
  const std::string source = place.FileOf(isCpp ? "cpp" : "c");
  const mavro::FileResult written = mavro::SaveFileText(source, ConsoleSource(isCpp));
  if (!written.Ok()) return written;
  Project project;
  project.parse = false;
  project.Init(place.FileOf("zpj"), cConsole);
  project.AddFile(source);
  project.parse = true;
  return WriteProject(project, place.FileOf("zpj"));
}

mavro::FileResult WriteFormProject(const ProjectPlace& place, const std::vector<std::string>& files,
                                   bool withResource) {
  Project project;
  project.parse = false;
  project.Init(place.FileOf("zpj"), cFormApplication);
  project.libSet = "mavro";
  for (const std::string& file : files) project.AddFile(file);
  if (withResource) {
    const mavro::FileResult written = mavro::SaveFileText(place.FileOf("rc"), FormResource());
    if (!written.Ok()) return written;
    project.AddFile(place.name + ".rc");
  }
  project.parse = true;
  return WriteProject(project, place.FileOf("zpj"));
}

std::string DefaultProjectFolder(const std::string& last, const std::string& installRoot) {
  if (!last.empty()) return last.ends_with('/') ? last : last + "/";
  const bool isOurs = access(installRoot.c_str(), W_OK) == 0;
  return (isOurs ? installRoot : mavro::ProfileFolder() + "/") + "CppSrc/";
}

}  // namespace zendry
