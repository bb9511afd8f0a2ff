#pragma once

#include <memory>

#include "NativeWindow.h"

namespace mavro {

// A transparent layer above the children of a window. It takes the mouse from them: mouse events
// over it reach the window itself, in its client coordinates. Covers the whole client area and
// stays on top of children made later.
class GlassLayer : public object {
 public:
  virtual void Fit() = 0;
};

// Destroying the result removes the layer; it may outlive the window.
std::unique_ptr<GlassLayer> MakeGlassLayer(NativeWindow& window);

}  // namespace mavro
