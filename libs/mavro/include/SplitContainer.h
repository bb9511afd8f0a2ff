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

// Two panes with a bar between them. `pan1` keeps its size when the container's changes. A hidden
// pane gives its room and the bar's to the other one; the position is kept for when it comes back.
class SplitContainer : public Control {
 public:
  class Impl;
  SplitContainer();
  ~SplitContainer() override;

  // The bar's position: pixels from the left or top edge. Before the window exists it is the wanted
  // one. Assigning moves the bar, kept `minSize1` and `minSize2` from the edges once it has been
  // placed. Until somebody assigns one or drags the bar, both panes get the same room.
  WriteProperty<int> position;
  // The same, by functions.
  int Position() const { return position; }
  void SetPosition(int newPosition);
  // Places panes and bar.
  void Layout() override;

  int orientation = 1;      // 1: side by side with an upright bar; else top and bottom
  Control* pan1 = nullptr;  // both required, not owned
  Control* pan2 = nullptr;
  int minSize1 = 100;
  int minSize2 = 100;
};

}  // namespace mavro
