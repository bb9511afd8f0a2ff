#pragma once

namespace zendry {

// Ids of the help commands.
enum HelpCommand {
  cWordHelpCommand = 1112,  // carried out by the browser's commands, which know the editor
  cAboutCommand = 1700,
  cShowHelpCommand = 1701
};

}  // namespace zendry
