#include <algorithm>
#include <cmath>
#include <functional>

#include "DialImpl.h"
#include "PlainColors.h"

namespace mavro {

namespace {

constexpr double cDarker = 0.7;
constexpr int cTickLength = 5;
constexpr int cTickGap = 3;       // between the knob and its ticks
constexpr int cLeastRadius = 10;  // the smallest knob that may have ticks and labels
constexpr int cMostTicks = 30;
constexpr int cMostLabels = 10;
constexpr int cLabelGap = 3;

// The surface of the dial, drawn in whole device pixels, and the coordinates that follow from its
// look.
struct Canvas {
  Graphics& graphics;
  const DialLook& look;
  double ratio;

  int Pixels(double length) const { return static_cast<int>(std::lround(length * ratio)); }
  double CenterX() const { return look.centerX * ratio; }
  double CenterY() const { return look.centerY * ratio; }
  Point At(double angle, double distance) const {
    return {static_cast<int>(std::lround(CenterX() + std::cos(angle) * distance * ratio)),
            static_cast<int>(std::lround(CenterY() + std::sin(angle) * distance * ratio))};
  }
};

// A disc lit from the upper left: at the rim `a` is the colour of the lit side, and towards the
// centre the two colours become more alike. Pixels on the rim are mixed with the background.
void DrawLitDisc(const Canvas& canvas, double radius, Color a, Color b, double flatness) {
  const double r = radius * canvas.ratio;
  const double cx = canvas.CenterX();
  const double cy = canvas.CenterY();
  const Color middle = Blend(a, b, 0.5);
  for (int y = static_cast<int>(cy - r) - 1; y <= cy + r + 1; ++y)
    for (int x = static_cast<int>(cx - r) - 1; x <= cx + r + 1; ++x) {
      const double distance = std::hypot(x + 0.5 - cx, y + 0.5 - cy);
      const double cover = std::clamp(r + 0.5 - distance, 0.0, 1.0);
      if (cover == 0) continue;
      const Color lit = Shade(std::atan2(y + 0.5 - cy, x + 0.5 - cx), a, b);
      const double share = std::pow(distance / r, flatness);
      const Color color = Blend(lit, middle, std::min(share, 1.0));
      const Color ground = cover < 1 ? canvas.graphics.GetPixel(x, y) : color;
      canvas.graphics.SetPixel(x, y, ground.IsDefault() ? color : Blend(color, ground, cover));
    }
}

// Draws the knob in the middle of a bitmap with the dial's background.
void DrawKnob(const Canvas& canvas) {
  const DialLook& look = canvas.look;
  DrawLitDisc(canvas, look.radius, look.dark, look.dark, 1);
  DrawLitDisc(canvas, look.radius - 1, look.light, look.mid, 1);
  const int rim = canvas.Pixels(look.radius - 4);
  const int cx = static_cast<int>(canvas.CenterX());
  const int cy = static_cast<int>(canvas.CenterY());
  DrawLitDisc(canvas, look.radius - 5, look.mid, look.light, 2);
  DrawRing(canvas.graphics, cx, cy, rim, Blend(look.light, look.mid, 0.5),
           Blend(look.mid, look.light, 0.5));
}

// The knob is drawn pixel by pixel, which is too slow to repeat at each turn, so it is cached.
void ShowKnob(Graphics& graphics, const DialLook& look, KnobPicture& kept) {
  const double ratio = graphics.PixelRatio();
  const int half = look.radius + 2;
  const std::vector<double> key{double(look.radius), ratio, double(look.light.Value()),
                                double(look.background.Value())};
  if (kept.key != key) {
    const int side = static_cast<int>(std::ceil(2 * half * ratio));
    kept.key = key;
    kept.bitmap = Bitmap(side, side, ratio);
    Graphics knob(kept.bitmap);
    knob.FillRect({0, 0, 2 * half, 2 * half}, look.background);
    knob.UseDevicePixels(true);
    DialLook centered = look;
    centered.centerX = centered.centerY = half;
    DrawKnob({knob, centered, ratio});
  }
  const int left = look.centerX - half;
  const int top = look.centerY - half;
  graphics.DrawBitmap(kept.bitmap, {left, top, 2 * half, 2 * half});
}

double TickOuter(const DialLook& look) {
  return look.radius + cTickGap + cTickLength;
}

void DrawTicks(const Canvas& canvas) {
  const DialLook& look = canvas.look;
  const int steps = std::max(look.scale.steps, 1);
  const int width = canvas.Pixels(1);
  const auto draw = [&](int most, double gap, Color ink) {
    canvas.graphics.SetPen(Pen(ink, width));
    for (const int step : DialMarks(steps, most)) {
      const double angle = cDialStart + cDialSweep * step / steps;
      const Point ends[] = {canvas.At(angle, look.radius + cTickGap + gap),
                            canvas.At(angle, TickOuter(look))};
      canvas.graphics.Polyline(ends, 2);
    }
  };
  draw(cMostTicks, 2, Blend(look.ink, look.background, 0.55));
  draw(cMostLabels, 0, look.ink);
}

void DrawPointer(const Canvas& canvas) {
  const DialLook& look = canvas.look;
  const double angle = AngleOfValue(look.scale, look.position);
  const double tip = std::max(look.radius - 7, look.radius / 2);  // within the rim
  const double tail = tip * 0.55;
  const double spread = 3.2 / std::max(tail, 1.0);
  const Point shape[] = {canvas.At(angle, tip), canvas.At(angle + spread, tail),
                         canvas.At(angle - spread, tail)};
  canvas.graphics.SetPen(Pen(look.ink, 1, Pen::cNone));
  canvas.graphics.SetBrush(Brush(look.enabled ? look.ink : look.dark));
  canvas.graphics.Polygon(shape, 3);
}

void DrawCentered(const Canvas& canvas, Point middle, const std::string& text) {
  const Graphics& graphics = canvas.graphics;
  const int width = canvas.Pixels(graphics.TextWidth(text));
  const int height = canvas.Pixels(graphics.TextHeight());
  canvas.graphics.TextOut(middle.x - width / 2, middle.y - height / 2, text);
}

// Calls `visit` with the angle and the value of each label.
void ForEachLabel(const DialLook& look, const std::function<void(double, double)>& visit) {
  if (look.labels == DialCtrl::cNone) return;
  const int steps = std::max(look.scale.steps, 1);
  const int most = look.labels == DialCtrl::cMinMax ? 1 : cMostLabels;
  for (const int step : DialMarks(steps, most)) {
    const double share = static_cast<double>(step) / steps;
    visit(cDialStart + cDialSweep * share,
          look.scale.min + (look.scale.max - look.scale.min) * share);
  }
}

// Each label is outside its tick, at a distance of half the label's size in that direction.
void DrawLabel(const Canvas& canvas, double angle, double value) {
  const std::string text = DialText(value);
  const double halfWidth = canvas.graphics.TextWidth(text) / 2.0;
  const double halfHeight = canvas.graphics.TextHeight() / 2.0;
  const double reach =
      std::abs(std::cos(angle)) * halfWidth + std::abs(std::sin(angle)) * halfHeight;
  const double distance = TickOuter(canvas.look) + cLabelGap + reach;
  DrawCentered(canvas, canvas.At(angle, distance), text);
}

void DrawLabels(const Canvas& canvas) {
  ForEachLabel(canvas.look, [&](double angle, double value) { DrawLabel(canvas, angle, value); });
}

// The position in the middle of the knob, the text in the gap of the scale below it.
void DrawTexts(const Canvas& canvas) {
  const DialLook& look = canvas.look;
  canvas.graphics.SetTextColor(look.ink);
  const std::string position = DialText(look.position);
  if (look.showPos && canvas.graphics.TextWidth(position) <= 2 * look.radius)
    DrawCentered(canvas, canvas.At(0, 0), position);
  if (look.text.empty()) return;
  const int y = look.height - canvas.graphics.TextHeight() / 2 - 1;
  DrawCentered(canvas, {canvas.Pixels(look.centerX), canvas.Pixels(y)}, look.text);
}

void DrawFocus(const Canvas& canvas) {
  const int side = canvas.Pixels(2 * (canvas.look.radius + 1.5));
  const int left = static_cast<int>(canvas.CenterX() - side / 2.0);
  const int top = static_cast<int>(canvas.CenterY() - side / 2.0);
  canvas.graphics.SetPen(Pen(canvas.look.ink, canvas.Pixels(1), Pen::cDot));
  canvas.graphics.SetBrush(Brush::Clear());
  canvas.graphics.Ellipse(left, top, left + side, top + side);
}

// The largest knob whose ticks and labels stay inside a box of these half sizes around its centre.
int LabelledRadius(const DialLook& look, const Graphics& graphics, double halfWidth,
                   double halfHeight) {
  const int ticks = cTickGap + cTickLength;
  double radius = std::min(halfWidth, halfHeight) - ticks - 1;
  const double textHalf = graphics.TextHeight() / 2.0;
  ForEachLabel(look, [&](double angle, double value) {
    const double textWidth = graphics.TextWidth(DialText(value)) / 2.0;
    const double across = std::abs(std::cos(angle));
    const double down = std::abs(std::sin(angle));
    const double rest = ticks + cLabelGap + across * textWidth + down * textHalf;
    if (across > 0.01) radius = std::min(radius, (halfWidth - textWidth) / across - rest);
    if (down > 0.01) radius = std::min(radius, (halfHeight - textHalf) / down - rest);
  });
  return static_cast<int>(radius);
}

// If there is not enough room, the knob is the most important: the labels are omitted first, then
// the ticks.
void FitInto(DialLook& look, const Graphics& graphics, double halfWidth, double halfHeight) {
  look.radius = LabelledRadius(look, graphics, halfWidth, halfHeight);
  if (look.radius >= cLeastRadius) return;
  look.labels = DialCtrl::cNone;
  look.radius = LabelledRadius(look, graphics, halfWidth, halfHeight);
  if (look.radius >= cLeastRadius) return;
  look.ticks = false;
  look.radius = static_cast<int>(std::min(halfWidth, halfHeight)) - 1;
}

}  // namespace

void DrawDial(Graphics& graphics, const DialLook& look, KnobPicture& knob) {
  graphics.FillRect({0, 0, look.width, look.height}, look.background);
  if (look.radius < 2) return;
  ShowKnob(graphics, look, knob);
  graphics.UseDevicePixels(true);
  const Canvas canvas{graphics, look, graphics.PixelRatio()};
  if (look.ticks) DrawTicks(canvas);
  graphics.SetTextColor(look.ink);
  DrawLabels(canvas);
  DrawPointer(canvas);
  DrawTexts(canvas);
  if (look.focused) DrawFocus(canvas);
  graphics.UseDevicePixels(false);
}

void DialCtrl::Impl::ComputeColors() {
  const Color face = ToPlain(Color::cControl);
  const bool isDark = (face.Value() >> 8 & 0xFF) < 0x80;
  light = isDark ? Scaled(face, 2.6) : Color(0xFCFCFC);
  mid = Scaled(light, cDarker);
  dark = Scaled(mid, cDarker);
}

DialLook DialCtrl::Impl::Look() const {
  DialLook look;
  look.scale = Drawable(scale);
  look.position = position;
  look.labels = labels;
  look.showPos = showPos;
  look.text = GetText();
  look.light = light;
  look.mid = mid;
  look.dark = dark;
  look.background = ToPlain(owner->InheritedBackColor());
  look.ink = ToPlain(owner->InheritedForeColor());
  look.focused = owner->IsFocused();
  look.enabled = enabled;
  if (!enabled) look.ink = Blend(look.ink, look.background, 0.45);
  if (!backBuffer.IsOpen()) return look;
  look.width = hwnd->ClientWidth();
  look.height = hwnd->ClientHeight();
  const int below = look.text.empty() ? 0 : backBuffer.TextHeight() / 2;
  look.centerX = look.width / 2;
  look.centerY = (look.height - below) / 2;
  FitInto(look, backBuffer, look.centerX, look.centerY);
  return look;
}

}  // namespace mavro
