#include "editor/ReferenceList.h"

#include "FileText.h"
#include "SystemDialogs.h"
#include "base/CompilerColumn.h"
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

// The line may have changed since the compiler read it: then the caret ends before its end.
void GoToColumn(CppEditor& editor, int line, int column) {
  const int start = editor.LineStart(line);
  const std::string text = editor.GetRange(start, editor.LineEnd(line));
  const int position = start + static_cast<int>(ByteAtColumn(text, column));
  editor.Select(position, position);
}

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
  list.lateCells = [this](int row) { return CellsOf(row); };
  list.onClickRow.Add_H(this, &ReferenceList::OnRow);
  list.onChoose.Add_H(this, &ReferenceList::OnRow);
  Add(&list);
}

void ReferenceList::AddRow(const std::string& file, int line, std::string_view message,
                           int column) {
  KeepRow(file, line, message, column);
  ShowKept();
}

void ReferenceList::KeepRow(const std::string& file, int line, std::string_view message,
                            int column) {
  if (files.empty() || files.back() != file) files.push_back(file);
  message = message.substr(0, cMaxRowText);
  places.push_back({files.size() - 1, line, column, texts.size(), message.size()});
  texts += message;
}

void ReferenceList::ShowKept() {
  const int shown = list.rowCount;
  list.AddLateRows(shown, RowCount() - shown);
}

void ReferenceList::AddCaption(const std::string& caption) {
  AddRow("", 0, caption);
}

std::vector<std::string> ReferenceList::CellsOf(int row) const {
  const Place& place = places[static_cast<size_t>(row)];
  const std::string text =
      MarkControlBytes(std::string_view(texts).substr(place.text, place.length));
  if (!IsPlace(row)) return {"", "", text};
  return {MarkControlBytes(files[place.file]), std::to_string(place.line), text};
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
  places.clear();
  files.clear();
  texts.clear();
  ++clearings;
}

void ReferenceList::ShowCurrent() {
  const int row = list.selectedIndex;
  if (row < 0 || row >= RowCount() || !IsPlace(row)) return;
  const Place& place = places[static_cast<size_t>(row)];
  const std::string path = theProject.GetFullPath(files[place.file]);
  if (!mavro::FileExists(path)) return;
  const int line = place.line;
  CppEditor* editor = tabs.GoTo(path, line);
  if (editor && line > 0 && place.column > 0) GoToColumn(*editor, line - 1, place.column);
  if (!editor || mark == cNoMark || line <= 0) return;
  tabs.RemoveMark(mark);
  editor->SetMark(mark, line);
}

void ReferenceList::ShowRow(int row) {
  if (row < RowCount()) GoToRow(row);
}

int ReferenceList::PlaceFrom(int row, int step) const {
  while (row >= 0 && row < RowCount() && !IsPlace(row)) row += step;
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
