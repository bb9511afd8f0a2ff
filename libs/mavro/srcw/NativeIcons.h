#pragma once

#include <string>

#include "NativeWindow.h"

namespace mavro {

// Codes in the high word of an icon view's WM_COMMAND.
enum IconCode { IVN_SELCHANGE = 1, IVN_CHOSEN = 2 };

// Pictures with texts, one of them selected.
class NativeIconView : public NativeWindow {
 public:
  using NativeWindow::NativeWindow;
  virtual void SetStrip(int stripId) = 0;
  virtual void AddItem(const std::string& item, int image) = 0;
  virtual void RemoveItem(int index) = 0;
  virtual void ClearItems() = 0;
  virtual void SelectItem(int index) = 0;  // -1 for none
  virtual int SelectedItem() const = 0;
};

}  // namespace mavro
