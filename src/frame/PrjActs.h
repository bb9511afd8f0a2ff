#pragma once

#include <string>

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

  // Asks for files and adds those that the project doesn't have.
  void AddFiles();
  // Removes the file selected in the tree from the project; the file on the disk and its tab stay.
  void RemoveSelected();
  // Adds a file that has been made to the project, unless it has it.
  void AddMade(const std::string& path);
  // Writes "Makefile" into the folder of the project file.
  void CreateMakefile();

 private:
  void CarryOut(int id) override;
};

extern PrjActs thePrjActs;

}  // namespace zendry
