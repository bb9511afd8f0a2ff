#include "editor/ReferenceList.h"

#include "FileText.h"
#include "SystemDialogs.h"
#include "base/ControlBytes.h"
#include "project/Project.h"

namespace zendry {

namespace {

enum Column { cFileColumn, cLineColumn, cTextColumn };

// The widths fit the window at its first start; in a wider window the text column gets the rest.
constexpr int cFileWidth = 160;
constexpr int cLineWidth = 70;
constexpr int cTextWidth = 480;
constexpr size_t cMaxRowText = 0x4000;

}  // namespace

ReferenceList::ReferenceList(const std::string& caption, EditorMark newMark, EditTabs& itsTabs)
    : mark(newMark), tabs(itsTabs) {
  text = caption;
  list.accessibleName = caption;
  list.AddColumn("file", cFileWidth);
  list.AddColumn("message", cLineWidth);
  list.AddColumn("text", cTextWidth);
  list.fullRowSelect = true;
  list.showSelection = true;
  list.dock = mavro::Dock::cFill;
  list.onClickRow.Add_H(this, &ReferenceList::OnRow);
  list.onChoose.Add_H(this, &ReferenceList::OnRow);
  Add(&list);
}

void ReferenceList::AddRow(const std::string& file, int line, std::string_view message) {
  const int row = list.AddRow(MarkControlBytes(file));
  list.SetItemData(row, line);
  if (!file.empty()) list.SetCell(row, cLineColumn, std::to_string(line));
  list.SetCell(row, cTextColumn, MarkControlBytes(message.substr(0, cMaxRowText)));
  files.push_back(file);
}

void ReferenceList::AppendToLast(std::string_view message) {
  const int last = RowCount() - 1;
  if (last < 0) return;
  const std::string shown = list.GetCell(last, cTextColumn);
  if (shown.size() >= cMaxRowText) return;
  const std::string added = MarkControlBytes(message.substr(0, cMaxRowText - shown.size()));
  list.SetCell(last, cTextColumn, shown + added);
}

void ReferenceList::Clear() {
  if (mark != cNoMark) tabs.RemoveMark(mark);
  list.Clear();
  list.selectedIndex = -1;
  files.clear();
  ++clearings;
}

void ReferenceList::ShowCurrent() {
  const int row = list.selectedIndex;
  if (row < 0 || row >= RowCount()) return;
  const std::string& file = files[static_cast<size_t>(row)];
  if (file.empty()) return;
  const std::string path = theProject.GetFullPath(file);
  if (!mavro::FileExists(path)) return;
  const int line = list.GetItemData(row);
  CppEditor* editor = tabs.GoTo(path, line);
  if (!editor || mark == cNoMark || line <= 0) return;
  tabs.RemoveMark(mark);
  editor->SetMark(mark, line);
}

void ReferenceList::ShowRow(int row) {
  if (row < RowCount()) GoToRow(row);
}

void ReferenceList::GoNext() {
  const int row = list.selectedIndex;
  row < RowCount() - 1 ? GoToRow(row + 1) : mavro::Beep();
}

void ReferenceList::GoPrev() {
  const int row = list.selectedIndex;
  row < 1 ? mavro::Beep() : GoToRow(row - 1);
}

void ReferenceList::GoToRow(int row) {
  list.Select(row);
  ShowCurrent();
}

void ReferenceList::OnRow(mavro::NotifyArgs& args) {
  if (args.value >= 0) GoToRow(args.value);
}

}  // namespace zendry
