#pragma once

#include "Core.h"

namespace mavro {

class SplitContainer;

// The bar between two panes; dragged by the mouse.
class SplitBar : public Control {
 public:
  class Impl;
  static constexpr int cThickness = 4;
  SplitBar();
};

// Two panes with a bar between them. `pan1` keeps its size when the container's size changes. If
// one pane is hidden, the other one also takes its area and that of the bar; the position is kept
// until the pane is shown again.
class SplitContainer : public Control {
 public:
  class Impl;
  SplitContainer();
  ~SplitContainer() override;

  // The bar's position: pixels from the left or top edge. Before the window exists, it is the
  // requested position. Assigning moves the bar; once the bar has been placed, it stays `minSize1`
  // and `minSize2` away from the edges. Until a position is assigned or the bar is dragged, both
  // panes have the same size.
  WriteProperty<int> position;
  // The same, by functions.
  int Position() const { return position; }
  void SetPosition(int newPosition);
  // Places the panes and the bar.
  void Layout() override;

  int orientation = 1;      // 1: side by side with an upright bar; else top and bottom
  Control* pan1 = nullptr;  // both required, not owned
  Control* pan2 = nullptr;
  int minSize1 = 100;
  int minSize2 = 100;
};

}  // namespace mavro
