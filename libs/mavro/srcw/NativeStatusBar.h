#pragma once

#include <vector>

#include "NativeWindow.h"
#include "StatusBar.h"

namespace mavro {

// A row of text panes.
class NativeStatusBar : public NativeWindow {
 public:
  using NativeWindow::NativeWindow;
  virtual void SetPanes(const std::vector<StatusBar::Pane>& panes) = 0;
  virtual void SetPaneText(int index, const std::string& text) = 0;
  virtual void SetPaneBar(int index, int percent) = 0;
  // The least height that doesn't cut the text.
  virtual int TextHeight() const = 0;
};

}  // namespace mavro
