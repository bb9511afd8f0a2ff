#include "project/StandAlone.h"

#include <algorithm>
#include <set>

#include "FilePath.h"
#include "FileText.h"
#include "base/EditorText.h"
#include "base/Paths.h"
#include "base/Shell.h"
#include "project/Project.h"

namespace zendry {

namespace {

constexpr size_t cMostIncluded = 64;
constexpr int64_t cLargestIncluded = 1 << 20;  // bytes
constexpr int cFoldersAbove = 4;

}  // namespace

std::string FindIncluded(const IncludeRec& include, const std::string& fromFolder) {
  std::string folder = fromFolder;
  for (int above = 0; above <= cFoldersAbove && !folder.empty(); ++above) {
    for (const char* within : {"", "include/"}) {
      if (!include.quoted && !*within) continue;
      std::string path = TidyPath(folder + within + include.name);
      if (mavro::FileExists(path)) return path;
    }
    folder.pop_back();
    folder = mavro::FolderOf(folder);
  }
  return "";
}

void StandAlone::NoteTyped() {
  for (const EditorText* editor : files.OpenTexts()) {
    const auto found = editor->parsed ? included.end() : included.find(editor->Path());
    if (found != included.end()) found->second->isStale = true;
  }
}

// All files outside the project share one store: it is filled anew when another one is in front.
void StandAlone::Refresh() {
  modules.clear();
  const std::string front = files.ActiveFile();
  if (front != lastFront) resolved.clear();
  lastFront = front;
  if (front.empty() || project.FindFile(front)) return included.clear();
  if (!project.isOpen) project.LoadReferences();
  const bool isOther = project.scratchModule.fileName != front;
  TagData& module = project.ModuleOf(front);
  if (isOther) project.parseModule(module, nullptr);
  modules.push_back(&module);
  Follow(module);
}

// Each file counts once, the nearest includes first.
void StandAlone::Follow(const TagData& front) {
  std::set<std::string> reached = {front.fileName};
  std::vector<const TagData*> queue = {&front};
  for (size_t next = 0; next < queue.size(); ++next)
    for (const IncludeRec& include : queue[next]->includes) {
      if (modules.size() > cMostIncluded) continue;
      const std::string& path = Resolve(include, mavro::FolderOf(queue[next]->fileName));
      if (path.empty() || project.FindFile(path) || !reached.insert(path).second) continue;
      Included* file = Read(path);
      if (!file) continue;
      modules.push_back(&file->tags);
      queue.push_back(&file->tags);
    }
  std::erase_if(included, [&](const auto& entry) { return !reached.contains(entry.first); });
}

// The disk is asked once for each name, until another file is in front.
const std::string& StandAlone::Resolve(const IncludeRec& include, const std::string& fromFolder) {
  const auto [known, isNew] =
      resolved.try_emplace(fromFolder + (include.quoted ? "\n" : "\r") + include.name);
  if (isNew) known->second = FindIncluded(include, fromFolder);
  return known->second;
}

// Null for a file that can't be read while somebody types.
StandAlone::Included* StandAlone::Read(const std::string& path) {
  const DiskStamp stamp = ReadDiskStamp(path);
  if (!stamp.exists || stamp.size > cLargestIncluded) return nullptr;
  std::unique_ptr<Included>& file = included[path];
  if (!file) file = std::make_unique<Included>();
  if (file->isStale || file->stamp != stamp) {
    file->tags.fileName = path;
    project.parseModule(file->tags, nullptr);
    file->stamp = stamp;
    file->isStale = false;
  }
  return file.get();
}

}  // namespace zendry
