#pragma once

#include <string>
#include <vector>

#include "Core.h"

namespace mavro {

// A table of rows with a header. Rows are kept here before the window exists and shared with it
// after; adding a row costs the same however many there are.
class ListView : public Control {
 public:
  class Impl;
  ListView();

  // Appends a column on the right.
  void AddColumn(const std::string& title, int width);
  // Appends a row and answers its index.
  int AddRow(const std::string& firstCell);
  // Row and column must exist. Row -1 stands for none, as selectedIndex does: it has no cells and
  // no data, and setting them does nothing.
  void SetCell(int row, int col, const std::string& cell);
  std::string GetCell(int row, int col) const;
  void SetItemData(int row, int data);
  int GetItemData(int row) const;
  void Clear();  // all rows
  // Selects a row and brings it into view; -1 selects none.
  void Select(int row);

  int colCount() const;
  int rowCount() const;

  WriteProperty<int> selectedIndex;  // -1 for none
  WriteProperty<bool> fullRowSelect;
  WriteProperty<bool> gridLines;
  WriteProperty<bool> headerVisible;
  WriteProperty<bool> showSelection;

  NotifyEvent onChoose;     // double click or Enter on a row; value: the row
  NotifyEvent onClickRow;   // click on a row; value: the row
  NotifyEvent onChangeSel;  // by the user only, not by assignment; value: the selected row

 private:
  Impl& TheImpl() const;
};

}  // namespace mavro
