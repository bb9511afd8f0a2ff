#include "ListView.h"

#include <algorithm>
#include <numeric>

#include "Assert.h"
#include "CellSort.h"
#include "ListViewImpl.h"

namespace mavro {

void ListView::Impl::Create() {
  CreateNative(NativeClass(), cWantsKeys);
  Window()->SetSource(this);
  for (const Column& column : columns) Window()->ColumnAdded(column.width);
  Window()->SetHeaderClickable(TheList().onColumnClick.HasHandlers());
  LookChanged();
  if (!rows.empty()) Window()->RowsAdded();
  if (selectedIndex != -1) SelectedIndexChanged();
}

void ListView::Impl::Destroy() {
  destroying = true;
  SysImpl::Destroy();
  destroying = false;
}

// Enter is passed on if the list has no handler for a choice.
Param ListView::Impl::OnNotify(NotifyHeader* header) {
  if (destroying) return 0;
  auto* told = static_cast<ListViewHeader*>(header);
  switch (header->code) {
    case LVN_SELCHANGED:
      selectedIndex = told->row;
      FireNotify(TheList().onChangeSel, told->row);
      return 0;
    case LVN_CLICKED:
      FireNotify(TheList().onClickRow, told->row);
      return 0;
    case LVN_CHOSEN:
      FireNotify(TheList().onChoose, told->row);
      return 0;
    case LVN_COLUMNCLICK:
      FireNotify(TheList().onColumnClick, told->column);
      return 0;
    case LVN_ENDLABELEDIT:
      told->taken = TakeTyped(told->row, told->column, told->text) == Typed::cTaken;
      return 0;
    default:
      return 1;
  }
}

// A handler may have removed the row meanwhile.
ListView::Impl::Typed ListView::Impl::TakeTyped(int row, int column, const std::string& typed) {
  ItemArgs args{owner, 1, row, column, typed};
  if (!TheList().onPostEdit.Fire(args)) return Typed::cGone;
  if (args.value == 0) return Typed::cRefused;
  if (row >= vrowCount() || column >= ColumnCount()) return Typed::cTaken;
  SetCell(row, column, args.text);
  return FireNotify(TheList().onChangeText, row) ? Typed::cTaken : Typed::cGone;
}

std::string_view ListView::Impl::ColumnTitle(int column) const {
  return columns[static_cast<size_t>(column)].title;
}

void ListView::Impl::MakeCells(int row) const {
  Row& late = rows[static_cast<size_t>(row)];
  if (!late.isLate) return;
  late.isLate = false;
  if (TheList().lateCells) late.cells = TheList().lateCells(late.data);
}

std::string_view ListView::Impl::Cell(int row, int column) const {
  MakeCells(row);
  const auto& cells = rows[static_cast<size_t>(row)].cells;
  return static_cast<size_t>(column) < cells.size() ? cells[static_cast<size_t>(column)]
                                                    : std::string_view();
}

const ListView::Impl::CellExtra* ListView::Impl::ExtraOf(int row, int column) const {
  const auto& extras = rows[static_cast<size_t>(row)].extras;
  const auto index = static_cast<size_t>(column);
  return extras && index < extras->size() ? &(*extras)[index] : nullptr;
}

ListView::Impl::CellExtra& ListView::Impl::EnsureExtra(int row, int col) {
  auto& extras = rows[static_cast<size_t>(row)].extras;
  if (!extras) extras = std::make_unique<std::vector<CellExtra>>();
  if (extras->size() <= static_cast<size_t>(col)) extras->resize(static_cast<size_t>(col) + 1);
  return (*extras)[static_cast<size_t>(col)];
}

bool ListView::Impl::IsMarked(int row, int column) const {
  const CellExtra* extra = ExtraOf(row, column);
  return extra && extra->isMarked;
}

std::string_view ListView::Impl::CellTip(int row, int column) const {
  const CellExtra* extra = ExtraOf(row, column);
  return extra ? extra->tip : std::string_view();
}

bool ListView::Impl::IsEditable(int column) const {
  return look.editLabels && columns[static_cast<size_t>(column)].editable;
}

ListView::Impl::Row* ListView::Impl::RowAt(int nItem) {
  MAVRO_ASSERT_AS(nItem >= -1 && nItem < vrowCount(),
                  "nItem>=-1 && nItem<getimpl(&list).vrowCount");
  return nItem == -1 ? nullptr : &rows[static_cast<size_t>(nItem)];
}

void ListView::Impl::CheckCell(int row, int col) const {
  MAVRO_ASSERT_AS(row >= -1 && row < vrowCount() && col >= 0 && col < ColumnCount(),
                  "row>=-1 && row<getimpl(&list).vrowCount && col>=0 && "
                  "col<list.columns.GetCount()");
}

ListView::Impl::Column& ListView::Impl::ColumnAt(int col) {
  MAVRO_ASSERT_AS(col >= 0 && col < ColumnCount(), "col>=0 && col<list.columns.GetCount()");
  return columns[static_cast<size_t>(col)];
}

void ListView::Impl::AddColumn(const std::string& title, int width) {
  columns.push_back({title, width, true});
  colCount = ColumnCount();
  if (hwnd) Window()->ColumnAdded(width);
}

void ListView::Impl::AddLateRows(int firstData, int count) {
  if (count <= 0) return;
  const size_t wanted = rows.size() + static_cast<size_t>(count);
  if (wanted > rows.capacity()) rows.reserve(std::max(wanted, 2 * rows.capacity()));
  for (int i = 0; i < count; ++i) rows.push_back({{}, firstData + i, -1, true});
  rowCount = vrowCount();
  if (hwnd) Window()->RowsAdded();
}

int ListView::Impl::AddRow(Row row) {
  rows.push_back(std::move(row));
  rowCount = vrowCount();
  if (hwnd) Window()->RowsAdded();
  return rowCount - 1;
}

// The selected row stays selected if others are removed.
void ListView::Impl::RemoveRows(int first, int count) {
  if (hwnd) Window()->RemovingRows(first, count);
  rows.erase(rows.begin() + first, rows.begin() + first + count);
  rowCount = vrowCount();
  if (selectedIndex >= first + count)
    selectedIndex -= count;
  else if (selectedIndex >= first)
    selectedIndex = -1;
  if (hwnd) Window()->RowsRemoved(selectedIndex);
}

void ListView::Impl::SetCell(int row, int col, const std::string& cell) {
  MakeCells(row);
  auto& cells = rows[static_cast<size_t>(row)].cells;
  if (cells.size() <= static_cast<size_t>(col)) cells.resize(static_cast<size_t>(col) + 1);
  std::string& stored = cells[static_cast<size_t>(col)];
  if (stored == cell) return;
  stored = cell;
  if (hwnd) Window()->RowChanged(row);
}

// A text that is being typed belongs to the row that it was begun in.
void ListView::Impl::Sort(int col, bool ascending) {
  if (hwnd) Window()->EndEdit();
  std::vector<std::string_view> cells;
  cells.reserve(rows.size());
  for (int row = 0; row < vrowCount(); ++row) cells.push_back(Cell(row, col));
  const std::vector<size_t> order = CellOrder(cells, ascending);
  std::vector<Row> sorted;
  sorted.reserve(rows.size());
  int selected = -1;
  for (const size_t from : order) {
    if (static_cast<int>(from) == selectedIndex) selected = static_cast<int>(sorted.size());
    sorted.push_back(std::move(rows[from]));
  }
  rows = std::move(sorted);
  selectedIndex = selected;
  if (hwnd) Window()->RowsSorted(col, ascending, selected);
}

void ListView::Impl::ColCountChanged() {
  const int count = colCount;
  MAVRO_ASSERT(count >= 0);
  while (ColumnCount() < count) AddColumn(std::string(), ListColumns::cWidth);
  while (ColumnCount() > count) {
    if (hwnd) Window()->RemovingColumn();
    columns.pop_back();
    for (Row& row : rows)
      if (row.cells.size() > columns.size()) row.cells.resize(columns.size());
    if (hwnd) Window()->ColumnRemoved();
  }
}

void ListView::Impl::RowCountChanged() {
  const int count = rowCount;
  MAVRO_ASSERT(count >= 0);
  if (count < vrowCount()) RemoveRows(count, vrowCount() - count);
  if (count == vrowCount()) return;
  rows.resize(static_cast<size_t>(count));
  if (hwnd) Window()->RowsAdded();
}

void ListView::Impl::SelectedIndexChanged() {
  MAVRO_ASSERT_AS(selectedIndex >= -1 && (!hwnd || selectedIndex < vrowCount()),
                  "nItem>=-1 && nItem<getimpl(&list).vrowCount");
  if (hwnd) Window()->SelectRow(selectedIndex);
}

void ListView::Impl::LookChanged() {
  if (hwnd) Window()->SetLook(look);
}

ListView::ListView() : ListView(new Impl) {}

ListView::ListView(Impl* newImpl)
    : Control(newImpl),
      columns(*this),
      colCount(impl, static_cast<PropertySetter>(&Impl::ColCountChanged), &TheImpl().colCount),
      rowCount(impl, static_cast<PropertySetter>(&Impl::RowCountChanged), &TheImpl().rowCount),
      selectedIndex(impl, static_cast<PropertySetter>(&Impl::SelectedIndexChanged),
                    &TheImpl().selectedIndex),
      imageList(impl, static_cast<PropertySetter>(&Impl::LookChanged), &TheImpl().look.imageList),
      fullRowSelect(impl, static_cast<PropertySetter>(&Impl::LookChanged),
                    &TheImpl().look.fullRowSelect),
      editLabels(impl, static_cast<PropertySetter>(&Impl::LookChanged), &TheImpl().look.editLabels),
      gridLines(impl, static_cast<PropertySetter>(&Impl::LookChanged), &TheImpl().look.gridLines),
      headerVisible(impl, static_cast<PropertySetter>(&Impl::LookChanged),
                    &TheImpl().look.headerVisible),
      showSelection(impl, static_cast<PropertySetter>(&Impl::LookChanged),
                    &TheImpl().look.showSelection) {}

ListView::Impl& ListView::TheImpl() const {
  return *static_cast<Impl*>(impl);
}

void ListColumns::Add(const std::string& title, int width) {
  static_cast<ListView::Impl*>(owner.impl)->AddColumn(title, width);
}

int ListColumns::GetCount() const {
  return static_cast<ListView::Impl*>(owner.impl)->ColumnCount();
}

const std::string& ListColumns::Title(int col) const {
  return static_cast<ListView::Impl*>(owner.impl)->ColumnAt(col).title;
}

void ListColumns::SetTitle(int col, const std::string& title) {
  auto& list = *static_cast<ListView::Impl*>(owner.impl);
  list.ColumnAt(col).title = title;
  if (list.hwnd) list.Window()->ColumnChanged(col);
}

void ListColumns::SetEditable(int col, bool on) {
  static_cast<ListView::Impl*>(owner.impl)->ColumnAt(col).editable = on;
}

int ListView::AddRow(const std::string& firstCell) {
  return TheImpl().AddRow({{firstCell}});
}

int ListView::AddCells(std::vector<std::string> cells) {
  MAVRO_ASSERT(cells.size() <= static_cast<size_t>(TheImpl().ColumnCount()));
  return TheImpl().AddRow({std::move(cells)});
}

void ListView::AddLateRows(int firstData, int count) {
  TheImpl().AddLateRows(firstData, count);
}

void ListView::RemoveRow(int row) {
  if (TheImpl().RowAt(row)) TheImpl().RemoveRows(row, 1);
}

void ListView::SetCell(int row, int col, const std::string& cell) {
  TheImpl().CheckCell(row, col);
  if (row != -1) TheImpl().SetCell(row, col, cell);
}

std::string ListView::GetCell(int row, int col) const {
  const Impl& list = TheImpl();
  list.CheckCell(row, col);
  return row == -1 ? std::string() : std::string(list.Cell(row, col));
}

void ListView::MarkCell(int row, int col, bool on) {
  Impl& list = TheImpl();
  list.CheckCell(row, col);
  if (row == -1 || list.IsMarked(row, col) == on) return;
  list.EnsureExtra(row, col).isMarked = on;
  if (impl->hwnd) list.Window()->RowChanged(row);
}

bool ListView::IsCellMarked(int row, int col) const {
  TheImpl().CheckCell(row, col);
  return row != -1 && TheImpl().IsMarked(row, col);
}

void ListView::SetCellTip(int row, int col, const std::string& tip) {
  Impl& list = TheImpl();
  list.CheckCell(row, col);
  if (row != -1 && list.CellTip(row, col) != tip) list.EnsureExtra(row, col).tip = tip;
}

void ListView::SetItemData(int row, int data) {
  if (Impl::Row* found = TheImpl().RowAt(row)) found->data = data;
}

int ListView::GetItemData(int row) const {
  const Impl::Row* found = TheImpl().RowAt(row);
  return found ? found->data : 0;
}

void ListView::SetItemImage(int row, int image) {
  Impl::Row* found = TheImpl().RowAt(row);
  if (!found) return;
  found->image = image;
  if (impl->hwnd) TheImpl().Window()->RowChanged(row);
}

int ListView::GetItemImage(int row) const {
  const Impl::Row* found = TheImpl().RowAt(row);
  return found ? found->image : -1;
}

void ListView::Clear() {
  Impl& list = TheImpl();
  list.rows.clear();
  list.rowCount = 0;
  list.selectedIndex = -1;
  if (list.hwnd) list.Window()->RowsCleared();
}

void ListView::Select(int row) {
  TheImpl().selectedIndex = row;
  TheImpl().SelectedIndexChanged();
}

void ListView::EditCell(int row, int col) {
  TheImpl().CheckCell(row, col);
  if (impl->hwnd && row != -1) TheImpl().Window()->EditCell(row, col);
}

void ListView::SortBy(int col, bool ascending) {
  TheImpl().ColumnAt(col);
  TheImpl().Sort(col, ascending);
}

}  // namespace mavro
