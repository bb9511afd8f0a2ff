#include "Assert.h"
#include "Graphics.h"
#include "SysImpl.h"

namespace mavro {

Control* RoutedChild(Control* cont, int nativeId) {
  const int id = nativeId & cIndexMask;
  MAVRO_ASSERT_AS(id < static_cast<int>(cont->children.size()),
                  "id >= 0 && id < cont->GetControlCount()");
  return cont->children[static_cast<size_t>(id)];
}

Container::Impl::Impl(Type itsType) : SysImpl(itsType) {}

void Container::Impl::Create() {
  CreateNative("mavroCont", cWantsKeys);
}

void Container::Impl::AfterCreate() {
  owner->layoutPending = true;
  RunPendingLayout(owner);
}

Param Container::Impl::WndProc(unsigned message, Param wParam, Param lParam) {
  switch (message) {
    case WM_NOTIFY:
      return RouteNotify(wParam, lParam);
    case WM_COMMAND:
      return RouteCommand(wParam, lParam);
    case WM_DRAWITEM:
      if ((wParam & cRouteMask) == cChildRoute)
        RoutedChild(owner, static_cast<int>(wParam))->impl->WndProc(message, wParam, lParam);
      return DefaultProc(hwnd, message, wParam, lParam);
    case WM_HSCROLL:
    case WM_VSCROLL:
      return 0;
    case WM_CTLCOLOREDIT:
    case WM_CTLCOLORLISTBOX:
    case WM_CTLCOLORBTN:
    case WM_CTLCOLORDLG:
    case WM_CTLCOLORSCROLLBAR:
    case WM_CTLCOLORSTATIC:
      if (const Param brush = RouteColors(*reinterpret_cast<PaintColors*>(wParam),
                                          *reinterpret_cast<const NativeWindow*>(lParam)))
        return brush;
      return DefaultProc(hwnd, message, wParam, lParam);
    default:
      return SysImpl::WndProc(message, wParam, lParam);
  }
}

// A window whose id has lost the tag of the child route gets no colours.
Param Container::Impl::RouteColors(PaintColors& colors, const NativeWindow& window) {
  if ((window.id & cRouteMask) != cChildRoute) return 0;
  const auto id = static_cast<size_t>(window.id & cIndexMask);
  const Control* cont = owner;
  MAVRO_ASSERT(id < cont->children.size());
  SysImpl& child = *cont->children[id]->impl;
  if (child.foreColor.IsDefault() && child.backColor.IsDefault()) return 0;
  if (!child.foreColor.IsDefault()) colors.text = child.foreColor;
  if (child.backColor.IsDefault())
    colors.transparent = true;
  else
    colors.back = child.backColor;
  auto& backgroundBrush = child.backgroundBrush;
  if (!backgroundBrush)
    backgroundBrush = std::make_unique<Brush>(child.owner->InheritedBackColor());
  MAVRO_ASSERT_AS(backgroundBrush, "backgroundBrush != NULL");
  return reinterpret_cast<Param>(backgroundBrush.get());
}

Param Container::Impl::RouteNotify(Param wParam, Param lParam) {
  if ((wParam & cRouteMask) != cChildRoute) return 0;
  Control* child = RoutedChild(owner, static_cast<int>(wParam));
  return child->impl->OnNotify(reinterpret_cast<NotifyHeader*>(lParam));
}

Param Container::Impl::RouteCommand(Param wParam, Param lParam) {
  const int command = static_cast<int>(wParam & 0xFFFF);
  const int index = command & cIndexMask;
  if (lParam == 0) {
    OnCommand(static_cast<int>(wParam), 0);
    return 0;
  }
  const auto* from = reinterpret_cast<const NativeWindow*>(lParam);
  switch (command & cRouteMask) {
    case cOwnRoute:
      OnCommand(static_cast<int>(wParam), lParam);
      break;
    case cRowRoute:
      for (size_t i = 0; i < owner->children.size(); ++i)
        if (owner->children[i]->impl->hwnd == from) {
          owner->children[i]->impl->OnCommand(index, 0);
          break;
        }
      break;
    case cChildRoute:
      RoutedChild(owner, command)->impl->OnCommand(static_cast<int>(wParam), lParam);
      break;
    case cReflectRoute:
      RoutedChild(owner, command)->impl->WndProc(WM_REFLECT, (wParam >> 16) & 0xFFFF, lParam);
      break;
    default:
      break;
  }
  return 0;
}

}  // namespace mavro
