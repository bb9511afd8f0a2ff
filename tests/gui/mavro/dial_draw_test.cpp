#include <gtest/gtest.h>

#include <cmath>

#include "DialImpl.h"
#include "Form.h"
#include "GuiDriver.h"

// The parts of a dial's picture: where they are, what they need, and when they are left out.

namespace mavro {
namespace {

constexpr int cSide = 201;
constexpr int cCenter = 100;

DialLook PlainLook() {
  DialLook look;
  look.width = look.height = cSide;
  look.centerX = look.centerY = cCenter;
  look.radius = 60;
  look.light = Color(0xFCFCFC);
  look.mid = Color(0xB0B0B0);
  look.dark = Color(0x7B7B7B);
  look.background = Color(0xFFFFFF);
  look.ink = Color(0);
  look.labels = DialCtrl::cNone;
  look.showPos = false;
  look.scale.steps = 10;
  return look;
}

struct Picture {
  explicit Picture(const DialLook& look, double ratio = 1)
      : bitmap(static_cast<int>(cSide * ratio), static_cast<int>(cSide * ratio), ratio) {
    Graphics graphics(bitmap);
    KnobPicture knob;
    DrawDial(graphics, look, knob);
  }
  // The darkness of a pixel, 0 for white.
  int Ink(int x, int y) const { return 255 - static_cast<int>(bitmap.Row(y)[x] & 0xFF); }
  int InkAt(double angle, double distance, double ratio = 1) const {
    return Ink(static_cast<int>(std::lround((cCenter + std::cos(angle) * distance) * ratio)),
               static_cast<int>(std::lround((cCenter + std::sin(angle) * distance) * ratio)));
  }
  Bitmap bitmap;
};

// Pixels in which two pictures differ, within a square around the centre.
int Differences(const Picture& a, const Picture& b, int reach = cCenter) {
  int count = 0;
  for (int y = cCenter - reach; y <= cCenter + reach; ++y)
    for (int x = cCenter - reach; x <= cCenter + reach; ++x) count += a.Ink(x, y) != b.Ink(x, y);
  return count;
}

Graphics& Measure() {
  static Bitmap bitmap(8, 8);
  static Graphics graphics(bitmap);
  return graphics;
}

TEST(DialDraw, MarkWithALabel_GoesFrom3To8BeyondTheKnob) {
  const Picture shown(PlainLook());
  const double up = cDialStart + cDialSweep / 2;  // step 5 of 10
  for (const int distance : {63, 65, 67}) EXPECT_GT(shown.InkAt(up, distance), 150) << distance;
  for (const int distance : {62, 69}) EXPECT_LT(shown.InkAt(up, distance), 40) << distance;
}

TEST(DialDraw, MarkWithoutALabel_IsShorterAndPaler) {
  DialLook look = PlainLook();
  look.scale.steps = 20;
  const Picture shown(look);
  const double right = 0;  // between steps 16 and 17: none
  EXPECT_LT(shown.InkAt(right, 66), 40);
  const double step = cDialStart + cDialSweep * 9 / 20;
  EXPECT_GT(shown.InkAt(step, 67), 60);
  EXPECT_LT(shown.InkAt(step, 67), 200);
  const Picture without([&] {
    look.ticks = false;
    return look;
  }());
  EXPECT_LT(without.InkAt(step, 67), 40);
}

TEST(DialDraw, Position_IsShownIfTheKnobIsAsWideAsIt) {
  DialLook look = PlainLook();
  look.position = 12345;
  look.scale.max = 100000;
  const int width = Measure().TextWidth("12345");
  for (const int radius : {width / 2 - 1, (width - 1) / 2, (width + 1) / 2, width}) {
    look.radius = radius;
    look.showPos = false;
    const Picture without(look);
    look.showPos = true;
    const bool isShown = Differences(without, Picture(look)) > 0;
    EXPECT_EQ(isShown, width <= 2 * radius) << radius << " for " << width;
  }
}

TEST(DialDraw, Position_IsInTheMiddle_AndNotThereIfNotWanted) {
  DialLook look = PlainLook();
  look.position = 8;
  for (const bool isWanted : {false, true}) {
    look.showPos = isWanted;
    const Picture shown(look);
    int dark = 0;
    for (int y = cCenter - 8; y <= cCenter + 8; ++y)
      for (int x = cCenter - 8; x <= cCenter + 8; ++x) dark += shown.Ink(x, y) > 200;
    EXPECT_EQ(dark > 0, isWanted) << dark;
  }
}

TEST(DialDraw, Labels_EndsOrTen_AreInkOutsideTheMarks) {
  DialLook look = PlainLook();
  look.scale = {0, 8, 8};
  const Picture none(look);
  look.labels = DialCtrl::cMinMax;
  const Picture ends(look);
  look.labels = DialCtrl::cView;
  const Picture all(look);
  EXPECT_GT(Differences(none, ends), 5);
  EXPECT_GT(Differences(none, all), 3 * Differences(none, ends));
  // Labels keep 3 away from the marks, which end 8 beyond the knob.
  const int inner = static_cast<int>((look.radius + 8 + 2) / std::sqrt(2.0));
  EXPECT_EQ(Differences(none, all, inner), 0);
  const double up = cDialStart + cDialSweep / 2;
  const int reach = look.radius + 8 + 3;
  int inked = 0;
  for (int x = cCenter - 6; x <= cCenter + 6; ++x) {
    for (int y = cCenter - reach; y < cCenter - look.radius - 9; ++y)
      EXPECT_LT(all.Ink(x, y), 40) << x << "," << y;
    for (int y = cCenter - reach - Measure().TextHeight(); y < cCenter - reach; ++y)
      inked += all.Ink(x, y) > 40;
  }
  EXPECT_GT(inked, 5) << up;
}

TEST(DialDraw, Focus_IsADottedCircleAroundTheKnob) {
  DialLook look = PlainLook();
  look.ticks = false;
  const Picture without(look);
  look.focused = true;
  const Picture with(look);
  EXPECT_GT(Differences(without, with), 50);
  int dots = 0;
  for (int i = 0; i < 360; ++i) {
    const double angle = i * 3.14159265 / 180;
    bool isInked = false;
    for (const double distance : {60.5, 61.0, 61.5, 62.0, 62.5})
      isInked = isInked || with.InkAt(angle, distance) != without.InkAt(angle, distance);
    dots += isInked;
  }
  EXPECT_GT(dots, 60);
  const int inner = static_cast<int>(58 / std::sqrt(2.0));
  EXPECT_EQ(Differences(without, with, inner), 0);
}

TEST(DialDraw, Pointer_PointsAtThePosition) {
  DialLook look = PlainLook();
  for (const double position : {0.0, 15.0, 30.0, 60.0}) {
    look.position = position;
    const Picture shown(look);
    const double angle = AngleOfValue(look.scale, position);
    EXPECT_GT(shown.InkAt(angle, 40), 200) << position;
    EXPECT_LT(shown.InkAt(angle + 3.14, 40), 200) << position;
  }
}

TEST(DialDraw, TwoPixelsAUnit_ShowTheSameInTwiceTheSize) {
  const Picture small(PlainLook()), large(PlainLook(), 2);
  for (int i = 0; i <= 10; ++i) {
    const double angle = cDialStart + cDialSweep * i / 10;
    EXPECT_GT(large.InkAt(angle, 66, 2), 100) << i;
    EXPECT_LT(large.InkAt(angle, 71, 2), 40) << i;
    EXPECT_LT(large.InkAt(angle + 0.2, 66, 2), 40) << i;
  }
  EXPECT_NEAR(large.InkAt(0, 30, 2), small.InkAt(0, 30), 8);
}

TEST(DialDraw, RadiusOf1_IsBackground) {
  DialLook look = PlainLook();
  look.radius = 1;
  const Picture none(look);
  EXPECT_EQ(none.Ink(cCenter, cCenter), 0);
  look.radius = 2;
  EXPECT_GT(Picture(look).Ink(cCenter, cCenter), 0);
}

struct SizedDial : Form {
  explicit SizedDial(int side) {
    SetBounds(0, 0, 400, 400);
    dial.SetBounds(0, 0, side, side);
    Add(&dial);
  }
  DialLook Look() const { return static_cast<DialCtrl::Impl*>(dial.impl)->Look(); }
  DialCtrl dial;
};

TEST(DialFit, KnobOf10_HasMarks_ASmallerOneTheRoom) {
  SizedDial form(38);
  form.dial.labels = DialCtrl::cNone;
  test::RunForm(form, false, [&] {
    EXPECT_EQ(form.Look().radius, 10);
    EXPECT_TRUE(form.Look().ticks);
    form.dial.SetSize(36, 36);
    EXPECT_EQ(form.Look().radius, 17);
    EXPECT_FALSE(form.Look().ticks);
  });
}

// True if the labels of a dial with this radius are within its client area.
bool LabelsFit(const DialLook& look, int radius) {
  for (const int step : DialMarks(look.scale.steps, look.labels == DialCtrl::cView ? 10 : 1)) {
    const double share = static_cast<double>(step) / look.scale.steps;
    const double angle = cDialStart + cDialSweep * share;
    const std::string text = DialText(look.scale.min + (look.scale.max - look.scale.min) * share);
    const double halfWidth = Measure().TextWidth(text) / 2.0;
    const double halfHeight = Measure().TextHeight() / 2.0;
    const double across = std::abs(std::cos(angle)), down = std::abs(std::sin(angle));
    const double distance = radius + 5 + 3 + 3 + across * halfWidth + down * halfHeight;
    if (across > 0.01 && across * distance + halfWidth > look.centerX) return false;
    if (down > 0.01 && down * distance + halfHeight > look.centerY) return false;
  }
  return true;
}

TEST(DialFit, Knob_IsTheLargestWhoseLabelsAreInside) {
  SizedDial form(140);
  int shown = 0;
  test::RunForm(form, false, [&] {
    for (const int labels : {DialCtrl::cMinMax, DialCtrl::cView})
      for (const double max : {8.0, 60.0, 12345.0})
        for (const int side : {140, 201, 260}) {
          form.dial.labels = labels;
          form.dial.max = max;
          form.dial.steps = 8;
          form.dial.SetSize(side, side);
          const DialLook look = form.Look();
          if (look.labels != labels) continue;  // no room
          ++shown;
          EXPECT_TRUE(LabelsFit(look, look.radius)) << side << " " << max;
          const bool marksFit = look.radius + 1 + 8 + 1 <= look.centerX;
          EXPECT_FALSE(marksFit && LabelsFit(look, look.radius + 1)) << side << " " << max;
        }
  });
  EXPECT_GE(shown, 15);
}

TEST(DialFit, Text_TakesHalfALineFromBelow) {
  SizedDial form(140);
  test::RunForm(form, false, [&] {
    EXPECT_EQ(form.Look().centerY, 70);
    form.dial.text = "Volume";
    EXPECT_EQ(form.Look().centerX, 70);
    EXPECT_EQ(form.Look().centerY, (140 - Measure().TextHeight() / 2) / 2);
  });
}

TEST(DialFit, Press_CountsUpTo12FromTheKnob) {
  SizedDial form(140);
  test::RunForm(form, false, [&] {
    const DialLook look = form.Look();
    const int edge = look.centerX + look.radius + 12;
    for (const int x : {edge + 1, edge}) {
      form.dial.pos = 10;
      SendMessage(form.dial.impl->hwnd, WM_LBUTTONDOWN, MouseArgs::cLeft, look.centerY << 16 | x);
      SendMessage(form.dial.impl->hwnd, WM_LBUTTONUP, 0, look.centerY << 16 | x);
      EXPECT_EQ(form.dial.pos.Get(), x == edge ? 50 : 10) << x << " " << look.radius;
    }
  });
}

TEST(DialFit, MoveWithoutTheButton_TurnsNothing) {
  SizedDial form(140);
  test::RunForm(form, false, [&] {
    SendMessage(form.dial.impl->hwnd, WM_LBUTTONDOWN, MouseArgs::cLeft, 40 << 16 | 70);
    EXPECT_EQ(form.dial.pos.Get(), 30);
    SendMessage(form.dial.impl->hwnd, WM_MOUSEMOVE, 0, 70 << 16 | 100);
    EXPECT_EQ(form.dial.pos.Get(), 30);
    SendMessage(form.dial.impl->hwnd, WM_MOUSEMOVE, MouseArgs::cLeft, 70 << 16 | 100);
    EXPECT_EQ(form.dial.pos.Get(), 50);
    SendMessage(form.dial.impl->hwnd, WM_LBUTTONUP, 0, 70 << 16 | 100);
    SendMessage(form.dial.impl->hwnd, WM_MOUSEMOVE, MouseArgs::cLeft, 40 << 16 | 70);
    EXPECT_EQ(form.dial.pos.Get(), 50);
  });
}

}  // namespace
}  // namespace mavro
