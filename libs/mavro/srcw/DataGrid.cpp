#include "DataGrid.h"

#include <algorithm>

#include "Assert.h"
#include "CellText.h"
#include "Clipboard.h"
#include "DataGridImpl.h"
#include "GridMoves.h"

namespace mavro {

void DataGrid::Impl::Create() {
  ListView::Impl::Create();
  FrozenChanged();
  if (selectedIndex == -1 || selectedIndex != wanted.row) return;
  Grid()->SelectRange(Inside(wanted, {vrowCount(), ColumnCount()}));
}

Param DataGrid::Impl::OnNotify(NotifyHeader* header) {
  if (destroying) return 0;
  auto* told = static_cast<ListViewHeader*>(header);
  switch (header->code) {
    case LVN_BEGINLABELEDIT:
      OnStartEdit(*told);
      return 0;
    case LVN_CLICKED:
      OnClicked(told->row);
      return 0;
    case GVN_COPY:
      TheGrid().Copy();
      return 0;
    case GVN_CUT:
      TheGrid().Copy();
      ClearCells();
      return 0;
    case GVN_PASTE:
      TheGrid().Paste();
      return 0;
    case GVN_CLEAR:
      ClearCells();
      return 0;
    default:
      return ListView::Impl::OnNotify(header);
  }
}

void DataGrid::Impl::OnStartEdit(ListViewHeader& told) {
  ItemArgs args{owner, 1, told.row, told.column, told.text};
  told.taken = TheGrid().onStartEdit.Fire(args) && args.value != 0;
  told.text = args.text;
}

void DataGrid::Impl::OnClicked(int row) {
  if (FireNotify(TheGrid().onClickRow, row)) FireNotify(TheGrid().onClick, row);
}

CellRange DataGrid::Impl::Selection() const {
  if (hwnd) return Grid()->Selection();
  const GridSize size{vrowCount(), ColumnCount()};
  if (selectedIndex == -1) return {};
  return Inside(selectedIndex == wanted.row ? wanted : CellRange{selectedIndex, 0, 1, 1}, size);
}

void DataGrid::Impl::SelectCells(const CellRange& cells) {
  const CellRange inside = Inside(cells, {vrowCount(), ColumnCount()});
  selectedIndex = inside.IsEmpty() ? -1 : inside.row;
  wanted = inside;
  if (hwnd) Grid()->SelectRange(inside);
}

std::string DataGrid::Impl::SelectedText() const {
  const CellRange cells = Selection();
  std::string text;
  for (int row = cells.row; row < cells.row + cells.rowCount; ++row) {
    for (int col = cells.col; col < cells.col + cells.colCount; ++col) {
      if (col > cells.col) text += '\t';
      AppendCell(text, Cell(row, col));
    }
    text += '\n';
  }
  return text;
}

ListView::Impl::Typed DataGrid::Impl::Type(int row, int col, const std::string& text) {
  if (row >= vrowCount() || col >= ColumnCount() || !IsEditable(col)) return Typed::cRefused;
  return Cell(row, col) == text ? Typed::cTaken : TakeTyped(row, col, text);
}

bool DataGrid::Impl::Paste(const std::string& text) {
  const CellRange at = Selection();
  const auto copied = SplitCells(text);
  if (at.IsEmpty() || copied.empty()) return false;
  const bool fills = copied.size() == 1 && copied[0].size() == 1;
  const int rows = fills ? at.rowCount : static_cast<int>(copied.size());
  int cols = fills ? at.colCount : 0;
  bool all = true;
  for (int row = 0; row < rows; ++row) {
    const auto& cells = copied[fills ? 0 : static_cast<size_t>(row)];
    const int count = fills ? at.colCount : static_cast<int>(cells.size());
    cols = std::max(cols, count);
    for (int col = 0; col < count; ++col) {
      const std::string& cell = cells[fills ? 0 : static_cast<size_t>(col)];
      const Typed typed = Type(at.row + row, at.col + col, cell);
      if (typed == Typed::cGone) return false;
      all &= typed == Typed::cTaken;
    }
  }
  SelectCells({at.row, at.col, rows, cols});
  return all;
}

bool DataGrid::Impl::ClearCells() {
  const CellRange cells = Selection();
  bool all = true;
  for (int row = cells.row; row < cells.row + cells.rowCount; ++row) {
    for (int col = cells.col; col < cells.col + cells.colCount; ++col) {
      const Typed typed = Type(row, col, std::string());
      if (typed == Typed::cGone) return false;
      all &= typed == Typed::cTaken;
    }
  }
  return all;
}

int DataGrid::Impl::ColWidth(int col) {
  return hwnd ? Grid()->ColumnWidth(col) : std::max(ColumnAt(col).width, cLeastWidth);
}

void DataGrid::Impl::SetColWidth(int col, int width) {
  ColumnAt(col).width = width;
  if (hwnd) Grid()->SetColumnWidth(col, std::max(width, cLeastWidth));
}

void DataGrid::Impl::FrozenChanged() {
  if (hwnd) Grid()->SetFrozen(lockCol, rowHeight);
}

DataGrid::DataGrid()
    : ListView(new Impl),
      lockCol(impl, static_cast<PropertySetter>(&Impl::FrozenChanged), &TheImpl().lockCol),
      rowHeight(impl, static_cast<PropertySetter>(&Impl::FrozenChanged), &TheImpl().rowHeight) {}

DataGrid::Impl& DataGrid::TheImpl() const {
  return *static_cast<Impl*>(impl);
}

int DataGrid::GetCurrentCol() const {
  const Impl& grid = TheImpl();
  if (grid.hwnd) return grid.Grid()->CurrentColumn();
  const CellRange cells = grid.Selection();
  return cells.IsEmpty() ? -1 : cells.col;
}

CellRange DataGrid::GetSelection() const {
  return TheImpl().Selection();
}

void DataGrid::SelectCells(const CellRange& cells) {
  TheImpl().SelectCells(cells);
}

std::string DataGrid::SelectedText() const {
  return TheImpl().SelectedText();
}

void DataGrid::Copy() {
  if (!GetSelection().IsEmpty()) SetClipboardText(SelectedText());
}

bool DataGrid::Paste() {
  return TheImpl().Paste(ClipboardText());
}

bool DataGrid::ClearCells() {
  return TheImpl().ClearCells();
}

int DataGrid::GetColWidth(int col) const {
  TheImpl().ColumnAt(col);
  return TheImpl().ColWidth(col);
}

void DataGrid::SetColWidth(int col, int width) {
  TheImpl().SetColWidth(col, width);
}

}  // namespace mavro
