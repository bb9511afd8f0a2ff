#include "PaintBox.h"

#include <utility>

#include "PaintBoxImpl.h"

namespace mavro {

void PaintBox::Impl::PrepareStyle() {
  PaintBox& box = Box();
  if (box.onKeyDown.HasHandlers() || box.onKeyUp.HasHandlers() || box.onChar.HasHandlers())
    box.wantsKeys = true;
  CustomCtrl::Impl::PrepareStyle();
}

bool PaintBox::Impl::IsInside(Param place) const {
  const int x = PointX(place), y = PointY(place);
  return x >= 0 && y >= 0 && x < hwnd->ClientWidth() && y < hwnd->ClientHeight();
}

PaintBox& PaintBox::Impl::Box() const {
  return *static_cast<PaintBox*>(owner);
}

// Handlers of the message are first; each may destroy the control. The last messages come when the
// owner is a box no more.
Param PaintBox::Impl::WndProc(unsigned message, Param wParam, Param lParam) {
  const NativeWindow* window = hwnd;
  if (message == WM_LBUTTONDOWN) {
    isPressed = true;
    if (Box().wantsKeys) hwnd->Focus();
    if (!IsWindow(window)) return 0;
  }
  const Param result = CustomCtrl::Impl::WndProc(message, wParam, lParam);
  if (message != WM_LBUTTONUP || !IsWindow(window)) return result;
  if (std::exchange(isPressed, false) && IsInside(lParam)) FireNotify(Box().onClick);
  return result;
}

PaintBox::PaintBox() : PaintBox(new Impl) {}

PaintBox::PaintBox(SysImpl* newImpl) : CustomCtrl(newImpl) {}

}  // namespace mavro
