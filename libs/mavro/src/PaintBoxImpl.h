#pragma once

#include "CustomImpl.h"
#include "PaintBox.h"

namespace mavro {

// Adds the focus by a press, and clicks.
class PaintBox::Impl : public CustomCtrl::Impl {
 public:
  void PrepareStyle() override;
  Param WndProc(unsigned message, Param wParam, Param lParam) override;

 protected:
  bool isPressed = false;  // the left button went down in the control, and a click may follow

 private:
  PaintBox& Box() const;
  bool IsInside(Param place) const;
};

}  // namespace mavro
