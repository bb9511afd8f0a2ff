#pragma once

#include "DataGrid.h"
#include "NativeLists.h"

namespace mavro {

// Codes of a grid's WM_NOTIFY that a list view doesn't have: the user's wishes for the selected
// cells.
enum GridCode { GVN_COPY = -201, GVN_CUT = -202, GVN_PASTE = -203, GVN_CLEAR = -204 };

// A table with a current cell and selected cells. What it has from list views means the current
// cell's row where that means the selected row.
class NativeGrid : public NativeListView {
 public:
  using NativeListView::NativeListView;
  // As the grid's properties of these names.
  virtual void SetFrozen(int lockCol, int rowHeight) = 0;
  virtual int CurrentColumn() const = 0;  // -1 for none
  virtual CellRange Selection() const = 0;
  // Cells of the source; an empty range selects none.
  virtual void SelectRange(const CellRange& cells) = 0;
  virtual int ColumnWidth(int column) const = 0;
  virtual void SetColumnWidth(int column, int width) = 0;
};

}  // namespace mavro
