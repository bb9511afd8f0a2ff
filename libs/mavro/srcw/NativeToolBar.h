#pragma once

#include <string>
#include <vector>

#include "NativeWindow.h"
#include "ToolRowPlan.h"

namespace mavro {

// The look of a row of a tool bar.
struct ToolRowLook {
  ToolRowWish::Kind kind = ToolRowWish::cButton;
  int image = -1;
  std::string label;  // tool tip, and text in the menu of the rows without room
  bool enabled = true;
  friend bool operator==(const ToolRowLook&, const ToolRowLook&) = default;
};

// A row of buttons. A click sends WM_COMMAND to the parent with the row route, the row's index and
// this window. The buttons never take the focus. It doesn't handle the controls among the rows.
class NativeToolBar : public NativeWindow {
 public:
  using NativeWindow::NativeWindow;
  virtual void SetStrip(int stripId) = 0;
  virtual void SetRows(const std::vector<ToolRowLook>& rows) = 0;
  virtual void SetRow(int row, const ToolRowLook& look) = 0;
  virtual void Place(const ToolRowPlan& plan) = 0;
};

}  // namespace mavro
