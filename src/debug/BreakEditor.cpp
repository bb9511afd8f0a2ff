#include "debug/BreakEditor.h"

#include <algorithm>

#include "Assert.h"
#include "FileText.h"
#include "SystemDialogs.h"
#include "base/ControlBytes.h"
#include "base/KeyName.h"
#include "debug/Debugger.h"
#include "debug/TextDlg.h"
#include "editor/EditTabs.h"
#include "project/Project.h"

namespace zendry {

namespace {

enum Column { cFileColumn, cLineColumn, cConditionColumn, cIdColumn };

}  // namespace

BreakEditor::BreakEditor(Debugger& itsDebugger, EditTabs& itsTabs)
    : debugger(itsDebugger),
      tabs(itsTabs),
      noBreakpoints(list, "The places where the program stops. " +
                              KeyName(itsDebugger.Find(cBreakpointCommand)) +
                              " in the editor, or a click beside a line, sets one.") {
  Initialize();
  list.AddColumn("file", 200);
  list.AddColumn("line", 32);
  list.AddColumn("condition", 250);
  list.AddColumn("id", 32);
  for (const int column : {cFileColumn, cLineColumn, cIdColumn})
    list.columns.SetEditable(column, false);
  list.accessibleName = text.Get();
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

void BreakEditor::Initialize() {
  using mavro::Button, mavro::Dock;
  // clang-format off
	//!init
	this->SetBounds(0, 0, 592, 321);
	this->text = "Breakpoints";
	//!<Panel>
	buttons.dock = Dock::cTop;
	buttons.height = 42;
	this->Add(&buttons);
	//!<Button>
	locate.SetBounds(8, 4, 84, 34);
	locate.text = " Locate";
	locate.onClick.Add_H(this, &This::OnLocate);
	buttons.Add(&locate);
	//!<Button>
	condition.SetBounds(96, 4, 84, 34);
	condition.text = "Condition";
	condition.onClick.Add_H(this, &This::OnCondition);
	buttons.Add(&condition);
	//!<Button>
	remove.SetBounds(202, 4, 84, 34);
	remove.text = "  Remove";
	remove.onClick.Add_H(this, &This::OnRemove);
	buttons.Add(&remove);
	//!<Button>
	removeAll.SetBounds(288, 4, 84, 34);
	removeAll.text = "Remove All";
	removeAll.onClick.Add_H(this, &This::OnRemoveAll);
	buttons.Add(&removeAll);
	//!<Button>
	close.SetBounds(452, 4, 84, 34);
	close.text = "Close";
	close.kind = Button::cCancel;
	buttons.Add(&close);
	//!<ListView>
	list.dock = Dock::cFill;
	list.editLabels = true;
	list.showSelection = true;
	list.onChoose.Add_H(this, &This::OnLocate);
	list.onChangeSel.Add_H(this, &This::OnSelected);
	list.onKeyDown.Add_H(this, &This::OnKey);
	list.onPostEdit.Add_H(this, &This::OnEdited);
	this->Add(&list);
	//!end
  // clang-format on
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
