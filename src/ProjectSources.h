#pragma once

#include "CodeSources.h"

namespace zendry {

class Project;
class Shell;

// The tags of a project and of the open editors, as completion and lookups walk them.
class ProjectSources : public CodeSources {
 public:
  // Both must outlive it.
  ProjectSources(Project& itsProject, Shell& itsShell) : project(itsProject), shell(itsShell) {}

  const std::vector<TagData*>& Modules() const override;
  TagData* Library() const override;
  TagData* ModuleOf(const EditorText& editor) override;
  void RefreshTags() override;
  void Log(std::string_view text, std::string_view detail) override;

 private:
  Project& project;
  Shell& shell;
  mutable std::vector<TagData*> modules;  // what Modules() answered last
};

}  // namespace zendry
