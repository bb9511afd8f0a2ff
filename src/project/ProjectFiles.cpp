#include <sys/stat.h>

#include <algorithm>
#include <cstdlib>

#include "SystemDialogs.h"
#include "base/DiskStamp.h"
#include "base/Paths.h"
#include "base/Shell.h"
#include "project/Project.h"

// The files of a project: adding, removing and finding them.

namespace zendry {

namespace {

std::string_view BaseOf(const ProjectFile& file) {
  const std::string_view name = file.name;
  return name.substr(name.size() - BaseName(name).size());
}

// The absolute path without links; empty if there is no such file.
std::string RealName(const std::string& path) {
  const std::unique_ptr<char, void (*)(void*)> real(realpath(path.c_str(), nullptr), std::free);
  return real ? real.get() : "";
}

}  // namespace

ProjectFile::ProjectFile(int32_t newId, std::string fullName)
    : id(newId), type(FileKind(fullName)), name(std::move(fullName)) {
  tags.fileName = name;
}

void Project::AddResourceFile(const std::string& path) {
  if (!resourceFile.empty()) {
    mavro::Information("Only single resource file allowed!");
    return;
  }
  resourceFile = path;
  shell->AddTreeNode(path, cResourceFileId, cResourceScript);
}

void Project::AddFile(const std::string& path) {
  if (path.empty()) return;
  if (FileKind(path) == cResourceScript) return AddResourceFile(path);
  if (++lastFileId == cResourceFileId) ++lastFileId;
  files.push_back(std::make_unique<ProjectFile>(lastFileId, TidyPath(GetFullPath(path))));
  ProjectFile& file = *files.back();
  if (indexed) AddToIndex(&file);
  if (!byRealName.empty()) byRealName.try_emplace(RealName(file.name), &file);
  if (parse) ReadTags(file);
  shell->SetStatus("", "");
  const bool shown = file.type >= cCppSource && file.type <= cResourceScript;
  if (shown) shell->AddTreeNode(RelativeIfSame(file.name), file.id, file.type);
}

bool Project::RemoveFile(int32_t id) {
  if (id == cResourceFileId) {
    if (resourceFile.empty()) return false;
    resourceFile.clear();
  } else {
    const int index = IndexOfFile(id);
    if (index < 0) return false;
    DropIndex();
    files.erase(files.begin() + index);
  }
  shell->RemoveTreeNode(id);
  return true;
}

int Project::IndexOfFile(int32_t id) const {
  // Each new file has a higher id than those before it. The tree asks for every file.
  const auto found =
      std::lower_bound(files.begin(), files.end(), id,
                       [](const auto& file, int32_t sought) { return file->id < sought; });
  const bool isFound = found != files.end() && (*found)->id == id;
  return isFound ? static_cast<int>(found - files.begin()) : -1;
}

// Group: the index. Its answers are the same as those of a search through the files from the first
// on.

void Project::AddToIndex(ProjectFile* file) const {
  byName.try_emplace(file->name, file);
  byBaseName.try_emplace(BaseOf(*file), file);
}

void Project::DropIndex() {
  indexed = false;
  byName.clear();
  byBaseName.clear();
  byRealName.clear();
}

void Project::EnsureIndex() const {
  if (indexed) return;
  for (const auto& file : files) AddToIndex(file.get());
  indexed = true;
}

ProjectFile* Project::FindByName(std::string_view fullName) const {
  EnsureIndex();
  const auto found = byName.find(fullName);
  return found == byName.end() ? nullptr : found->second;
}

ProjectFile* Project::FindFile(std::string_view fullName) const {
  ProjectFile* file = FindByName(fullName);
  return file || !IsAbsolutePath(fullName) ? file : FindByWhatItNames(std::string(fullName));
}

// A name without links doesn't change when a file is saved, so it is remembered. A second name of
// the same file has to be looked up on the disk.
ProjectFile* Project::FindByWhatItNames(const std::string& path) const {
  const std::string real = RealName(path);
  if (real.empty()) return nullptr;
  if (byRealName.empty())
    for (const auto& file : files)
      if (std::string its = RealName(file->name); !its.empty())
        byRealName.try_emplace(std::move(its), file.get());
  const DiskStamp onDisk = ReadDiskStamp(path);
  const auto isIt = [&onDisk](const ProjectFile& file) {
    return AreOneFile(ReadDiskStamp(file.name), onDisk);
  };
  const auto found = byRealName.find(real);
  if (found != byRealName.end() && isIt(*found->second)) return found->second;
  struct stat status;
  if (stat(path.c_str(), &status) != 0 || status.st_nlink < 2) return nullptr;
  const auto second =
      std::find_if(files.begin(), files.end(), [&isIt](const auto& file) { return isIt(*file); });
  return second == files.end() ? nullptr : second->get();
}

bool Project::IsFileOf(const std::string& path, const TagData& module) const {
  if (path == module.fileName) return true;
  const ProjectFile* file = FindFile(path);
  return file && &file->tags == &module;
}

// There may be thousands of include names that no file of the project has: the disk is not asked
// about them.
std::string Project::ResolveInclude(const std::string& includeName) const {
  if (const ProjectFile* file = FindByName(TidyPath(GetFullPath(includeName)))) return file->name;
  const auto found = byBaseName.find(includeName);
  return found == byBaseName.end() ? "" : found->second->name;
}

}  // namespace zendry
