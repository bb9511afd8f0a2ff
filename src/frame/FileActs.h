#pragma once

#include <string>
#include <vector>

#include "base/CommandTable.h"
#include "base/FileCommands.h"

namespace zendry {

// The commands of the menu "&File". What concerns an open file it hands on to the editor tabs.
class FileActs : public CommandList {
 public:
  FileActs();

  // The project in hand. Reading one that can't be read leaves it empty under its name.
  void LoadProject(const std::string& path);
  // Closes the project in hand and loads another; does nothing when the user refuses to close.
  void ReplaceProject(const std::string& path);
  // Opens each file as its command would: projects first, since one of them closes the open tabs.
  // One that can't be opened doesn't stop the others. While a build runs none is.
  void OpenFiles(std::vector<std::string> paths);
  void SaveProject();
  // Writes what is open into the project's session file.
  void SaveSession();
  // False when the user refuses. What could not be kept is said in the status line.
  bool CloseProject();
  // The same when the window closes, which then says it.
  bool CloseProjectForEnd();

  mavro::Action* actNew;
  mavro::Action* actOpen;
  mavro::Action* actCloseAll;
  mavro::Action* actSave;
  mavro::Action* actOpenProject;
  mavro::Action* actSaveAll;

 private:
  void CarryOut(int id) override;
  void AskAndLoad();
};

extern FileActs theFileActs;

}  // namespace zendry
