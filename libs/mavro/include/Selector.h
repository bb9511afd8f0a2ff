#pragma once

#include <memory>

#include "Core.h"

namespace mavro {

class LayoutForm;

// The frame on one selected control of a LayoutForm: its rectangle on the canvas, and a layer above
// it that shows eight grips and takes no input. The layer follows the control's size.
class Selector : public object {
 public:
  class Impl;
  explicit Selector(LayoutForm& itsSurface);
  ~Selector() override;
  Selector(const Selector&) = delete;
  Selector& operator=(const Selector&) = delete;

  // The size of a grip. The grips of the primary frame are red, those of others black, or white on
  // a dark ground.
  static constexpr int cGripSize = 5;
  enum class Look { cPrimary, cOther };

  // Puts the frame on a control inside the surface. Without a window of the control there are no
  // grips.
  void Attach(Control* wanted, Look look);
  // Takes the frame away. The control may be gone.
  void Clear();
  // Reads the rectangle from the control again.
  void Follow();
  // Moves the control to the rectangle.
  void Apply();
  // Shows or hides the grips without a change of the selection.
  void ShowGrips(bool on);
  // True if the point of the surface is in the rectangle.
  bool Contains(int x, int y) const;
  Rect Bounds() const { return {left, top, width, height}; }

  bool selected = false;
  int offsetX = 0, offsetY = 0;  // from the control's own place to the surface's coordinates
  int left = 0, top = 0, width = 0, height = 0;  // in client coordinates of the surface
  Control* ctrl = nullptr;                       // not owned
  LayoutForm* const surface;

 private:
  std::unique_ptr<Impl> impl;
};

}  // namespace mavro
