#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "base/DiskStamp.h"
#include "tags/TagData.h"

namespace zendry {

class FilesShell;
class Project;

// The tags of a file in front that is not in the project, or that is open without a project, and
// of the files that it includes, as far as the project has them not.
class StandAlone {
 public:
  // Both must outlive it.
  StandAlone(Project& itsProject, FilesShell& itsFiles) : project(itsProject), files(itsFiles) {}

  // Notes which of the included files have been typed into; called before the open editors are
  // parsed.
  void NoteTyped();
  // Brings the tags up to date with the file in front and those it includes. Reads a file again
  // only if it has changed.
  void Refresh();
  // The file in front and its included files; empty if the project has the file in front.
  const std::vector<TagData*>& Modules() const { return modules; }

 private:
  struct Included {
    DiskStamp stamp;
    bool isStale = true;
    TagData tags;
  };

  Included* Read(const std::string& path);
  void Follow(const TagData& front);
  const std::string& Resolve(const IncludeRec& include, const std::string& fromFolder);

  Project& project;
  FilesShell& files;
  std::map<std::string, std::unique_ptr<Included>> included;  // by path
  std::vector<TagData*> modules;
  std::string lastFront;
  std::map<std::string, std::string> resolved;  // include and folder to its file, for this front
};

// The file that an include of a file stands for: a quoted one beside the file, or in one of the few
// folders above it or their "include"; others in these "include" only. Empty if there is none.
std::string FindIncluded(const IncludeRec& include, const std::string& fromFolder);

}  // namespace zendry
