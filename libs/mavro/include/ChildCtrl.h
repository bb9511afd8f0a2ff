#pragma once

#include "Core.h"
#include "Graphics.h"

namespace mavro {

// A bare child window that a function paints.
class ChildCtrl : public Control {
 public:
  class Impl;
  using Painter = void (*)(ChildCtrl& control, Graphics& graphics);

  // Without a painter the window shows its background only.
  explicit ChildCtrl(Painter itsPainter = nullptr);

  Painter painter;
  bool flag = false;  // the owner's own
};

// Painters of placeholders for controls that would misbehave while a form is designed. They paint
// the text on the background of an edit; the same with a down arrow button; the text in the middle
// beside two arrow buttons.
void PaintPlaceholder(ChildCtrl& control, Graphics& graphics);
void PaintComboPlaceholder(ChildCtrl& control, Graphics& graphics);
void PaintSpinPlaceholder(ChildCtrl& control, Graphics& graphics);

}  // namespace mavro
