#include "debug/BreakEditor.h"

#include <algorithm>

#include "Assert.h"
#include "FileText.h"
#include "SystemDialogs.h"
#include "base/ControlBytes.h"
#include "debug/Debugger.h"
#include "debug/TextDlg.h"
#include "editor/EditTabs.h"
#include "project/Project.h"

namespace zendry {

namespace {

constexpr int cWidth = 592;
constexpr int cHeight = 321;
constexpr int cButtonWidth = 84;
constexpr int cButtonHeight = 34;
constexpr int cButtonTop = 4;

enum Column { cFileColumn, cLineColumn, cConditionColumn, cIdColumn };

}  // namespace

BreakEditor::BreakEditor(Debugger& itsDebugger, EditTabs& itsTabs)
    : debugger(itsDebugger), tabs(itsTabs) {
  struct ButtonRow {
    mavro::Button& button;
    const char* caption;
    int left;
    void (BreakEditor::*handler)(mavro::NotifyArgs&);
  };
  text = "Breakpoints";
  SetSize(cWidth, cHeight);
  buttons.dock = mavro::Dock::cTop;
  buttons.height = cButtonHeight + 2 * cButtonTop;
  for (const ButtonRow& row : {ButtonRow{locate, " Locate", 8, &BreakEditor::OnLocate},
                               ButtonRow{condition, "Condition", 96, &BreakEditor::OnCondition},
                               ButtonRow{remove, "  Remove", 202, &BreakEditor::OnRemove},
                               ButtonRow{removeAll, "Remove All", 288, &BreakEditor::OnRemoveAll},
                               ButtonRow{close, "Close", 452, nullptr}}) {
    row.button.text = row.caption;
    row.button.SetBounds(row.left, cButtonTop, cButtonWidth, cButtonHeight);
    if (row.handler) row.button.onClick.Add_H(this, row.handler);
    buttons.Add(&row.button);
  }
  close.kind = mavro::Button::cCancel;
  close.text = "Close";
  list.AddColumn("file", 200);
  list.AddColumn("line", 32);
  list.AddColumn("condition", 250);
  list.AddColumn("id", 32);
  for (const int column : {cFileColumn, cLineColumn, cIdColumn})
    list.columns.SetEditable(column, false);
  list.editLabels = true;
  list.fullRowSelect = true;
  list.showSelection = true;
  list.accessibleName = text.Get();
  list.dock = mavro::Dock::cFill;
  list.onChoose.Add_H(this, &BreakEditor::OnLocate);
  list.onChangeSel.Add_H(this, &BreakEditor::OnSelected);
  list.onKeyDown.Add_H(this, &BreakEditor::OnKey);
  list.onPostEdit.Add_H(this, &BreakEditor::OnEdited);
  Add(&buttons);
  Add(&list);
  focusControl = &list;
  Fill();
  SelectRow(0);
}

// Rows are kept, so that a cell that is being edited stays open.
void BreakEditor::Fill() {
  const auto& entries = debugger.breakpoints.entries;
  list.rowCount = static_cast<int>(entries.size());
  for (int row = 0; row < list.rowCount; ++row) {
    const Breakpoint& entry = entries[static_cast<size_t>(row)];
    list.SetCell(row, cFileColumn, MarkControlBytes(theProject.MakeRelative(entry.file)));
    list.SetCellTip(row, cFileColumn, MarkControlBytes(entry.file));
    list.SetCell(row, cLineColumn, std::to_string(entry.line + 1));
    list.SetCell(row, cConditionColumn, entry.condition);
    list.SetCell(row, cIdColumn, entry.id > 0 ? std::to_string(entry.id) : "");
    list.SetCellTip(row, cIdColumn, MarkControlBytes(entry.refusal));
  }
  UpdateButtons();
}

void BreakEditor::SelectRow(int row) {
  list.Select(std::min(row, list.rowCount - 1));
  UpdateButtons();
}

void BreakEditor::UpdateButtons() {
  const bool isSelected = list.selectedIndex >= 0;
  locate.enabled = condition.enabled = remove.enabled = isSelected;
  removeAll.enabled = list.rowCount > 0;
}

void BreakEditor::OnSelected(mavro::NotifyArgs&) {
  UpdateButtons();
}

void BreakEditor::OnKey(mavro::KeyArgs& args) {
  if (args.key != mavro::Key::cDelete || list.selectedIndex < 0) return;
  args.handled = true;
  mavro::NotifyArgs click{this, 0};
  OnRemove(click);
}

void BreakEditor::OnLocate(mavro::NotifyArgs&) {
  const int row = list.selectedIndex;
  if (row < 0) return;
  const Breakpoint entry = debugger.breakpoints.entries[static_cast<size_t>(row)];
  if (!mavro::FileExists(entry.file))
    return mavro::Information("No file: " + MarkControlBytes(entry.file));
  Close();
  tabs.GoTo(entry.file, entry.line + 1);
}

void BreakEditor::OnCondition(mavro::NotifyArgs&) {
  const int row = list.selectedIndex;
  if (row < 0) return;
  TextDlg form("Condtion:", debugger.breakpoints.entries[static_cast<size_t>(row)].condition);
  if (!form.Ask() || !debugger.breakpoints.Has(row)) return;
  debugger.SetCondition(row, form.Accepted());
  Fill();
}

void BreakEditor::OnEdited(mavro::ItemArgs& args) {
  if (!debugger.breakpoints.Has(args.row)) return;
  debugger.SetCondition(args.row, args.text);
  if (debugger.breakpoints.Has(args.row))
    args.text = debugger.breakpoints.entries[static_cast<size_t>(args.row)].condition;
}

void BreakEditor::OnRemove(mavro::NotifyArgs&) {
  const int row = list.selectedIndex;
  MAVRO_ASSERT_AS(row > -1, "itm>-1");
  debugger.RemoveBreakpoint(row);
  Fill();
  SelectRow(row);
}

void BreakEditor::OnRemoveAll(mavro::NotifyArgs&) {
  debugger.ClearAll();
  Fill();
}

}  // namespace zendry
