#pragma once

#include <string>
#include <vector>

#include "base/CommandTable.h"
#include "base/FileCommands.h"

namespace zendry {

// The commands of the menu "&File". Commands on an open file go to the editor tabs.
class FileActs : public CommandList {
 public:
  FileActs();

  // Loads the open project. A file that can't be read gives an empty project under its name.
  void LoadProject(const std::string& path);
  // Closes the open project and loads another; does nothing when the user refuses to close.
  void ReplaceProject(const std::string& path);
  // Opens each file as its command would: projects first, since one of them closes the open tabs. A
  // file that can't be opened doesn't stop the others. During a build, no file is opened.
  void OpenFiles(std::vector<std::string> paths);
  void SaveProject();
  // Writes the list of open files into the project's session file.
  void SaveSession();
  // False when the user refuses. The status line reports settings or a session that could not be
  // written.
  bool CloseProject();
  // The same when the window closes; then the window reports failures.
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
  void Print(int id);
};

extern FileActs theFileActs;

}  // namespace zendry
