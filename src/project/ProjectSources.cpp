#include "project/ProjectSources.h"

#include "base/EditorText.h"
#include "base/Shell.h"
#include "base/TraceLog.h"
#include "project/Project.h"

namespace zendry {

namespace {

constexpr int cLargestText = 1 << 20;  // bytes
constexpr size_t cMostReadFiles = 16;

}  // namespace

const std::vector<TagData*>& ProjectSources::Modules() const {
  modules = alone.Modules();
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
  alone.NoteTyped();
  project.parseOpenEditors(nullptr);
  alone.Refresh();
}

std::string ProjectSources::TextOf(const TagData& module) {
  for (const EditorText* editor : files.OpenTexts()) {
    if (!project.IsFileOf(editor->Path(), module)) continue;
    const int length = editor->Length();
    if (length > cLargestText) return {};
    std::string text(static_cast<size_t>(length), '\0');
    editor->CopyRange(0, length, text.data());
    return text;
  }
  const DiskStamp stamp = ReadDiskStamp(module.fileName);
  if (!stamp.exists || stamp.size > cLargestText) return {};
  if (readFiles.size() >= cMostReadFiles && !readFiles.contains(module.fileName)) readFiles.clear();
  ReadFile& known = readFiles[module.fileName];
  if (known.stamp != stamp) known = {stamp, mavro::ReadFileText(module.fileName).text};
  return known.text;
}

void ProjectSources::Log(std::string_view text, std::string_view detail) {
  TraceMessage(text, detail);
}

}  // namespace zendry
