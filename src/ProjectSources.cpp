#include "ProjectSources.h"

#include "EditorText.h"
#include "Project.h"
#include "Shell.h"

namespace zendry {

const std::vector<TagData*>& ProjectSources::Modules() const {
  modules.clear();
  for (const auto& file : project.Files()) modules.push_back(&file->tags);
  return modules;
}

TagData* ProjectSources::Library() const {
  return &project.tags;
}

TagData* ProjectSources::ModuleOf(const EditorText& editor) {
  return &project.ModuleOf(editor.Path());
}

void ProjectSources::RefreshTags() {
  project.parseOpenEditors(nullptr);
}

void ProjectSources::Log(std::string_view text, std::string_view detail) {
  LogMessage(shell, text, detail);
}

}  // namespace zendry
