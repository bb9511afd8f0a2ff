#pragma once

#include "Core.h"
#include "Graphics.h"
#include "Picture.h"

namespace mavro {

// A control that paints itself from a back buffer. onDraw fills the buffer: when the window has
// been made or sized, when the palette changes, and by Redraw. onPaint gets a surface that shows
// the buffer already and may draw over it; what it draws there goes with the next painting.
class CustomCtrl : public Control {
 public:
  class Impl;
  CustomCtrl();

  // Fires onDraw with `notify` as value, then has the window painted. Nothing without a window.
  void Redraw(int notify = 0);
  // The surface of the back buffer, of the client size. Closed without a window.
  Graphics& BackBuffer();

  PaintEvent onPaint;
  NotifyEvent onDraw;
  // The control takes part in Tab order and gets all keys. Those that no handler marks as handled
  // still do what they do in dialogs.
  bool wantsKeys = false;

 protected:
  explicit CustomCtrl(SysImpl* newImpl);
};

}  // namespace mavro
