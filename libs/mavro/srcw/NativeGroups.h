#pragma once

#include <string>

#include "NativeWindow.h"

namespace mavro {

// A titled frame with a button for each item: radio buttons or check boxes, by its style. A click
// by the user sends WM_COMMAND with BN_CLICKED.
class NativeButtonGroup : public NativeWindow {
 public:
  using NativeWindow::NativeWindow;
  virtual void InsertItem(int index, const std::string& item) = 0;
  virtual void RemoveItem(int index) = 0;
  virtual void ClearItems() = 0;
  // The index of a radio group, -1 for none; the flags of a check group.
  virtual void SelectItems(int selected) = 0;
  virtual int SelectedItems() const = 0;
};

}  // namespace mavro
