#include "CustomCtrl.h"

#include <algorithm>
#include <cmath>

#include "Action.h"
#include "CustomImpl.h"
#include "Form.h"
#include "MessageLoop.h"
#include "Virtual.h"

namespace mavro {

namespace {

constexpr int cMostPixels = 8192;  // of a side of the buffer; the area past it is not painted

int HotKeyFlags() {
  const int held = LiveModifiers();
  return (held & cShift ? cShiftKey : 0) | (held & cControl ? cControlKey : 0);
}

}  // namespace

void CustomCtrl::Impl::Create() {
  CreateNative("mavroCustom", cWantsKeys);
}

void CustomCtrl::Impl::PrepareStyle() {
  if (Custom().wantsKeys) style |= WS_TABSTOP;
}

void CustomCtrl::Impl::Destroy() {
  backBuffer.Close();
  bufferPixels.Clear();
  SysImpl::Destroy();
}

void CustomCtrl::Impl::MakeBackBuffer() {
  const double ratio = Canvas()->PixelRatio();
  const auto pixels = [ratio](int length) {
    return std::clamp(static_cast<int>(std::ceil(length * ratio)), 1, cMostPixels);
  };
  const int width = hwnd->ClientWidth();
  const int height = hwnd->ClientHeight();
  backBuffer.Close();
  isDrawn = false;
  bufferPixels.Assign(Bitmap(pixels(width), pixels(height), ratio));
  backBuffer.SetBitmap(bufferPixels.Pixels(), owner);
  backBuffer.FillRect({0, 0, width, height}, owner->InheritedBackColor());
}

void CustomCtrl::Impl::Redraw(int notify) {
  if (!hwnd) return;
  if (!backBuffer.IsOpen()) MakeBackBuffer();
  const NativeWindow* window = hwnd;
  isDrawn = true;
  FireNotify(Custom().onDraw, notify);
  if (IsWindow(window)) hwnd->Invalidate();
}

void CustomCtrl::Impl::MarkStale() {
  isDrawn = false;
  if (hwnd) hwnd->Invalidate();
}

bool CustomCtrl::Impl::Refresh() {
  const NativeWindow* window = hwnd;
  MakeBackBuffer();
  Redraw(0);
  return IsWindow(window);
}

// A control that was resized while it was hidden is drawn when it is next visible.
void CustomCtrl::Impl::Paint() {
  const bool fits = bufferPixels.Pixels().PixelRatio() == Canvas()->PixelRatio();
  if ((!isDrawn || !fits) && !Refresh()) return;
  const Bitmap shown = bufferPixels.Pixels();
  const Rect whole{0, 0, hwnd->ClientWidth(), hwnd->ClientHeight()};
  if (!Custom().onPaint.HasHandlers()) {
    Canvas()->PaintBitmap(shown, whole);
    return;
  }
  Graphics graphics(owner, Graphics::cPainting);
  graphics.DrawBitmap(shown, whole);
  PaintArgs args{owner, &graphics};
  Custom().onPaint.Fire(args);
}

bool CustomCtrl::Impl::OnOwnKey(int) {
  return false;
}

// A key that neither a handler nor the control uses has its usual effect in a dialog.
Param CustomCtrl::Impl::OnUnusedKey(int virtualKey, Param result) {
  NativeWindow* window = hwnd;
  bool used = OnOwnKey(virtualKey);
  if (!IsWindow(window)) return 1;
  Form* form = owner->GetForm();
  if (!used && Custom().wantsKeys && form && form->impl->hwnd) {
    offersKey = true;
    used = DialogKey(*form, virtualKey, HotKeyFlags());
    if (!IsWindow(window)) return 1;
    offersKey = false;
  }
  if (!used) return result;
  window->asksDefault = false;
  return 1;
}

Param CustomCtrl::Impl::WndProc(unsigned message, Param wParam, Param lParam) {
  switch (message) {
    case WM_PAINT:
      Paint();
      return 0;
    case WM_SIZE: {
      const NativeWindow* window = hwnd;
      const Param result = SysImpl::WndProc(message, wParam, lParam);
      if (!IsWindow(window)) return result;
      MakeBackBuffer();
      if (owner->state == cShown) Redraw(0);
      return result;
    }
    case WM_CREATED:
      Redraw(0);
      break;
    case WM_SYSCOLORCHANGE:
    case WM_ENABLE:
    case WM_SETFONT:
      if (!Refresh()) return 0;
      break;
    case WM_GETDLGCODE:
      if (Custom().wantsKeys) return offersKey ? 0 : DLGC_WANTALLKEYS;
      break;
    case WM_KEYDOWN: {
      NativeWindow* window = hwnd;
      const Param result = SysImpl::WndProc(message, wParam, lParam);
      if (!IsWindow(window) || !window->asksDefault) return result;
      return OnUnusedKey(static_cast<int>(wParam), result);
    }
    default:
      break;
  }
  return SysImpl::WndProc(message, wParam, lParam);
}

CustomCtrl::CustomCtrl() : Control(new Impl) {}

CustomCtrl::CustomCtrl(SysImpl* newImpl) : Control(newImpl) {}

void CustomCtrl::Redraw(int notify) {
  static_cast<Impl*>(impl)->Redraw(notify);
}

Graphics& CustomCtrl::BackBuffer() {
  return static_cast<Impl*>(impl)->backBuffer;
}

}  // namespace mavro
