#include <algorithm>
#include <vector>

#include "Action.h"
#include "Button.h"
#include "FormImpl.h"
#include "Keys.h"
#include "MessageLoop.h"
#include "TabCtrl.h"
#include "Virtual.h"

namespace mavro {

namespace {

constexpr int cIdOk = 1;
constexpr int cIdCancel = 2;

// The controls that can have the focus, in child order.
void CollectFocusable(Control* control, std::vector<Control*>& found) {
  if (!control->impl->childrenTakeKeys) return;
  for (Control* child : control->children) {
    if (!child->impl->hwnd || !child->impl->hwnd->IsShown()) continue;
    if (child->impl->hwnd->TakesFocus()) found.push_back(child);
    CollectFocusable(child, found);
  }
}

Control* FocusedControl(Form& form) {
  std::vector<Control*> controls;
  CollectFocusable(&form, controls);
  for (Control* control : controls)
    if (control->IsFocused()) return control;
  return nullptr;
}

void FocusByKey(Control& control, int step) {
  control.impl->hwnd->Focus(step > 0 ? FocusBy::cTab : FocusBy::cBacktab);
}

bool MoveFocus(Form& form, int step) {
  std::vector<Control*> controls;
  CollectFocusable(&form, controls);
  if (controls.empty()) return false;
  const int count = static_cast<int>(controls.size());
  int at = step > 0 ? -1 : count;
  for (int i = 0; i < count; ++i)
    if (controls[static_cast<size_t>(i)]->IsFocused()) at = i;
  FocusByKey(*controls[static_cast<size_t>((at + step + count) % count)], step);
  return true;
}

// How many pages a key turns in a dialog with tabs.
int PageStep(int virtualKey, int hotkeyFlags) {
  const bool isBack = hotkeyFlags & cShiftKey;
  if ((hotkeyFlags & ~cShiftKey) != cControlKey) return 0;
  if (virtualKey == VK_TAB) return isBack ? -1 : 1;
  if (isBack) return 0;
  return virtualKey == Key::cPageDown ? 1 : virtualKey == Key::cPageUp ? -1 : 0;
}

// The first row of tabs at or below a control that can be seen.
TabCtrl* FirstTabs(Control& control) {
  if (!control.impl->hwnd || !control.impl->hwnd->IsShown()) return nullptr;
  if (auto* tabs = dynamic_cast<TabCtrl*>(&control)) return tabs;
  for (Control* child : control.children)
    if (TabCtrl* tabs = FirstTabs(*child)) return tabs;
  return nullptr;
}

// Shows another page of the tabs around the focus, else of the dialog's first ones, around the
// ends.
bool TurnPage(Form& form, Control* focused, int step) {
  if (step == 0 || !form.autoDialogKeys) return false;
  TabCtrl* tabs = nullptr;
  for (Control* around = focused; around && !tabs; around = around->parent)
    tabs = dynamic_cast<TabCtrl*>(around);
  if (!tabs) tabs = FirstTabs(form);
  const int count = tabs ? tabs->TabCount() : 0;
  if (count < 2) return false;
  tabs->selectedIndex = (tabs->selectedIndex + step + count) % count;
  return true;
}

int ArrowStep(int virtualKey) {
  switch (virtualKey) {
    case VK_LEFT:
    case VK_UP:
      return -1;
    case VK_RIGHT:
    case VK_DOWN:
      return 1;
    default:
      return 0;
  }
}

// An arrow key moves among the buttons of the same container, around the ends.
bool MoveInGroup(Control* focused, int step) {
  if (step == 0 || !dynamic_cast<AnyButton*>(focused) || !focused->parent) return false;
  std::vector<Control*> group;
  for (Control* sibling : focused->parent->children)
    if (dynamic_cast<AnyButton*>(sibling) && sibling->impl->hwnd &&
        sibling->impl->hwnd->TakesFocus())
      group.push_back(sibling);
  const auto at = std::find(group.begin(), group.end(), focused) - group.begin();
  const auto count = static_cast<std::ptrdiff_t>(group.size());
  FocusByKey(*group[static_cast<size_t>((at + step + count) % count)], step);
  return true;
}

bool OwnsKey(const Control& control, int virtualKey) {
  const int own = control.impl->ownKeys;
  if (virtualKey == VK_RETURN) return own & cOwnEnter;
  if (virtualKey == VK_ESCAPE) return own & cOwnEscape;
  return ArrowStep(virtualKey) != 0 && own & cOwnArrows;
}

// Enter presses the OK button; a focused push button has already used it.
bool OnEnter(Form& form) {
  if (!form.autoDialogKeys) return false;
  SendMessage(form.impl->hwnd, WM_COMMAND, cIdOk, 0);
  return true;
}

}  // namespace

bool DialogKey(Form& form, int virtualKey, int hotkeyFlags) {
  // Letters come one after the other, and the focus is looked for in the whole form.
  const int pageStep = PageStep(virtualKey, hotkeyFlags);
  const bool isKnown = virtualKey == VK_TAB || virtualKey == VK_RETURN || virtualKey == VK_ESCAPE ||
                       ArrowStep(virtualKey) != 0 || pageStep != 0;
  if (!isKnown) return false;
  Control* focused = FocusedControl(form);
  const int step = hotkeyFlags & cShiftKey ? -1 : 1;
  if (TurnPage(form, focused, pageStep)) return true;
  const NativeWindow* window = focused ? focused->impl->hwnd : nullptr;
  if (virtualKey == VK_TAB && window && window->LetsTabOut()) {
    const bool leaves = (hotkeyFlags & (cShiftKey | cControlKey)) && !(hotkeyFlags & cAltKey);
    return leaves && MoveFocus(form, step);
  }
  if (window && (window->WantsKey(virtualKey) || OwnsKey(*focused, virtualKey))) return false;
  const bool plain = (hotkeyFlags & ~cShiftKey) == 0;
  if (!plain) return false;
  switch (virtualKey) {
    case VK_TAB:
      return MoveFocus(form, step);
    case VK_RETURN:
      return OnEnter(form);
    case VK_ESCAPE:
      SendMessage(form.impl->hwnd, WM_COMMAND, cIdCancel, 0);
      return form.autoDialogKeys;
    default:
      return hotkeyFlags == 0 && MoveInGroup(focused, ArrowStep(virtualKey));
  }
}

}  // namespace mavro
