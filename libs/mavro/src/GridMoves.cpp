#include "GridMoves.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>

namespace mavro {

namespace {

// One step in reading order; stays at the ends.
GridCell Step(GridCell from, int step, GridSize size) {
  GridCell to = from;
  to.col += step;
  if (to.col >= 0 && to.col < size.cols) return to;
  to.row += step;
  if (to.row < 0 || to.row >= size.rows) return from;
  to.col = step > 0 ? 0 : size.cols - 1;
  return to;
}

// The part of [first, first + count) that lies in [0, size); written so that no sum overflows.
void Cut(int& first, int& count, int size) {
  const int64_t end = std::min<int64_t>(static_cast<int64_t>(first) + count, size);
  first = std::max(first, 0);
  count = static_cast<int>(std::max<int64_t>(end - first, 0));
}

}  // namespace

GridCell Moved(GridCell from, GridMove move, GridSize size, int page) {
  if (size.rows <= 0 || size.cols <= 0) return {};
  const int lastRow = size.rows - 1;
  const int lastCol = size.cols - 1;
  const int col = std::clamp(from.col, 0, lastCol);
  const bool isLast = move == GridMove::cBottom || move == GridMove::cLast;
  if (!from.Exists() && !isLast) return {0, col};
  const int row = std::min(from.row, lastRow);
  const int rows = std::max(page, 1);
  switch (move) {
    case GridMove::cLeft:
      return {row, std::max(col - 1, 0)};
    case GridMove::cRight:
      return {row, std::min(col + 1, lastCol)};
    case GridMove::cUp:
      return {std::max(row - 1, 0), col};
    case GridMove::cDown:
      return {std::min(row + 1, lastRow), col};
    case GridMove::cRowStart:
      return {row, 0};
    case GridMove::cRowEnd:
      return {row, lastCol};
    case GridMove::cTop:
      return {0, col};
    case GridMove::cBottom:
      return {lastRow, col};
    case GridMove::cFirst:
      return {0, 0};
    case GridMove::cLast:
      return {lastRow, lastCol};
    case GridMove::cPageUp:
      return {row > rows ? row - rows : 0, col};
    case GridMove::cPageDown:
      return {lastRow - row > rows ? row + rows : lastRow, col};
    case GridMove::cNext:
      return Step({row, col}, 1, size);
    case GridMove::cPrevious:
      return Step({row, col}, -1, size);
  }
  return from;
}

CellRange Between(GridCell one, GridCell other) {
  if (!one.Exists() || !other.Exists()) return {};
  return {std::min(one.row, other.row), std::min(one.col, other.col),
          std::abs(one.row - other.row) + 1, std::abs(one.col - other.col) + 1};
}

bool Contains(const CellRange& range, GridCell cell) {
  return cell.row >= range.row && cell.row - range.row < range.rowCount && cell.col >= range.col &&
         cell.col - range.col < range.colCount;
}

CellRange Inside(const CellRange& range, GridSize size) {
  CellRange cut = range;
  Cut(cut.row, cut.rowCount, size.rows);
  Cut(cut.col, cut.colCount, size.cols);
  return cut.IsEmpty() ? CellRange() : cut;
}

}  // namespace mavro
