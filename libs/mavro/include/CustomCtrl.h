#pragma once

#include "Core.h"
#include "Graphics.h"
#include "Picture.h"

namespace mavro {

// A control that paints itself from a back buffer. onDraw fills the buffer: after the window has
// been made or resized, when the palette changes, and by Redraw. onPaint gets a surface that
// already shows the buffer and may draw over it; these additions are lost at the next painting.
class CustomCtrl : public Control {
 public:
  class Impl;
  CustomCtrl();

  // Fires onDraw with `notify` as value, then has the window painted. Does nothing without a
  // window.
  void Redraw(int notify = 0);
  // The surface of the back buffer, in the size of the client area. It is closed if there is no
  // window.
  Graphics& BackBuffer();

  PaintEvent onPaint;
  NotifyEvent onDraw;
  // The control takes part in the Tab order and gets all keys. A key that no handler marks as
  // handled still has its usual effect in dialogs.
  bool wantsKeys = false;

 protected:
  explicit CustomCtrl(SysImpl* newImpl);
};

}  // namespace mavro
