#pragma once

#include <string>
#include <vector>

#include "base/CommandTable.h"

namespace zendry {

enum ProjectCommand {
  cAddFileCommand = 1001,
  cRemoveFileCommand = 1002,
  cProjectOptionsCommand = 1003,
  cCreateMakefileCommand = 1004
};

// The commands on the files of the project.
class PrjActs : public CommandList {
 public:
  PrjActs();

  // Asks for files and adds those that the project doesn't have. The question starts in the
  // project's folder, or in `folder`.
  void AddFiles();
  void AddFilesFrom(const std::string& folder);
  // Adds files that were dropped on the tree; folders are passed over.
  void AddDropped(const std::vector<std::string>& paths);
  // Removes the file selected in the tree from the project; the file on the disk and its tab stay.
  void RemoveSelected();
  // The same for files by their ids.
  void Remove(const std::vector<int>& ids);
  // Adds a file that has been made to the project, unless it has it.
  void AddMade(const std::string& path);
  // Shows the project's options; the next build uses what the user changes.
  void ChangeOptions();
  // Writes "Makefile" into the folder of the project file.
  void CreateMakefile();

 private:
  void CarryOut(int id) override;
  bool Add(const std::string& path);
  void FilesChanged();
};

extern PrjActs thePrjActs;

}  // namespace zendry
