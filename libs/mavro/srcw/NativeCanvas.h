#pragma once

#include <string>

#include "Bitmap.h"
#include "NativeWindow.h"

namespace mavro {

// The data for screen readers of a control that shows a value on a scale.
struct AccessibleValue {
  double value = 0;
  double min = 0;
  double max = 0;
  double step = 0;
};

// A bare window whose control paints it: WM_PAINT comes for each painting. Takes part in Tab order
// if its style says so, and wants the keys that the control asks for by WM_GETDLGCODE.
class NativeCanvas : public NativeWindow {
 public:
  using NativeWindow::NativeWindow;
  // While WM_PAINT is handled: shows `bitmap` in `target`, in client coordinates.
  virtual void PaintBitmap(const Bitmap& bitmap, const Rect& target) = 0;
  // Device pixels in one logical pixel of the screen that the window is on.
  virtual double PixelRatio() const = 0;
  // Makes the window a slider of this value for screen readers.
  virtual void SetAccessibleValue(const AccessibleValue& value) = 0;
};

// Message answer of WM_GETDLGCODE: all keys are wanted.
constexpr Param DLGC_WANTALLKEYS = 4;

}  // namespace mavro
