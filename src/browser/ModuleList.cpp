#include "browser/ModuleList.h"

#include "FilePath.h"
#include "base/Paths.h"
#include "project/Project.h"

namespace zendry {

namespace {

constexpr int cNameWidth = 110;
constexpr int cFolderWidth = 60;

}  // namespace

ModuleList::ModuleList() {
  AddColumn("file", cNameWidth);
  AddColumn("folder", cFolderWidth);
  fullRowSelect = true;
  showSelection = true;
}

void ModuleList::Fill(const Project& itsProject, const std::string& selectedPath) {
  project = &itsProject;
  Clear();
  int selected = -1;
  for (const auto& file : project->Files()) {
    const int row = AddRow(BaseName(file->name));
    SetCell(row, 1, mavro::FolderOf(project->RelativeIfSame(file->name)));
    SetItemData(row, file->id);
    if (file->name == selectedPath) selected = row;
  }
  Select(selected);
}

TagData* ModuleList::SelectedModule() const {
  const int row = selectedIndex;
  const int index = project && row >= 0 ? project->IndexOfFile(GetItemData(row)) : -1;
  return index < 0 ? nullptr : &project->Files()[static_cast<size_t>(index)]->tags;
}

}  // namespace zendry
