#include "RangeImpl.h"

#include <algorithm>

namespace mavro {

void RangeImpl::Destroy() {
  destroying = true;
  SysImpl::Destroy();
  destroying = false;
}

void RangeImpl::OnCommand(int code, Param handle) {
  if (handle == 0) return SysImpl::OnCommand(code, handle);
  if ((code >> 16) != RN_CHANGE || destroying) return;
  value = Window()->Value();
  OnChange();
}

Param RangeImpl::OnNotify(NotifyHeader*) {
  const NativeWindow* window = hwnd;
  Window()->Commit();
  return IsWindow(window) ? 1 : 0;
}

void RangeImpl::RangeChanged() {
  if (!hwnd) return;
  const auto [low, high] = std::minmax(min, max);
  value = std::clamp(value, low, high);
  Window()->SetRange(low, high, value);
}

}  // namespace mavro
