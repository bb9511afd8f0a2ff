#include "ListView.h"

#include "Assert.h"
#include "NativeLists.h"
#include "SysImpl.h"

namespace mavro {

// Holds columns and rows; the window shows them from here.
class ListView::Impl : public SysImpl, public ListSource {
 public:
  struct Column {
    std::string title;
    int width = 0;
  };
  struct Row {
    std::vector<std::string> cells;
    int data = 0;
  };

  void Create() override;
  void Destroy() override;
  Param OnNotify(NotifyHeader* header) override;

  int RowCount() const override { return vrowCount(); }
  int ColumnCount() const override { return static_cast<int>(columns.size()); }
  std::string_view ColumnTitle(int column) const override;
  std::string_view Cell(int row, int column) const override;

  int vrowCount() const { return static_cast<int>(rows.size()); }
  NativeListView* Window() const { return static_cast<NativeListView*>(hwnd); }
  // The row of an index; null for -1, which stands for no row.
  Row* RowAt(int nItem);
  void CheckCell(int row, int col) const;
  void SelectedIndexChanged();
  void LookChanged();

  std::vector<Column> columns;
  std::vector<Row> rows;
  int selectedIndex = -1;
  ListLook look;

 private:
  ListView& TheList() const { return *static_cast<ListView*>(owner); }
  bool destroying = false;
};

void ListView::Impl::Create() {
  CreateNative("SysListView32", cWantsKeys);
  Window()->SetSource(this);
  for (const Column& column : columns) Window()->ColumnAdded(column.width);
  LookChanged();
  if (!rows.empty()) Window()->RowsAdded();
  if (selectedIndex != -1) SelectedIndexChanged();
}

void ListView::Impl::Destroy() {
  destroying = true;
  SysImpl::Destroy();
  destroying = false;
}

// Enter in a list that nobody chooses from is passed on.
Param ListView::Impl::OnNotify(NotifyHeader* header) {
  if (destroying) return 0;
  const auto* told = static_cast<const ListViewHeader*>(header);
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
    default:
      return 1;
  }
}

std::string_view ListView::Impl::ColumnTitle(int column) const {
  return columns[static_cast<size_t>(column)].title;
}

std::string_view ListView::Impl::Cell(int row, int column) const {
  const auto& cells = rows[static_cast<size_t>(row)].cells;
  return static_cast<size_t>(column) < cells.size() ? cells[static_cast<size_t>(column)]
                                                    : std::string_view();
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

void ListView::Impl::SelectedIndexChanged() {
  MAVRO_ASSERT_AS(selectedIndex >= -1 && (!hwnd || selectedIndex < vrowCount()),
                  "nItem>=-1 && nItem<getimpl(&list).vrowCount");
  if (hwnd) Window()->SelectRow(selectedIndex);
}

void ListView::Impl::LookChanged() {
  if (hwnd) Window()->SetLook(look);
}

ListView::ListView()
    : Control(new Impl),
      selectedIndex(impl, static_cast<PropertySetter>(&Impl::SelectedIndexChanged),
                    &static_cast<Impl*>(impl)->selectedIndex),
      fullRowSelect(impl, static_cast<PropertySetter>(&Impl::LookChanged),
                    &static_cast<Impl*>(impl)->look.fullRowSelect),
      gridLines(impl, static_cast<PropertySetter>(&Impl::LookChanged),
                &static_cast<Impl*>(impl)->look.gridLines),
      headerVisible(impl, static_cast<PropertySetter>(&Impl::LookChanged),
                    &static_cast<Impl*>(impl)->look.headerVisible),
      showSelection(impl, static_cast<PropertySetter>(&Impl::LookChanged),
                    &static_cast<Impl*>(impl)->look.showSelection) {}

ListView::Impl& ListView::TheImpl() const {
  return *static_cast<Impl*>(impl);
}

void ListView::AddColumn(const std::string& title, int width) {
  Impl& list = TheImpl();
  list.columns.push_back({title, width});
  if (list.hwnd) list.Window()->ColumnAdded(width);
}

int ListView::AddRow(const std::string& firstCell) {
  Impl& list = TheImpl();
  list.rows.push_back({{firstCell}, 0});
  if (list.hwnd) list.Window()->RowsAdded();
  return rowCount() - 1;
}

void ListView::SetCell(int row, int col, const std::string& cell) {
  Impl& list = TheImpl();
  list.CheckCell(row, col);
  if (row == -1) return;
  auto& cells = list.rows[static_cast<size_t>(row)].cells;
  if (cells.size() <= static_cast<size_t>(col)) cells.resize(static_cast<size_t>(col) + 1);
  std::string& stored = cells[static_cast<size_t>(col)];
  if (stored == cell) return;
  stored = cell;
  if (list.hwnd) list.Window()->RowChanged(row);
}

std::string ListView::GetCell(int row, int col) const {
  const Impl& list = TheImpl();
  list.CheckCell(row, col);
  return row == -1 ? std::string() : std::string(list.Cell(row, col));
}

void ListView::SetItemData(int row, int data) {
  if (Impl::Row* found = TheImpl().RowAt(row)) found->data = data;
}

int ListView::GetItemData(int row) const {
  const Impl::Row* found = TheImpl().RowAt(row);
  return found ? found->data : 0;
}

void ListView::Clear() {
  Impl& list = TheImpl();
  list.rows.clear();
  list.selectedIndex = -1;
  if (list.hwnd) list.Window()->RowsCleared();
}

void ListView::Select(int row) {
  TheImpl().selectedIndex = row;
  TheImpl().SelectedIndexChanged();
}

int ListView::colCount() const {
  return TheImpl().ColumnCount();
}

int ListView::rowCount() const {
  return TheImpl().RowCount();
}

}  // namespace mavro
