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
  const int row = list.AddCells({MarkControlBytes(file), std::to_string(line),
                                 MarkControlBytes(message.substr(0, cMaxRowText))});
  list.SetItemData(row, line);
  files.push_back(file);
}

void ReferenceList::AddCaption(const std::string& caption) {
  list.AddCells({"", "", caption});
  files.emplace_back();
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
}

void ReferenceList::ShowCurrent() {
  const int row = list.selectedIndex;
  if (row < 0 || row >= RowCount() || files[static_cast<size_t>(row)].empty()) return;
  const std::string path = theProject.GetFullPath(files[static_cast<size_t>(row)]);
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

int ReferenceList::PlaceFrom(int row, int step) const {
  while (row >= 0 && row < RowCount() && files[static_cast<size_t>(row)].empty()) row += step;
  return row >= 0 && row < RowCount() ? row : -1;
}

void ReferenceList::GoNext() {
  const int current = list.selectedIndex;
  const int row = PlaceFrom(current + 1, 1);
  row >= 0 ? GoToRow(row) : mavro::Beep();
}

void ReferenceList::GoPrev() {
  const int current = list.selectedIndex;
  const int row = PlaceFrom(current - 1, -1);
  row >= 0 ? GoToRow(row) : mavro::Beep();
}

void ReferenceList::GoToRow(int row) {
  list.Select(row);
  ShowCurrent();
}

void ReferenceList::OnRow(mavro::NotifyArgs& args) {
  if (args.value >= 0) GoToRow(args.value);
}

}  // namespace zendry
