#include "debug/WatchList.h"

#include "base/ControlBytes.h"
#include "base/TrimText.h"
#include "debug/Debugger.h"

namespace zendry {

namespace {

enum Column { cExpressionColumn, cValueColumn };

}  // namespace

WatchList::WatchList() {
  list.AddColumn("variable", 100);
  list.AddColumn("value", 700);
  list.columns.SetEditable(cValueColumn, false);
  list.editLabels = true;
  list.fullRowSelect = true;
  list.dock = mavro::Dock::cFill;
  list.onChoose.Add_H(this, &WatchList::OnChoose);
  list.onClickRow.Add_H(this, &WatchList::OnClickRow);
  list.onKeyDown.Add_H(this, &WatchList::OnKey);
  list.onPostEdit.Add_H(this, &WatchList::OnEdited);
  Add(&list);
}

void WatchList::Bind(Debugger* newDebugger, int newNumber) {
  debugger = newDebugger;
  number = newNumber;
}

const std::vector<Watch>& WatchList::Rows() const {
  static const std::vector<Watch> none;
  return debugger ? debugger->watches.lists[static_cast<size_t>(number)] : none;
}

void WatchList::Prepare() {
  ShowAll();
}

void WatchList::Clear() {
  if (debugger) debugger->ClearWatches(number);
  ShowAll();
}

void WatchList::ShowAll() {
  const auto count = static_cast<int>(Rows().size());
  list.rowCount = count + 1;
  for (int row = 0; row < count; ++row) {
    list.SetCell(row, cExpressionColumn, Rows()[static_cast<size_t>(row)].expression);
    ShowValue(row);
  }
  list.SetCell(count, cExpressionColumn, "");
  list.SetCell(count, cValueColumn, "");
  list.SetCellTip(count, cValueColumn, "");
  list.MarkCell(count, cValueColumn, false);
}

// An expression that has no value yet shows why. The value of an earlier stop stays, with the
// reason in its tip.
void WatchList::ShowValue(int row) {
  if (row < 0 || row >= static_cast<int>(Rows().size()) || row >= list.rowCount) return;
  const Watch& watch = Rows()[static_cast<size_t>(row)];
  const std::string& shown = watch.value.empty() ? watch.error : watch.value;
  const bool hasMore = watch.error.empty() && watch.whole != watch.value;
  list.SetCell(row, cValueColumn, MarkControlBytes(shown));
  const std::string& tip = hasMore ? watch.whole : watch.error;
  list.SetCellTip(row, cValueColumn, &tip == &shown ? "" : MarkControlBytes(tip));
  list.MarkCell(row, cValueColumn, watch.hasChanged);
}

void WatchList::OnChoose(mavro::NotifyArgs& args) {
  if (args.value >= 0 && args.value < list.rowCount) list.EditCell(args.value, cExpressionColumn);
}

// A click on the empty row begins the edit that it is there for.
void WatchList::OnClickRow(mavro::NotifyArgs& args) {
  if (args.value >= 0 && args.value == list.rowCount - 1)
    list.EditCell(args.value, cExpressionColumn);
}

void WatchList::OnKey(mavro::KeyArgs& args) {
  const int row = list.selectedIndex;
  if (args.key != mavro::Key::cDelete || row < 0 || row >= static_cast<int>(Rows().size())) return;
  args.handled = true;
  debugger->ChangeExpression(number, row, "");
  ShowAll();
}

// The debugger decides: what it has taken is shown from its list.
void WatchList::OnEdited(mavro::ItemArgs& args) {
  args.value = 0;
  if (debugger) debugger->ChangeExpression(number, args.row, std::string(Trimmed(args.text)));
  ShowAll();
}

}  // namespace zendry
