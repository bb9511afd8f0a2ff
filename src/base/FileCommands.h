#pragma once

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
  cExitCommand = 1316,
  cPrintPreviewCommand = 1331,
  cPageSetupCommand = 1332
};

}  // namespace zendry
