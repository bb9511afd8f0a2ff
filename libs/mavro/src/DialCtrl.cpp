#include "DialCtrl.h"

#include <algorithm>
#include <cmath>

#include "Assert.h"
#include "DialImpl.h"
#include "Virtual.h"

namespace mavro {

namespace {

constexpr double cHalfPi = 1.570796327;
constexpr double cPi = 3.141592654;
constexpr int cDefaultSide = 140;
constexpr int cGrabMargin = 12;  // a press this close to the knob still counts

int Mixed(int a, int b, double t) {
  return static_cast<int>(std::lround((1 - t) * b + t * a));
}

}  // namespace

// The constant 6.293 is not exactly two pi: this value gives a shading without a visible seam.
Color Shade(double dAngle, Color colorA, Color colorB) {
  MAVRO_ASSERT(dAngle > -3.1416 && dAngle < 3.1416);
  double a = -2.356 - dAngle;
  if (a < -3.1415)
    a += 6.293;
  else if (a > 3.1415)
    a = 6.293 - a;
  const double t = (std::cos(a) + 1) * 0.5;
  const int32_t from = colorA.Value();
  const int32_t to = colorB.Value();
  const int red = Mixed(from >> 16 & 0xFF, to >> 16 & 0xFF, t);
  const int green = Mixed(from >> 8 & 0xFF, to >> 8 & 0xFF, t);
  const int blue = Mixed(from & 0xFF, to & 0xFF, t);
  return Color(red << 16 | green << 8 | blue);
}

Color Scaled(Color color, double factor) {
  const int32_t plain = ToPlain(color).Value();
  const auto scaled = [&](int shift) {
    const auto channel = std::lround((plain >> shift & 0xFF) * factor);
    return static_cast<int32_t>(std::clamp(channel, 0L, 255L)) << shift;
  };
  return Color(scaled(16) | scaled(8) | scaled(0));
}

// One octant by the midpoint circle algorithm, and its seven mirror images.
void DrawRing(Graphics& graphics, int cx, int cy, int r, Color a, Color b) {
  int error = 1 - r;
  for (int x = r, y = 0; y <= x; ++y) {
    const double base = std::atan2(y, x);
    graphics.SetPixel(cx + x, cy + y, Shade(base, a, b));
    graphics.SetPixel(cx + y, cy + x, Shade(cHalfPi - base, a, b));
    graphics.SetPixel(cx - y, cy + x, Shade(base + cHalfPi, a, b));
    graphics.SetPixel(cx - x, cy + y, Shade(cPi - base, a, b));
    graphics.SetPixel(cx - x, cy - y, Shade(base - cPi, a, b));
    graphics.SetPixel(cx - y, cy - x, Shade(-cHalfPi - base, a, b));
    graphics.SetPixel(cx + y, cy - x, Shade(base - cHalfPi, a, b));
    graphics.SetPixel(cx + x, cy - y, Shade(-base, a, b));
    if (error < 0) {
      error += 2 * y + 3;
    } else {
      error += 2 * (y - x) + 5;
      --x;
    }
  }
}

DialCtrl::DialCtrl()
    : CustomCtrl(new Impl),
      pos(impl, static_cast<PropertySetter>(&Impl::PosChanged), &TheImpl().shownPos),
      min(impl, static_cast<PropertySetter>(&Impl::ScaleChanged), &TheImpl().scale.min),
      max(impl, static_cast<PropertySetter>(&Impl::ScaleChanged), &TheImpl().scale.max),
      steps(impl, static_cast<PropertySetter>(&Impl::ScaleChanged), &TheImpl().scale.steps),
      showPos(impl, static_cast<PropertySetter>(&Impl::LookChanged), &TheImpl().showPos),
      labels(impl, static_cast<PropertySetter>(&Impl::LookChanged), &TheImpl().labels) {
  SetSize(cDefaultSide, cDefaultSide);
  backColor = Color(Color::cControl);
  wantsKeys = true;
  onDraw.Add_H(this, &DialCtrl::OnDraw);
}

DialCtrl::Impl& DialCtrl::TheImpl() const {
  return *static_cast<Impl*>(impl);
}

bool DialCtrl::SetValue(double value) {
  return TheImpl().SetValue(value);
}

void DialCtrl::CreateControl() {
  TheImpl().ComputeColors();
  TheImpl().AdjustPosition();
  CustomCtrl::CreateControl();
}

void DialCtrl::OnDraw(NotifyArgs&) {
  DrawDial(BackBuffer(), TheImpl().Look(), TheImpl().knob);
}

void DialCtrl::Impl::AdjustPosition() {
  position = shownPos = Quantise(Drawable(scale), asked);
}

void DialCtrl::Impl::Create() {
  CustomCtrl::Impl::Create();
  ShowAccessibleValue();
}

void DialCtrl::Impl::ShowAccessibleValue() {
  const DialScale range = Drawable(scale);
  const double step = range.steps > 0 ? (range.max - range.min) / range.steps : 0;
  Canvas()->SetAccessibleValue({position, range.min, range.max, step});
}

bool DialCtrl::Impl::SetValue(double value) {
  const double v = Quantise(Drawable(scale), value);
  asked = value;
  shownPos = position;
  if (v == position) return false;
  position = shownPos = v;
  LookChanged();
  FireNotify(static_cast<DialCtrl*>(owner)->onChange);
  return true;
}

// The property has stored the assigned value; the position is this value rounded to the grid.
void DialCtrl::Impl::PosChanged() {
  SetValue(shownPos);
}

// Generated code sets the position before the scale.
void DialCtrl::Impl::ScaleChanged() {
  AdjustPosition();
  LookChanged();
}

void DialCtrl::Impl::LookChanged() {
  if (!hwnd) return;
  ShowAccessibleValue();
  static_cast<DialCtrl*>(owner)->Redraw(0);
}

// End and Home go to the ends of the scale, Right and Left one step along it.
bool DialCtrl::Impl::OnOwnKey(int virtualKey) {
  const DialScale range = Drawable(scale);
  const double step = range.steps > 0 ? (range.max - range.min) / range.steps : 0;
  switch (virtualKey) {
    case VK_END:
      SetValue(range.max);
      return true;
    case VK_HOME:
      SetValue(range.min);
      return true;
    case VK_LEFT:
      SetValue(position - step);
      return true;
    case VK_RIGHT:
      SetValue(position + step);
      return true;
    default:
      return false;
  }
}

void DialCtrl::Impl::TurnTo(int x, int y) {
  const DialLook look = Look();
  SetValue(ValueOfAngle(look.scale, std::atan2(y - look.centerY, x - look.centerX)));
}

bool DialCtrl::Impl::IsOnKnob(int x, int y) const {
  const DialLook look = Look();
  return std::hypot(x - look.centerX, y - look.centerY) <= look.radius + cGrabMargin;
}

// A handler of onChange may destroy the control.
Param DialCtrl::Impl::WndProc(unsigned message, Param wParam, Param lParam) {
  const NativeWindow* window = hwnd;
  const int x = PointX(lParam);
  const int y = PointY(lParam);
  switch (message) {
    case WM_LBUTTONDOWN:
    case WM_LBUTTONDBLCLK:
      turning = IsOnKnob(x, y);
      if (!turning) break;
      hwnd->Focus();
      TurnTo(x, y);
      break;
    case WM_MOUSEMOVE:
      if (turning && (wParam & MouseArgs::cLeft)) TurnTo(x, y);
      break;
    case WM_LBUTTONUP:
      turning = false;
      break;
    case WM_SYSCOLORCHANGE:
      ComputeColors();
      break;
    case WM_SETTEXT:
    case WM_SETFOCUS:
    case WM_KILLFOCUS:
      LookChanged();
      break;
    default:
      break;
  }
  return IsWindow(window) ? CustomCtrl::Impl::WndProc(message, wParam, lParam) : 0;
}

}  // namespace mavro
