#include "base/CommandTable.h"

namespace zendry {

namespace {

void AddCommand(mavro::ActionList& list, const CommandRow& row) {
  mavro::Action* action = list.Add(row.id, row.text, row.hotkey);
  if (row.offered == Offered::cLater) action->target = nullptr;
}

}  // namespace

void AddCommands(mavro::ActionList& list, std::span<const CommandRow> rows) {
  for (const CommandRow& row : rows) {
    switch (row.id) {
      case mavro::cSeparatorRow:
        list.AddSeparator();
        break;
      case mavro::cSubmenuRow:
        list.AddSubmenu(row.text);
        break;
      case mavro::cEndSubmenuRow:
        list.EndSubmenu();
        break;
      default:
        AddCommand(list, row);
    }
  }
}

}  // namespace zendry
