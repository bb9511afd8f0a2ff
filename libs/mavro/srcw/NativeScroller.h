#pragma once

#include "NativeWindow.h"
#include "Scroller.h"

namespace mavro {

// A container with scroll bars. An action of the user on one arrives here as WM_HSCROLL or
// WM_VSCROLL with a ScrollCode; the bar moves only when its position is set.
class NativeScroller : public NativeWindow {
 public:
  using NativeWindow::NativeWindow;
  virtual void SetScroll(Orientation direction, const ScrollInfo& info) = 0;
  virtual void SetScrollPosition(Orientation direction, int position) = 0;
  virtual ScrollInfo ReadScroll(Orientation direction) const = 0;
};

}  // namespace mavro
