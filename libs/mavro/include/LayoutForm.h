#pragma once

#include <string>
#include <vector>

#include "Core.h"
#include "Selector.h"

namespace mavro {

// A canvas to lay out controls on: a grid of dots every 8 pixels, and a transparent layer above the
// children that takes all mouse input. This input fires the canvas' own events, in its client
// coordinates; the children never get it, nor the focus by Tab, nor mnemonics.
class LayoutForm : public Container {
 public:
  class Impl;
  LayoutForm();
  ~LayoutForm() override;

  static constexpr int cGrid = 8;

  // A sign above the children: a line or an area in the colour of selections. One with a text is a
  // label of this text.
  struct Mark {
    Rect at;  // client coordinates
    std::string text;
    friend bool operator==(const Mark&, const Mark&) = default;
  };
  // Replaces the signs.
  void ShowMarks(const std::vector<Mark>& marks);
  const std::vector<Mark>& Marks() const;

  // Where the window of a control inside this canvas, at any depth, lies in the client coordinates
  // of the canvas. Borders and frames around it count. Without a window: its bounds.
  Rect RectOf(const Control& control) const;

  // The frame on the control that was selected first.
  Selector selector{*this};
};

// The last canvas that was made and still has its window, or null.
extern LayoutForm* theLayoutForm;

}  // namespace mavro
