#include "base/CommandTable.h"

#include <algorithm>

#include "SystemDialogs.h"
#include "base/BuildInProgress.h"

namespace zendry {

bool IsRefusedByBuild() {
  if (BuildInProgress::Any()) mavro::Beep();
  return BuildInProgress::Any();
}

CommandList::CommandList(std::span<const CommandRow> theRows) : rows(theRows) {
  SetTarget(this, &CommandList::OnCommand);
  for (const CommandRow& row : rows) {
    if (row.id == mavro::cSeparatorRow)
      AddSeparator();
    else if (row.id == mavro::cSubmenuRow)
      AddSubmenu(row.text);
    else if (row.id == mavro::cEndSubmenuRow)
      EndSubmenu();
    else
      Add(row.id, row.text, row.hotkey);
  }
}

void CommandList::OnCommand(int id) {
  const auto row =
      std::find_if(rows.begin(), rows.end(), [id](const auto& r) { return r.id == id; });
  const bool needsQuiet = row != rows.end() && row->whileBuilding == WhileBuilding::cRefused;
  if (needsQuiet && IsRefusedByBuild()) return;
  CarryOut(id);
}

}  // namespace zendry
