#pragma once

#include "Action.h"

namespace zendry {

// Ids that others name.
enum BrowserCommand {
  cSwitchFileCommand = 1101,
  cFindDeclarationCommand = 1104,
  cFindDefinitionCommand = 1105,
  cCompleteCommand = 1107,
  cShowTipCommand = 1108
};

// The commands on symbols of the source.
class BrowserActs : public mavro::ActionList {
 public:
  BrowserActs();
  // Carries out a command for the editor in front; without one nothing happens.
  void OnCommand(int id);
};

extern BrowserActs theBrowserActs;

}  // namespace zendry
