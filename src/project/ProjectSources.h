#pragma once

#include <map>

#include "base/DiskStamp.h"
#include "code/CodeSources.h"
#include "project/StandAlone.h"

namespace zendry {

class Project;
class FilesShell;

// The tags of a project and of the open editors, for completion and lookups. A file in front that
// isn't in the project is looked into before the project's files, with those that it includes.
class ProjectSources : public CodeSources {
 public:
  // Both must outlive it.
  ProjectSources(Project& itsProject, FilesShell& itsFiles)
      : project(itsProject), files(itsFiles), alone(itsProject, itsFiles) {}

  const std::vector<TagData*>& Modules() const override;
  TagData* Library() const override;
  TagData* ModuleOf(const EditorText& editor) override;
  void RefreshTags() override;
  std::string TextOf(const TagData& module) override;
  void Log(std::string_view text, std::string_view detail) override;

 private:
  struct ReadFile {
    DiskStamp stamp;
    std::string text;
  };

  Project& project;
  FilesShell& files;
  StandAlone alone;
  mutable std::vector<TagData*> modules;      // the last result of Modules()
  std::map<std::string, ReadFile> readFiles;  // files that TextOf() has read, by path; only a few
};

}  // namespace zendry
