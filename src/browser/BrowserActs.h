#pragma once

#include "base/CommandTable.h"

namespace zendry {

// Ids that others name.
enum BrowserCommand {
  cSwitchFileCommand = 1101,
  cFindDeclarationCommand = 1104,
  cFindDefinitionCommand = 1105,
  cCompleteCommand = 1107,
  cShowTipCommand = 1108
};

class EditTabs;

// The commands on symbols of the source.
class BrowserActs : public CommandList {
 public:
  BrowserActs();
  // The tabs in whose front editor commands act; null for none, where nothing happens.
  void Bind(EditTabs* newTabs) { tabs = newTabs; }

 private:
  void CarryOut(int id) override;

  EditTabs* tabs = nullptr;
};

extern BrowserActs theBrowserActs;

}  // namespace zendry
