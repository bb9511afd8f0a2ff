#pragma once

#include <string>

#include "ListView.h"

namespace mavro {

// Cells that form a rectangle. No rows or no columns: no cells.
struct CellRange {
  int row = 0, col = 0, rowCount = 0, colCount = 0;
  bool IsEmpty() const { return rowCount <= 0 || colCount <= 0; }
  friend bool operator==(const CellRange&, const CellRange&) = default;
};

// A table that is used as a spreadsheet is: one cell is the current one, arrows, Tab, Home, End and
// the Page keys move it, Shift and the mouse select cells. Columns, rows and late rows are those of
// ListView; a column keeps the width that it was given or dragged to. If editLabels is true, typing
// replaces the current cell, F2 and a double click edit it, Delete empties the selected cells;
// Enter and Tab take the typed text and move on, Escape gives it up. Otherwise Enter and a double
// click fire onChoose. Tab leaves the grid after its last cell, Ctrl+Tab at once.
// With fullRowSelect whole rows are selected. onChangeSel tells of every other cell and selection.
class DataGrid : public ListView {
 public:
  class Impl;
  DataGrid();

  // The current cell's column, -1 if there is no current cell; its row is selectedIndex.
  int GetCurrentCol() const;
  // The selected cells; empty if there are none.
  CellRange GetSelection() const;
  // Selects cells, of which the first becomes the current one, and scrolls it into view. What is
  // outside the grid is left out; an empty range selects none.
  void SelectCells(const CellRange& cells);
  // The selected cells as text: cells separated by tabs, rows ended by line feeds. A cell that
  // holds one of these is in quotes.
  std::string SelectedText() const;
  // Copies the selected cells. They stay as they were if there are none.
  void Copy();
  // Puts the copied cells into the grid from the first selected cell on, as if they were typed:
  // handlers are asked, and only columns that may be edited are changed. A single copied cell fills
  // the whole selection. False if cells had no place or were refused; the others are taken.
  bool Paste();
  // Empties the selected cells as if by the user. False if some could not be emptied.
  bool ClearCells();
  // The width of a column in pixels, at least cLeastWidth. The column must exist.
  int GetColWidth(int col) const;
  void SetColWidth(int col, int width);

  static constexpr int cLeastWidth = 20;
  static constexpr int cMostRowHeight = 1000;

  // How many columns on the left stay in view when the others scroll. Columns that would leave no
  // room for others scroll all the same.
  WriteProperty<int> lockCol;
  // The height of all rows in pixels, at most cMostRowHeight; 0 for that of the font.
  WriteProperty<int> rowHeight;

  NotifyEvent onClick;  // click on a cell; value: the row
  // The user is about to edit a cell. The handler may change the text that is edited, and keeps the
  // cell from being edited with value 0.
  ItemEvent onStartEdit;

 private:
  Impl& TheImpl() const;
};

}  // namespace mavro
