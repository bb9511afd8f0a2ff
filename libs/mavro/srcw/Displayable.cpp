#include <vector>

#include "Assert.h"
#include "SysImpl.h"

namespace mavro {

namespace {

std::vector<Control*> displayableComponents;

}  // namespace

void RegisterDisplayable(Control* control) {
  displayableComponents.push_back(control);
  control->impl->hwnd->userData = static_cast<long>(displayableComponents.size());
}

void UnregisterDisplayable(Control* c) {
  MAVRO_ASSERT_AS(c, "c != NULL");
  MAVRO_ASSERT_AS(c->impl, "c->impl!=0");
  const long id = c->impl->hwnd->userData;
  MAVRO_ASSERT_AS(id >= 1 && id <= static_cast<long>(displayableComponents.size()),
                  "id >= 1 && id <= displayableComponents.size()");
  Control* last = displayableComponents.back();
  if (last != c) {
    MAVRO_ASSERT(last->impl);
    displayableComponents[static_cast<size_t>(id - 1)] = last;
    last->impl->hwnd->userData = id;
  }
  displayableComponents.pop_back();
  c->impl->hwnd->userData = 0;
}

Control* ControlOf(const NativeWindow* window) {
  if (!IsWindow(window)) return nullptr;
  const long id = window->userData;
  if (id < 1 || id > static_cast<long>(displayableComponents.size())) return nullptr;
  return displayableComponents[static_cast<size_t>(id - 1)];
}

}  // namespace mavro
