#pragma once

#include <string>
#include <string_view>

#include "NativeWindow.h"

namespace mavro {

// What WM_COMMAND of a list or combo box says in its high word.
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

// A closed list, with a text of its own unless one may only choose.
class NativeComboBox : public NativeItems {
 public:
  using NativeItems::NativeItems;
  virtual void SetChooseOnly(bool on) = 0;
};

// Where a list view takes its rows from: they are not copied.
class ListSource {
 public:
  virtual ~ListSource() = default;
  virtual int RowCount() const = 0;
  virtual int ColumnCount() const = 0;
  virtual std::string_view ColumnTitle(int column) const = 0;
  virtual std::string_view Cell(int row, int column) const = 0;
};

// How a list view shows its rows.
struct ListLook {
  bool fullRowSelect = true;
  bool gridLines = true;
  bool headerVisible = true;
  bool showSelection = false;  // without the focus too
};

// What WM_NOTIFY of a list view tells.
enum ListViewCode { LVN_SELCHANGED = -101, LVN_CLICKED = -102, LVN_CHOSEN = -103 };

struct ListViewHeader : NotifyHeader {
  int row = -1;
};

// A table of rows with a header.
class NativeListView : public NativeWindow {
 public:
  using NativeWindow::NativeWindow;
  // `source` is not owned and must outlive the window.
  virtual void SetSource(const ListSource* source) = 0;
  virtual void SetLook(const ListLook& look) = 0;
  // The source has one more column; the last one takes the room that is left.
  virtual void ColumnAdded(int width) = 0;
  // The source has more rows than before. They may show a moment later, together with more.
  virtual void RowsAdded() = 0;
  virtual void RowsCleared() = 0;
  virtual void RowChanged(int row) = 0;
  // Selects a row, -1 for none, and brings it into view.
  virtual void SelectRow(int row) = 0;
  virtual int SelectedRow() const = 0;
};

}  // namespace mavro
