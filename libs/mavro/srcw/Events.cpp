#include <utility>

#include "Failures.h"
#include "Menu.h"
#include "SysImpl.h"
#include "TimerList.h"
#include "Virtual.h"

namespace mavro {

namespace {

struct MouseMessage {
  unsigned message;
  int kind;
  int button;
};

// Double clicks of the right and middle buttons count as presses; only the left one reports them.
constexpr MouseMessage cMouseMessages[] = {
    {WM_LBUTTONDOWN, MouseArgs::cDown, MouseArgs::cLeft},
    {WM_RBUTTONDOWN, MouseArgs::cDown, MouseArgs::cRight},
    {WM_MBUTTONDOWN, MouseArgs::cDown, MouseArgs::cMiddle},
    {WM_RBUTTONDBLCLK, MouseArgs::cDown, MouseArgs::cRight},
    {WM_MBUTTONDBLCLK, MouseArgs::cDown, MouseArgs::cMiddle},
    {WM_LBUTTONUP, MouseArgs::cUp, MouseArgs::cLeft},
    {WM_RBUTTONUP, MouseArgs::cUp, MouseArgs::cRight},
    {WM_MBUTTONUP, MouseArgs::cUp, MouseArgs::cMiddle},
};

const MouseMessage* FindMouseMessage(unsigned message) {
  for (const MouseMessage& row : cMouseMessages)
    if (row.message == message) return &row;
  return nullptr;
}

// The modifiers that the button of an event adds. A middle button sets Control's flag as well.
int ButtonModifiers(int button) {
  switch (button) {
    case MouseArgs::cLeft:
      return cLeftEvent;
    case MouseArgs::cRight:
      return cPrimary;
    case MouseArgs::cMiddle:
      return cAltOrMiddle | cControl;
    default:
      return 0;
  }
}

// Passes a message to the control of its window; null if the window has none.
Param Dispatch(Control* control, NativeWindow* window, unsigned message, Param wParam,
               Param lParam) {
  if (!control) return DefaultProc(window, message, wParam, lParam);
  if (!MayDispatch(*window, message)) return 0;
  try {
    return control->impl->WndProc(message, wParam, lParam);
  } catch (...) {
    ReportCurrentException(window, message);
  }
  return 0;
}

int HeldButton(Param buttons) {
  for (int button : {MouseArgs::cLeft, MouseArgs::cMiddle, MouseArgs::cRight})
    if (buttons & button) return button;
  return MouseArgs::cNone;
}

}  // namespace

Param WindowProc(NativeWindow* window, unsigned message, Param wParam, Param lParam) {
  if (message == WM_NCCREATE) {
    Control* control = window->creationData;
    control->impl->hwnd = window;
    RegisterDisplayable(control);
    return 1;
  }
  Control* control = ControlOf(window);
  if (message == WM_NCDESTROY) {
    if (control) {
      TimerList::WindowGoes(control);
      UnregisterDisplayable(control);
      control->impl->hwnd = nullptr;
    }
    return 0;
  }
  const bool outer = std::exchange(window->asksDefault, false);
  const Param result = Dispatch(control, window, message, wParam, lParam);
  if (IsWindow(window)) window->takeDefault = std::exchange(window->asksDefault, outer);
  return result;
}

Param DefaultProc(NativeWindow* window, unsigned, Param, Param) {
  if (window) window->asksDefault = true;
  return 0;
}

Param NotifyCommand(NativeWindow* from, int code) {
  if (!from->parent) return 0;
  const Param wParam = (static_cast<Param>(code) << 16) | (from->id & 0xFFFF);
  return SendMessage(from->parent, WM_COMMAND, wParam, reinterpret_cast<Param>(from));
}

Param Notify(NotifyHeader& header) {
  if (!header.from->parent) return 0;
  header.id = header.from->id;
  return SendMessage(header.from->parent, WM_NOTIFY, header.id, reinterpret_cast<Param>(&header));
}

void SysImpl::OnCommand(int code, Param) {
  OnMenuCommand(0, code);
}

Param SysImpl::OnNotify(NotifyHeader*) {
  return 0;
}

int SysImpl::OnMenuCommand(int source, int id) {
  if (source != 0 || !owner->menu) return 0;
  return owner->menu->Dispatch(id);
}

Param SysImpl::OnKey(unsigned message, Param wParam, Param lParam) {
  const bool isDown = message == WM_KEYDOWN || message == WM_SYSKEYDOWN;
  const bool isUp = message == WM_KEYUP || message == WM_SYSKEYUP;
  KeyEvent& event = isDown ? owner->onKeyDown : isUp ? owner->onKeyUp : owner->onChar;
  KeyArgs args;
  args.sender = owner;
  args.kind = isDown ? KeyArgs::cDown : isUp ? KeyArgs::cUp : KeyArgs::cChar;
  args.modifiers = LiveModifiers();
  args.key = static_cast<int>(wParam);
  if (!event.Fire(args) || args.handled) return 1;
  return DefaultProc(hwnd, message, wParam, lParam);
}

Param SysImpl::OnMouse(unsigned message, Param wParam, Param lParam) {
  MouseArgs args;
  args.sender = owner;
  args.modifiers = LiveModifiers();
  args.x = PointX(lParam);
  args.y = PointY(lParam);
  MouseEvent* event = &owner->onMouseMove;
  if (message == WM_MOUSEMOVE) {
    if (!event->HasHandlers()) return DefaultProc(hwnd, message, wParam, lParam);
    args.kind = MouseArgs::cMove;
    args.button = HeldButton(wParam);
  } else if (message == WM_MOUSEWHEEL) {
    event = &owner->onMouseWeel;
    args.kind = MouseArgs::cWheel;
    args.wheel = static_cast<int>(wParam);
  } else {
    const MouseMessage* row = FindMouseMessage(message);
    args.kind = row->kind;
    args.button = row->button;
    args.modifiers |= ButtonModifiers(row->button);
    event = row->kind == MouseArgs::cDown ? &owner->onMouseDown : &owner->onMouseUp;
    if (row->kind == MouseArgs::cDown) {
      mouseX = args.x;
      mouseY = args.y;
    }
  }
  if (!event->Fire(args) || args.handled) return 0;
  return DefaultProc(hwnd, message, wParam, lParam);
}

Param SysImpl::OnCrossing(unsigned message, Param wParam, Param lParam) {
  const bool enters = message == WM_MOUSEENTER;
  MouseArgs mouse;
  mouse.sender = owner;
  mouse.kind = enters ? MouseArgs::cEnter : MouseArgs::cLeave;
  mouse.modifiers = LiveModifiers();
  mouse.button = HeldButton(wParam);
  mouse.x = PointX(lParam);
  mouse.y = PointY(lParam);
  NotifyArgs notify{owner, 0};
  CrossingEvent& event = enters ? owner->onMouseEnter : owner->onMouseLeave;
  if (!event.Fire(mouse, notify) || mouse.handled || notify.value > 0) return 0;
  return DefaultProc(hwnd, message, wParam, lParam);
}

Param SysImpl::OnContextMenu(Param wParam, Param lParam) {
  MouseArgs args;
  args.sender = owner;
  args.kind = MouseArgs::cContext;
  args.modifiers = LiveModifiers();
  args.x = PointX(lParam);
  args.y = PointY(lParam);
  if (!owner->onContextMenu.Fire(args) || args.handled) return 1;
  if (!owner->menu) return DefaultProc(hwnd, WM_CONTEXTMENU, wParam, lParam);
  if (args.x >= 0) {
    const Rect origin = hwnd->ScreenClientRect();
    mouseX = args.x - origin.left;
    mouseY = args.y - origin.top;
  }
  owner->menu->Attach(owner);
  return 1;
}

// A control that was clicked stays under the mouse; a control that the keyboard went to is scrolled
// into view.
void SysImpl::RevealInContainers() {
  for (NativeWindow* outer = hwnd->parent; IsWindow(outer); outer = outer->parent)
    SendMessage(outer, WM_REVEAL, 0, reinterpret_cast<Param>(hwnd));
}

Param SysImpl::WndProc(unsigned message, Param wParam, Param lParam) {
  switch (message) {
    case WM_MOVE: {
      const Rect real = hwnd->Bounds();
      OwnerBounds().left = real.left;
      OwnerBounds().top = real.top;
      if (!FireNotify(owner->onMove)) return 0;
      break;
    }
    case WM_SIZE:
      if (!FireNotify(owner->onResize)) return 0;
      break;
    case WM_SETFOCUS:
      if (wParam == 1) RevealInContainers();
      if (!FireNotify(owner->onGotFocus)) return 0;
      break;
    case WM_KILLFOCUS:
      if (!FireNotify(owner->onLostFocus)) return 0;
      break;
    case WM_LBUTTONDBLCLK:
      if (!FireNotify(owner->onDblClick)) return 0;
      break;
    case WM_MOUSEENTER:
    case WM_MOUSELEAVE:
      return OnCrossing(message, wParam, lParam);
    case WM_CREATED:
      TimerList::WindowMade(owner);
      break;
    case WM_TIMER:
      TimerList::Tick(static_cast<int>(wParam));
      return 0;
    case WM_CONTEXTMENU:
      return OnContextMenu(wParam, lParam);
    case WM_COMMAND:  // of the control's own popup menu
      if (lParam != 0) break;
      OnMenuCommand(0, static_cast<int>(wParam));
      return 0;
    case WM_KEYDOWN:
    case WM_SYSKEYDOWN:
    case WM_KEYUP:
    case WM_SYSKEYUP:
    case WM_CHAR:
    case WM_SYSCHAR:
      return OnKey(message, wParam, lParam);
    case WM_MOUSEMOVE:
    case WM_MOUSEWHEEL:
      return OnMouse(message, wParam, lParam);
    default:
      if (FindMouseMessage(message)) return OnMouse(message, wParam, lParam);
  }
  return DefaultProc(hwnd, message, wParam, lParam);
}

}  // namespace mavro
