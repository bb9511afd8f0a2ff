#pragma once

#include <string>
#include <string_view>

#include "NativeWindow.h"

namespace mavro {

// Codes in the high word of a list's or combo box's WM_COMMAND.
enum ListCode {
  LBN_SELCHANGE = 1,  // the user has selected another item
  CBN_EDITCHANGE = 5  // the user has changed the text of a combo box
};

// A list of texts, one of them selected.
class NativeItems : public NativeWindow {
 public:
  using NativeWindow::NativeWindow;
  virtual void InsertItem(int index, const std::string& item) = 0;
  virtual void RemoveItem(int index) = 0;
  virtual void ClearItems() = 0;
  virtual void SelectItem(int index) = 0;  // -1 for none
  virtual int SelectedItem() const = 0;
};

// A drop-down list, with an editable text unless the user may only choose.
class NativeComboBox : public NativeItems {
 public:
  using NativeItems::NativeItems;
  virtual void SetChooseOnly(bool on) = 0;
};

// The source of a list view's rows: they are not copied.
class ListSource {
 public:
  virtual ~ListSource() = default;
  virtual int RowCount() const = 0;
  virtual int ColumnCount() const = 0;
  virtual std::string_view ColumnTitle(int column) const = 0;
  virtual std::string_view Cell(int row, int column) const = 0;
  virtual int RowImage(int row) const = 0;  // -1 for none
  virtual bool IsMarked(int row, int column) const = 0;
  // The whole text of a cell; empty if the cell holds it.
  virtual std::string_view CellTip(int row, int column) const = 0;
  virtual bool IsEditable(int column) const = 0;
};

// The look of a list view's rows.
struct ListLook {
  bool fullRowSelect = true;
  bool gridLines = true;
  bool headerVisible = true;
  bool showSelection = false;  // without the focus too
  bool editLabels = false;
  int imageList = 0;
};

// Codes of a list view's WM_NOTIFY.
enum ListViewCode {
  LVN_SELCHANGED = -101,
  LVN_CLICKED = -102,
  LVN_CHOSEN = -103,
  LVN_BEGINLABELEDIT = -105,  // sent by grids only
  LVN_ENDLABELEDIT = -106,    // the text has not been stored
  LVN_COLUMNCLICK = -108
};

struct ListViewHeader : NotifyHeader {
  int row = -1;
  int column = -1;
  std::string text;   // the text that the user has typed, or is going to edit
  bool taken = true;  // the answer: false if a handler refuses the text or the edit
};

// A table of rows with a header.
class NativeListView : public NativeWindow {
 public:
  using NativeWindow::NativeWindow;
  // `source` is not owned and must outlive the window.
  virtual void SetSource(const ListSource* source) = 0;
  virtual void SetLook(const ListLook& look) = 0;
  // Called when the source has one more column; the last column takes the remaining width.
  virtual void ColumnAdded(int width) = 0;
  // Called when the source has more rows than before. They may show a moment later, together with
  // more.
  virtual void RowsAdded() = 0;
  virtual void ColumnChanged(int column) = 0;
  // Called before and after the removal of the last column.
  virtual void RemovingColumn() = 0;
  virtual void ColumnRemoved() = 0;
  // Called before and after the removal of rows; afterwards `selected` is selected.
  virtual void RemovingRows(int first, int count) = 0;
  virtual void RowsRemoved(int selected) = 0;
  // Called when the rows have another order, by a column.
  virtual void RowsSorted(int column, bool ascending, int selected) = 0;
  virtual void RowsCleared() = 0;
  virtual void RowChanged(int row) = 0;
  // Selects a row, -1 for none, and brings it into view.
  virtual void SelectRow(int row) = 0;
  virtual int SelectedRow() const = 0;
  virtual void EditCell(int row, int column) = 0;
  // Takes the text that is being typed, if there is one.
  virtual void EndEdit() = 0;
  // The same before a dialog takes what it shows. False if the text was refused and stays in its
  // editor; nobody is asked again about a text that hasn't changed since.
  virtual bool LeaveForGood() = 0;
  // Enables clicks on the column titles.
  virtual void SetHeaderClickable(bool on) = 0;
};

}  // namespace mavro
