#pragma once

#include <functional>
#include <memory>
#include <vector>

#include "Graphics.h"
#include "LayoutForm.h"
#include "NativeWindow.h"

namespace mavro {

// A transparent layer above the children of a window. It takes the mouse from them: mouse events
// over it reach the window itself, in its client coordinates. Covers the whole client area and
// stays on top of children made later.
class GlassLayer : public object {
 public:
  virtual void Fit() = 0;
  virtual void ShowMarks(const std::vector<LayoutForm::Mark>& marks) = 0;

  // Tells which areas are outlined. Asked whenever the layer is painted.
  std::function<std::vector<Rect>()> outlines;
};

// A transparent layer above one window, which it always covers. It paints grips and takes no input.
class GripLayer : public object {
 public:
  virtual void Show(bool on) = 0;
};

// Destroying the result removes the layer; it may outlive the window.
std::unique_ptr<GlassLayer> MakeGlassLayer(NativeWindow& window);
std::unique_ptr<GripLayer> MakeGripLayer(NativeWindow& window, Selector::Look look);

// How many pixels of the screen are one of a window's.
double PixelRatioOf(const NativeWindow& window);
// Paints pixels on the client area of a window that is painting, with the cost of the part that is
// to be painted anew, however large the window is. False if the window isn't painting.
bool PaintPixels(NativeWindow& window, const Bitmap& pixels);

}  // namespace mavro
