#pragma once

#include "DataGrid.h"

namespace mavro {

// A place in a grid; row -1 for none.
struct GridCell {
  int row = -1, col = 0;
  bool Exists() const { return row >= 0; }
  friend bool operator==(const GridCell&, const GridCell&) = default;
};

struct GridSize {
  int rows = 0, cols = 0;
  bool Holds(GridCell cell) const {
    return cell.row >= 0 && cell.row < rows && cell.col >= 0 && cell.col < cols;
  }
};

// The ways of the current cell.
enum class GridMove {
  cLeft,
  cRight,
  cUp,
  cDown,
  cRowStart,
  cRowEnd,
  cTop,
  cBottom,
  cFirst,
  cLast,
  cPageUp,
  cPageDown,
  cNext,     // to the right, then to the next row
  cPrevious  // to the left, then to the row before
};

// Where a move leads to; `page` is the number of rows of a page. A move stops at the edges. From no
// cell it leads to the first row, unless it is one to the last row; in a grid without cells to
// none.
GridCell Moved(GridCell from, GridMove move, GridSize size, int page);
// The cells from one to another, in any direction; none if one of them is none.
CellRange Between(GridCell one, GridCell other);
bool Contains(const CellRange& range, GridCell cell);
// The part of a range that a grid of this size has.
CellRange Inside(const CellRange& range, GridSize size);

}  // namespace mavro
