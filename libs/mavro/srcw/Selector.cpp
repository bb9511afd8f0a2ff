#include "Selector.h"

#include "LayoutForm.h"
#include "NativeGlass.h"
#include "SysImpl.h"

namespace mavro {

class Selector::Impl {
 public:
  std::unique_ptr<GripLayer> grips;
};

Selector::Selector(LayoutForm& itsSurface) : surface(&itsSurface), impl(std::make_unique<Impl>()) {}

Selector::~Selector() = default;

void Selector::Attach(Control* wanted, Look look) {
  Clear();
  ctrl = wanted;
  selected = true;
  if (ctrl->impl->hwnd) impl->grips = MakeGripLayer(*ctrl->impl->hwnd, look);
  Follow();
}

void Selector::Clear() {
  impl->grips.reset();
  ctrl = nullptr;
  selected = false;
  offsetX = offsetY = left = top = width = height = 0;
}

void Selector::Follow() {
  if (!ctrl) return;
  const Rect place = surface->RectOf(*ctrl);
  const Rect own = ctrl->Bounds();
  offsetX = place.left - own.left;
  offsetY = place.top - own.top;
  left = place.left;
  top = place.top;
  width = own.width;
  height = own.height;
}

void Selector::Apply() {
  if (ctrl) ctrl->SetBounds(left - offsetX, top - offsetY, width, height);
}

void Selector::ShowGrips(bool on) {
  if (impl->grips) impl->grips->Show(on);
}

bool Selector::Contains(int x, int y) const {
  return x >= left && x < left + width && y >= top && y < top + height;
}

}  // namespace mavro
