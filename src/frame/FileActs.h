#pragma once

#include <string>
#include <vector>

#include "Action.h"

namespace zendry {

enum FileCommand {
  cNewCommand = 1300,
  cOpenCommand = 1302,
  cSaveCommand = 1303,
  cSaveAsCommand = 1304,
  cSaveAllCommand = 1305,
  cCloseCommand = 1306,
  cCloseAllCommand = 1307,
  cOpenProjectCommand = 1308,
  cNewProjectCommand = 1309,
  cSaveProjectCommand = 1310,
  cCloneProjectCommand = 1311,
  cCloseProjectCommand = 1312,
  cRecentFilesCommand = 1313,
  cRecentProjectsCommand = 1314,
  cPrintCommand = 1315,
  cExitCommand = 1316
};

// The commands of the menu "&File". Its one handler serves the commands on the project too; what
// concerns an open file it hands on to the editor tabs. While a build runs only "E&xit" is heard.
class FileActs : public mavro::ActionList {
 public:
  FileActs();

  void OnCommand(int id);

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
  // False when the user refuses.
  bool CloseProject();

  mavro::Action* actNew;
  mavro::Action* actOpen;
  mavro::Action* actCloseAll;
  mavro::Action* actSave;
  mavro::Action* actOpenProject;
  mavro::Action* actSaveAll;

 private:
  void AskAndLoad();
};

extern FileActs theFileActs;

}  // namespace zendry
