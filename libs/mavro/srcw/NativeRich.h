#pragma once

#include <string>

#include "NativeWindow.h"

namespace mavro {

// Codes of a rich text view's WM_NOTIFY.
enum RichCode { EN_LINK = 0x70B };

struct RichHeader : NotifyHeader {
  std::string link;
};

// Shows rich text to read.
class NativeRichView : public NativeWindow {
 public:
  using NativeWindow::NativeWindow;
  virtual void SelectAll() = 0;
  virtual std::string SelectedText() const = 0;
  virtual std::string PlainText() const = 0;
};

}  // namespace mavro
