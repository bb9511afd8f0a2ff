#include <algorithm>
#include <iterator>
#include <optional>

#include "EditorText.h"
#include "Paths.h"
#include "Project.h"
#include "Shell.h"

// The tags of a project: of its files, of open editors and of the reference libraries.

namespace zendry {

namespace {

constexpr const char* cSources[] = {"cc", "cxx", "c++", "hh", "hpp", "hxx", "h++", "hp"};

EditorText* FindEditor(Shell& shell, const std::string& path) {
  for (EditorText* editor : shell.OpenTexts())
    if (editor->Path() == path) return editor;
  return nullptr;
}

}  // namespace

void Project::ReadTags(ProjectFile& file) {
  shell->SetStatus("parse", file.name);
  const std::string extension = file.name.substr(file.name.rfind('.') + 1);
  const bool isSource = std::count(std::begin(cSources), std::end(cSources), extension) > 0;
  if (file.type == cUnknownKind && !isSource) return;
  if (const std::optional<std::string> text = mavro::ReadFileText(file.name))
    file.tags.includes = ScanIncludes(*text);
}

void Project::parseModule(TagData& module, EditorText* editor) {
  if (!parse) return;
  if (!editor) editor = FindEditor(*shell, module.fileName);
  module.clear();
  if (editor) editor->parsed = true;
}

void Project::parseOpenEditors(EditorText* editor) {
  std::vector<EditorText*> editors = {editor};
  if (!editor) editors = shell->OpenTexts();
  for (EditorText* open : editors) {
    if (open->parsed) continue;
    LogMessage(*shell, "Parse", open->Path());
    parseModule(ModuleOf(open->Path()), open);
  }
  shell->TagsChanged();
}

TagData& Project::ModuleOf(const std::string& path) {
  if (ProjectFile* file = FindFile(path)) return file->tags;
  scratchModule.fileName = path;
  return scratchModule;
}

void Project::LoadReferences() {
  if (!storesTags) return;
}

}  // namespace zendry
