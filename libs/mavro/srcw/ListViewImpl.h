#pragma once

#include <memory>

#include "ListView.h"
#include "NativeLists.h"
#include "SysImpl.h"

namespace mavro {

// Holds columns and rows; the window shows them from here.
class ListView::Impl : public SysImpl, public ListSource {
 public:
  struct Column {
    std::string title;
    int width = 0;
    bool editable = true;
  };
  struct CellExtra {
    bool isMarked = false;
    std::string tip;
  };
  struct Row {
    std::vector<std::string> cells;
    int data = 0;
    int image = -1;
    bool isLate = false;                                       // the cells have not been made yet
    std::unique_ptr<std::vector<CellExtra>> extras = nullptr;  // by column; most rows have none
  };

  void Create() override;
  void Destroy() override;
  void PrepareStyle() override { style |= LVS_REPORT; }
  Param OnNotify(NotifyHeader* header) override;
  bool FinishTyping() override { return !hwnd || Window()->LeaveForGood(); }

  int RowCount() const override { return vrowCount(); }
  int ColumnCount() const override { return static_cast<int>(columns.size()); }
  std::string_view ColumnTitle(int column) const override;
  std::string_view Cell(int row, int column) const override;
  int RowImage(int row) const override { return rows[static_cast<size_t>(row)].image; }
  bool IsMarked(int row, int column) const override;
  std::string_view CellTip(int row, int column) const override;
  bool IsEditable(int column) const override;

  int vrowCount() const { return static_cast<int>(rows.size()); }
  NativeListView* Window() const { return static_cast<NativeListView*>(hwnd); }
  // The row of an index; null for -1, which means no row.
  Row* RowAt(int nItem);
  void CheckCell(int row, int col) const;
  Column& ColumnAt(int col);
  void AddColumn(const std::string& title, int width);
  int AddRow(Row row);
  void AddLateRows(int firstData, int count);
  void MakeCells(int row) const;
  void RemoveRows(int first, int count);
  void SetCell(int row, int col, const std::string& cell);
  // Of a cell that has or gets one.
  CellExtra& EnsureExtra(int row, int col);
  void Sort(int col, bool ascending);

  // What became of a text that the user has typed into a cell.
  enum class Typed { cTaken, cRefused, cGone };  // gone: a handler has destroyed the list
  // Asks the handlers and stores the text.
  Typed TakeTyped(int row, int column, const std::string& typed);

  // Setters of the properties.
  void ColCountChanged();
  void RowCountChanged();
  void SelectedIndexChanged();
  void LookChanged();

  std::vector<Column> columns;
  mutable std::vector<Row> rows;  // late cells are made by whoever reads them
  int colCount = 0;               // as set; follows the real number
  int rowCount = 0;
  int selectedIndex = -1;
  ListLook look;

 protected:
  ListView& TheList() const { return *static_cast<ListView*>(owner); }
  virtual std::string_view NativeClass() const { return "SysListView32"; }

  bool destroying = false;

 private:
  const CellExtra* ExtraOf(int row, int column) const;
};

}  // namespace mavro
