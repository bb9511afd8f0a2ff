#pragma once

#include <functional>
#include <string>

#include "base/CommandTable.h"

namespace zendry {

// Ids that other files use.
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
  // The tabs whose front editor the commands act on; null for none: then commands do nothing.
  void Bind(EditTabs* newTabs) { tabs = newTabs; }

  // Shows help on the word at the caret of the active editor.
  std::function<void(const std::string& word)> onWordHelp;

 private:
  void CarryOut(int id) override;

  EditTabs* tabs = nullptr;
};

extern BrowserActs theBrowserActs;

}  // namespace zendry
