#pragma once

#include <string>

#include "ListView.h"

namespace zendry {

class Project;
class TagData;

// The files of a project that may have tags, by name and folder.
class ModuleList : public mavro::ListView {
 public:
  ModuleList();

  // Shows the files of a project and selects the one with this path, if it is among them.
  void Fill(const Project& itsProject, const std::string& selectedPath);
  // The tags of the selected file; null without one.
  TagData* SelectedModule() const;

 private:
  const Project* project = nullptr;
};

}  // namespace zendry
