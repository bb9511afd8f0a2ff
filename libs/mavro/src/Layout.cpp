#include "Assert.h"
#include "Core.h"
#include "SysImpl.h"

namespace mavro {

void Container::Layout() {
  Rect free = impl->ClientRect();
  Control* fill = nullptr;
  for (Control* ctrl : children) {
    MAVRO_ASSERT(ctrl);
    if (!ctrl->visible) continue;
    const int w = ctrl->width;
    const int h = ctrl->height;
    switch (ctrl->dock) {
      case Dock::cNone:
        break;
      case Dock::cTop:
        ctrl->SetBounds(free.left, free.top, free.width, h);
        free.top += h;
        free.height -= h;
        break;
      case Dock::cBootom:
        ctrl->SetBounds(free.left, free.top + free.height - h, free.width, h);
        free.height -= h;
        break;
      case Dock::cLeft:
        ctrl->SetBounds(free.left, free.top, w, free.height);
        free.left += w;
        free.width -= w;
        break;
      case Dock::cRight:
        ctrl->SetBounds(free.left + free.width - w, free.top, w, free.height);
        free.width -= w;
        break;
      case Dock::cFill:
        fill = ctrl;
        break;
    }
  }
  if (fill) fill->SetBounds(free.left, free.top, free.width, free.height);
  Invalidate();
}

void RunPendingLayout(Control* control) {
  if (!control->layoutPending) return;
  control->Layout();
  for (Control* child : control->children)
    if (child->layoutPending) RunPendingLayout(child);
  control->layoutPending = false;
}

void SetStateTree(Control* control, int state) {
  if (state != cMarkLayout) control->state = state;
  if (state == cMarkLayout || state == cAboutToShow) control->layoutPending = true;
  for (Control* child : control->children) SetStateTree(child, state);
}

}  // namespace mavro
