#pragma once

#include "Core.h"

namespace mavro {

// A canvas to lay out controls on: a grid of dots every 8 pixels, and a transparent layer above the
// children that takes all mouse input. This input fires the canvas' own events, in its client
// coordinates; the children never get it.
class LayoutForm : public Container {
 public:
  class Impl;
  LayoutForm();
  ~LayoutForm() override;

  static constexpr int cGrid = 8;
};

// The last canvas that was made and still has its window, or null.
extern LayoutForm* theLayoutForm;

}  // namespace mavro
