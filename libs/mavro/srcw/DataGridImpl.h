#pragma once

#include "DataGrid.h"
#include "ListViewImpl.h"
#include "NativeGrid.h"

namespace mavro {

// A list view whose window has a current cell.
class DataGrid::Impl : public ListView::Impl {
 public:
  void Create() override;
  Param OnNotify(NotifyHeader* header) override;

  NativeGrid* Grid() const { return static_cast<NativeGrid*>(hwnd); }
  CellRange Selection() const;
  void SelectCells(const CellRange& cells);
  std::string SelectedText() const;
  bool Paste(const std::string& text);
  bool ClearCells();
  int ColWidth(int col);
  void SetColWidth(int col, int width);
  void FrozenChanged();  // setter of lockCol and rowHeight

  int lockCol = 0;
  int rowHeight = 0;
  // Selected while there is no window; means nothing if its first row isn't the selected one.
  CellRange wanted{-1, 0, 0, 0};

 protected:
  std::string_view NativeClass() const override { return "mavroGrid"; }

 private:
  DataGrid& TheGrid() const { return *static_cast<DataGrid*>(owner); }
  void OnStartEdit(ListViewHeader& told);
  void OnClicked(int row);
  // As if the user had typed a text into a cell; the same text changes nothing.
  Typed Type(int row, int col, const std::string& text);
};

}  // namespace mavro
