#pragma once

#include <memory>

#include "NativeWindow.h"

namespace mavro {

// A transparent layer above the children of a window. It takes the mouse from them: what is done
// over it reaches the window itself, in its client coordinates. Covers the whole client area and
// stays on top of children made later.
class GlassLayer : public object {
 public:
  virtual void Fit() = 0;
};

// Destroying the answer takes the layer away; it may outlive the window.
std::unique_ptr<GlassLayer> MakeGlassLayer(NativeWindow& window);

}  // namespace mavro
