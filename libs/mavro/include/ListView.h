#pragma once

#include <functional>
#include <string>
#include <vector>

#include "Core.h"

namespace mavro {

class ListView;

// The columns of a list view, from left to right. The last one takes the remaining width.
class ListColumns {
 public:
  explicit ListColumns(ListView& list) : owner(list) {}
  ListColumns(const ListColumns&) = delete;
  ListColumns& operator=(const ListColumns&) = delete;

  // Appends a column on the right. Columns are identified by their index, which must exist.
  void Add(const std::string& title, int width = cWidth);
  int GetCount() const;
  const std::string& Title(int col) const;
  void SetTitle(int col, const std::string& title);
  // Sets if the user may edit the cells of this column, provided that the list's editLabels allows
  // it; true at first.
  void SetEditable(int col, bool on);

  static constexpr int cWidth = 100;  // the default width

 private:
  ListView& owner;
};

// A table of rows with a header. Rows are kept here before the window exists and shared with it
// afterwards. The cost of adding a row does not depend on their number.
class ListView : public Control {
 public:
  class Impl;
  ListView();

  // The same as `columns.Add`.
  void AddColumn(const std::string& title, int width) { columns.Add(title, width); }
  // Appends a row and returns its index.
  int AddRow(const std::string& firstCell);
  // Appends a row with its cells, at most as many as there are columns.
  int AddCells(std::vector<std::string> cells);
  // Appends rows whose cells are made when they are first shown or read, by `lateCells`: for lists
  // of so many rows that most are never seen. Their item data are numbers from `firstData` on.
  void AddLateRows(int firstData, int count);
  std::function<std::vector<std::string>(int data)> lateCells;
  void RemoveRow(int row);
  // Row and column must exist. Row -1 means none, as in selectedIndex: it has no cells and no data,
  // and setting them has no effect.
  void SetCell(int row, int col, const std::string& cell);
  std::string GetCell(int row, int col) const;
  void SetItemData(int row, int data);
  int GetItemData(int row) const;
  // Picture of a row's first cell, an index in `imageList`; -1 for none.
  void SetItemImage(int row, int image);
  int GetItemImage(int row) const;
  // Shows a cell in a colour and weight that catch the eye, as for a value that has just changed.
  void MarkCell(int row, int col, bool on);
  bool IsCellMarked(int row, int col) const;
  // The text of a cell's tip, for a cell that holds only a part of it; empty: the cell's own text.
  // A tip shows when the mouse rests on a cell that doesn't show its text whole.
  void SetCellTip(int row, int col, const std::string& tip);
  void Clear();  // all rows
  // Selects a row and scrolls it into view; -1 selects none.
  void Select(int row);
  // Lets the user edit a cell, as F2 does.
  void EditCell(int row, int col);
  // Sorts the rows by a column and marks the column's title. Numbers come before other texts, and
  // equal rows keep their order. The selected row stays selected.
  void SortBy(int col, bool ascending = true);

  ListColumns columns;
  // A larger number adds columns or rows without title or cells, a smaller one removes them from
  // the end.
  WriteProperty<int> colCount, rowCount;
  WriteProperty<int> selectedIndex;  // -1 for none
  WriteProperty<int> imageList;      // strip of the rows' pictures, by resource id; 0 for none
  WriteProperty<bool> fullRowSelect;
  WriteProperty<bool> editLabels;  // F2, or a click on a row that is selected, edits a cell
  WriteProperty<bool> gridLines;
  WriteProperty<bool> headerVisible;
  WriteProperty<bool> showSelection;  // also without the focus

  NotifyEvent onChoose;       // double click or Enter on a row; value: the row
  NotifyEvent onClickRow;     // click on a row; value: the row
  NotifyEvent onChangeSel;    // by the user only, not by assignment; value: the selected row
  NotifyEvent onColumnClick;  // click on a column's title; value: the column
  // The user has edited a cell. The handler may change the text, and refuses it with value 0.
  ItemEvent onPostEdit;
  NotifyEvent onChangeText;  // an edited text has been accepted; value: the row

 protected:
  // Takes ownership of `newImpl`.
  explicit ListView(Impl* newImpl);

 private:
  Impl& TheImpl() const;
};

}  // namespace mavro
