#include "DialCtrl.h"

#include <gtest/gtest.h>

#include <QAccessible>
#include <QImage>
#include <cmath>
#include <limits>
#include <memory>

#include "DarkPalette.h"
#include "Edit.h"
#include "EventLog.h"
#include "Form.h"
#include "GuiDriver.h"

namespace mavro {
namespace {

constexpr double cPi = 3.141592654;

// Shading, by the constants: the light comes from -2.356.

TEST(Shade, TowardsTheLight_IsTheFirstColour) {
  EXPECT_EQ(Shade(-2.356, Color(0x102030), Color(0xF0E0D0)), Color(0x102030));
}

TEST(Shade, AwayFromTheLight_IsTheSecondColour) {
  EXPECT_EQ(Shade(-2.356 + cPi, Color(0x102030), Color(0xF0E0D0)), Color(0xF0E0D0));
}

// a = -2.356 - 3 = -5.356, below -3.1415: plus 6.293 is 0.937; t = (cos 0.937 + 1) / 2 = 0.7960.
TEST(Shade, BelowMinusPi_AddsTheConstantThatIsNotTwoPi) {
  const double t = (std::cos(-2.356 - 3 + 6.293) + 1) * 0.5;
  EXPECT_EQ(Shade(3, Color(0xFF0000), Color(0)),
            Color(static_cast<int>(std::lround(255 * t)) << 16));
  EXPECT_NE(std::lround(255 * t), std::lround(255 * (std::cos(-2.356 - 3) + 1) * 0.5));
}

TEST(Shade, EachChannel_IsMixedAndRounded) {
  const double t = (std::cos(-2.356) + 1) * 0.5;
  const auto mixed = [t](int a, int b) {
    return static_cast<int>(std::lround((1 - t) * b + t * a));
  };
  EXPECT_EQ(Shade(0, Color(0x10C080), Color(0xE02040)),
            Color(mixed(0x10, 0xE0) << 16 | mixed(0xC0, 0x20) << 8 | mixed(0x80, 0x40)));
}

TEST(Shade, SystemAngles_UpToPi_AreAllowed) {
  Shade(cPi, Color::cWhite, Color::cBlack);
  Shade(-cPi, Color::cWhite, Color::cBlack);
}

TEST(ShadeDeath, AngleOutOfRange_StopsWithItsExpression) {
  EXPECT_DEATH(Shade(3.1416, Color(), Color()), "dAngle > -3.1416 && dAngle < 3.1416");
  EXPECT_DEATH(Shade(-3.2, Color(), Color()), "DialCtrl.cpp.*dAngle > -3.1416 && dAngle < 3.1416");
  EXPECT_DEATH(Shade(std::nan(""), Color(), Color()), "dAngle > -3.1416");
}

TEST(Scaled, Channels_AreRounded) {
  EXPECT_EQ(Scaled(Color(0xFFFFFF), 0.7), Color(0xB3B3B3));
  EXPECT_EQ(Scaled(Color(0xB3B3B3), 0.7), Color(0x7D7D7D));
  EXPECT_EQ(Scaled(Color(0x010203), 0.7), Color(0x010102));
}

struct Ring : testing::Test {
  Bitmap bitmap{41, 41};
  Graphics graphics{bitmap};
  int Painted() const {
    int count = 0;
    for (int y = 0; y < 41; ++y)
      for (int x = 0; x < 41; ++x) count += bitmap.Row(y)[x] != 0;
    return count;
  }
};

struct MirrorRow {
  int dx, dy;
  double angle;
};

// The first step of the walk, x = r and y = 0, and its eight mirror pixels.
TEST_F(Ring, MirrorPixels_HaveTheShadesOfTheirAngles) {
  DrawRing(graphics, 20, 20, 10, Color(0xF0F0F0), Color(0x101010));
  const MirrorRow rows[] = {{0, 10, cPi / 2}, {-10, 0, cPi}, {0, -10, -cPi / 2}, {10, 0, 0}};
  for (const MirrorRow& row : rows) {
    // Two mirror pixels coincide on an axis; either's angle is the same place.
    const int shown = graphics.GetPixel(20 + row.dx, 20 + row.dy).Value() & 0xFF;
    const int wanted = Shade(row.angle, Color(0xF0F0F0), Color(0x101010)).Value() & 0xFF;
    EXPECT_NEAR(shown, wanted, 2) << row.dx << "," << row.dy;
  }
}

TEST_F(Ring, Pixels_StandAtTheRadius) {
  DrawRing(graphics, 20, 20, 15, Color::cWhite, Color::cGray);
  for (int y = 0; y < 41; ++y)
    for (int x = 0; x < 41; ++x)
      if (bitmap.Row(y)[x] != 0) {
        EXPECT_NEAR(std::hypot(x - 20, y - 20), 15, 0.8) << x << "," << y;
      }
  EXPECT_GT(Painted(), 80);
}

TEST_F(Ring, RadiusZero_IsOnePixel) {
  DrawRing(graphics, 20, 20, 0, Color::cWhite, Color::cGray);
  EXPECT_EQ(Painted(), 1);
}

TEST_F(Ring, PartlyOutside_IsClipped) {
  DrawRing(graphics, 0, 0, 300, Color::cWhite, Color::cGray);
  DrawRing(graphics, 0, 0, 10, Color::cWhite, Color::cGray);
  EXPECT_GT(Painted(), 5);
}

TEST(RingDeath, ClosedGraphics_StopsAtTheAssertion) {
  Graphics closed;
  EXPECT_DEATH(DrawRing(closed, 5, 5, 3, Color(), Color()), "dcimpl != NULL");
}

// The control, without a window.

TEST(DialCtrl, New_HasTheDefaults) {
  DialCtrl dial;
  EXPECT_EQ(dial.pos.Get(), 0);
  EXPECT_EQ(dial.min.Get(), 0);
  EXPECT_EQ(dial.max.Get(), 60);
  EXPECT_EQ(dial.steps.Get(), 60);
  EXPECT_TRUE(dial.showPos);
  EXPECT_EQ(dial.labels.Get(), DialCtrl::cMinMax);
  EXPECT_EQ(dial.Bounds(), (Rect{0, 0, 140, 140}));
  EXPECT_EQ(dial.backColor.Get(), Color(Color::cControl));
  EXPECT_EQ(DialCtrl::cNone, 0);
  EXPECT_EQ(DialCtrl::cView, 2);
}

TEST(DialCtrl, SetValue_PutsOnTheGridAndTellsWhetherItChanged) {
  DialCtrl dial;
  EXPECT_TRUE(dial.SetValue(12.4));
  EXPECT_EQ(dial.pos.Get(), 12);
  EXPECT_FALSE(dial.SetValue(11.6));
  EXPECT_TRUE(dial.SetValue(99));
  EXPECT_EQ(dial.pos.Get(), 60);
}

TEST(DialCtrl, Pos_GoesThroughTheGridToo) {
  DialCtrl dial;
  dial.pos = 12.4;
  EXPECT_EQ(dial.pos.Get(), 12);
  dial.pos = -5;
  EXPECT_EQ(dial.pos.Get(), 0);
}

TEST(DialCtrl, PresentPosition_FiresNothing) {
  test::EventLog log;
  DialCtrl dial;
  log.Listen("change", dial.onChange);
  dial.pos = 10;
  EXPECT_EQ(log.Take(), "change:0 ");
  dial.pos = 10;
  dial.pos = 10.2;
  EXPECT_FALSE(dial.SetValue(10));
  EXPECT_EQ(log.Take(), "");
}

TEST(DialCtrl, MinEqualToMax_HasOneValueAndDoesNotCrash) {
  DialCtrl dial;
  dial.min = 5;
  dial.max = 5;
  dial.SetValue(7);
  EXPECT_EQ(dial.pos.Get(), 5);
}

struct DialForm : Form {
  Edit edit;
  DialCtrl dial;
  DialForm() {
    SetBounds(0, 0, 300, 220);
    edit.SetBounds(180, 10, 80, 24);
    dial.SetBounds(10, 10, 140, 140);
    Add(&edit);
    Add(&dial);
  }
};

TEST(DialCtrl, Creation_ClampsThePosition) {
  DialForm form;
  form.dial.pos = 50;
  form.dial.max = 40;
  test::RunForm(form, false, [&] { EXPECT_EQ(form.dial.pos.Get(), 40); });
}

// Designed forms set the properties in this order.
TEST(DialCtrl, PosBeforeMaxAndSteps_IsKept) {
  DialForm form;
  form.dial.pos = 72.5;
  form.dial.min = 10;
  form.dial.max = 100;
  form.dial.steps = 180;
  EXPECT_EQ(form.dial.pos, 72.5);
  test::RunForm(form, false, [&] { EXPECT_EQ(form.dial.pos, 72.5); });
}

TEST(DialCtrl, PosBeforeMaxAndSteps_IsKeptWithAWindowToo) {
  DialForm form;
  test::RunForm(form, false, [&] {
    form.dial.pos = 72.5;
    EXPECT_EQ(form.dial.pos, 60);
    form.dial.max = 100;
    EXPECT_NEAR(form.dial.pos, 73.33, 0.01) << "on the grid of 60 steps";
    form.dial.steps = 200;
    EXPECT_EQ(form.dial.pos, 72.5);
  });
}

TEST(DialCtrl, Scale_ChangedAfterATurn_KeepsWhatTheTurnGave) {
  DialForm form;
  form.dial.pos = 72.5;
  test::RunForm(form, false, [&] {
    form.dial.Focus();
    test::Key(form, Qt::Key_Left);
    form.dial.max = 100;
    form.dial.steps = 100;
    EXPECT_EQ(form.dial.pos, 59);
  });
}

TEST(DialCtrl, Keys_GoToTheEndsAndByOneStep) {
  test::EventLog log;
  DialForm form;
  log.Listen("change", form.dial.onChange);
  test::RunForm(form, false, [&] {
    form.dial.Focus();
    test::Key(form, Qt::Key_End);
    EXPECT_EQ(form.dial.pos.Get(), 60);
    test::Key(form, Qt::Key_Left);
    EXPECT_EQ(form.dial.pos.Get(), 59);
    test::Key(form, Qt::Key_Home);
    EXPECT_EQ(form.dial.pos.Get(), 0);
    test::Key(form, Qt::Key_Right);
    EXPECT_EQ(form.dial.pos.Get(), 1);
    EXPECT_EQ(log.Take(), "change:0 change:0 change:0 change:0 ");
    test::Key(form, Qt::Key_Up);
    test::Key(form, Qt::Key_A);
    EXPECT_EQ(log.Take(), "");
  });
}

// All keys are the dial's, but those it has no use for still move the focus.
TEST(DialCtrl, Tab_LeavesTheDial) {
  DialForm form;
  test::RunForm(form, false, [&] {
    EXPECT_TRUE(form.edit.IsFocused());
    test::Key(form, Qt::Key_Tab);
    EXPECT_TRUE(form.dial.IsFocused());
    test::Key(form, Qt::Key_Tab);
    EXPECT_TRUE(form.edit.IsFocused());
    test::Key(form, Qt::Key_Tab);
    test::Key(form, Qt::Key_Tab, Qt::ShiftModifier);
    EXPECT_TRUE(form.edit.IsFocused());
  });
}

TEST(DialCtrl, PressOnTheKnob_TakesTheFocusAndTurns) {
  DialForm form;
  test::RunForm(form, false, [&] {
    test::Click(form.dial, QPoint(70, 40));
    EXPECT_TRUE(form.dial.IsFocused());
    EXPECT_EQ(form.dial.pos.Get(), 30);
    test::Click(form.dial, QPoint(40, 70));
    EXPECT_EQ(form.dial.pos.Get(), 10);
    test::Click(form.dial, QPoint(100, 70));
    EXPECT_EQ(form.dial.pos.Get(), 50);
  });
}

TEST(DialCtrl, PressOutsideTheCircle_DoesNotTakeTheFocus) {
  DialForm form;
  test::RunForm(form, false, [&] {
    test::Click(form.dial, QPoint(3, 3));
    EXPECT_FALSE(form.dial.IsFocused());
    EXPECT_EQ(form.dial.pos.Get(), 0);
  });
}

TEST(DialCtrl, DraggingFromThere_TurnsOnlyWhatWasPressed) {
  DialForm form;
  test::RunForm(form, false, [&] {
    QWindow* window = test::WidgetOf(form)->windowHandle();
    const auto at = [&](int x, int y) { return QPoint(10 + x, 10 + y); };
    QTest::mousePress(window, Qt::LeftButton, Qt::NoModifier, at(70, 40));
    QTest::mouseMove(window, at(135, 70));
    EXPECT_EQ(form.dial.pos.Get(), 50);
    QTest::mouseRelease(window, Qt::LeftButton, Qt::NoModifier, at(135, 70));
    QTest::mouseMove(window, at(70, 20));
    EXPECT_EQ(form.dial.pos.Get(), 50);
    QTest::mousePress(window, Qt::LeftButton, Qt::NoModifier, at(2, 2));
    QTest::mouseMove(window, at(70, 20));
    EXPECT_EQ(form.dial.pos.Get(), 50);
    QTest::mouseRelease(window, Qt::LeftButton, Qt::NoModifier, at(70, 20));
  });
}

TEST(DialCtrl, HandlerThatDeletesTheDial_IsSafe) {
  Form form;
  form.SetBounds(0, 0, 300, 220);
  struct Deleter : object {
    std::unique_ptr<DialCtrl> dial;
    void On(NotifyArgs&) { dial.reset(); }
  } deleter;
  deleter.dial = std::make_unique<DialCtrl>();
  deleter.dial->onChange.Add_H(&deleter, &Deleter::On);
  form.Add(deleter.dial.get());
  test::RunForm(form, false, [&] {
    deleter.dial->Focus();
    test::Key(form, Qt::Key_End);
    EXPECT_EQ(deleter.dial, nullptr);
    EXPECT_EQ(form.GetControlCount(), 0);
  });
}

TEST(DialCtrl, ScreenReaders_SeeASliderWithItsValue) {
  DialForm form;
  form.dial.text = "Volume";
  form.dial.max = 11;
  form.dial.steps = 22;
  form.dial.pos = 4.5;
  test::RunForm(form, false, [&] {
    QAccessibleInterface* access = QAccessible::queryAccessibleInterface(test::WidgetOf(form.dial));
    ASSERT_TRUE(access);
    EXPECT_EQ(access->role(), QAccessible::Slider);
    EXPECT_EQ(access->text(QAccessible::Name), "Volume");
    ASSERT_TRUE(access->valueInterface());
    EXPECT_EQ(access->valueInterface()->currentValue().toDouble(), 4.5);
    EXPECT_EQ(access->valueInterface()->maximumValue().toDouble(), 11);
    EXPECT_EQ(access->valueInterface()->minimumValue().toDouble(), 0);
    EXPECT_EQ(access->valueInterface()->minimumStepSize().toDouble(), 0.5);
    form.dial.pos = 6;
    EXPECT_EQ(access->valueInterface()->currentValue().toDouble(), 6);
  });
}

int Differences(const QImage& a, const QImage& b) {
  int count = 0;
  for (int y = 0; y < a.height(); ++y)
    for (int x = 0; x < a.width(); ++x) count += a.pixel(x, y) != b.pixel(x, y);
  return count;
}

QImage Grab(const Control& control) {
  return test::WidgetOf(control)->grab().toImage();
}

TEST(DialCtrl, EveryOption_ChangesWhatIsShown) {
  DialForm form;
  test::RunForm(form, false, [&] {
    DialCtrl& dial = form.dial;
    QImage before = Grab(dial);
    const auto changed = [&] {
      const QImage now = Grab(dial);
      const int count = Differences(before, now);
      before = now;
      return count;
    };
    dial.pos = 30;
    EXPECT_GT(changed(), 50);
    dial.labels = DialCtrl::cNone;
    EXPECT_GT(changed(), 20);
    dial.labels = DialCtrl::cView;
    EXPECT_GT(changed(), 100);
    dial.showPos = false;
    EXPECT_GT(changed(), 10);
    dial.steps = 7;
    EXPECT_GT(changed(), 50);
    dial.min = -50;
    EXPECT_GT(changed(), 20);
    dial.max = 999;
    EXPECT_GT(changed(), 20);
    dial.text = "Level";
    EXPECT_GT(changed(), 20);
    dial.enabled = false;
    EXPECT_GT(changed(), 50);
    dial.pos = dial.pos;
    EXPECT_EQ(changed(), 0);
  });
}

TEST(DialCtrl, LitFromTheUpperLeft) {
  DialForm form;
  form.dial.labels = DialCtrl::cNone;
  form.dial.showPos = false;
  test::RunForm(form, false, [&] {
    const QImage shown = Grab(form.dial);
    const double ratio = shown.devicePixelRatio();
    const auto gray = [&](double dx, double dy) {
      return qGray(
          shown.pixel(static_cast<int>((70 + dx) * ratio), static_cast<int>((70 + dy) * ratio)));
    };
    // On the rim of the knob, whose radius is 61.
    EXPECT_GT(gray(-41.5, -41.5), gray(41.5, 41.5) + 20);
  });
}

struct BadScale {
  double min, max;
  int steps;
};

TEST(DialCtrl, ScalesWithoutSense_AreShownAndTurned) {
  const double infinite = std::numeric_limits<double>::infinity();
  for (const BadScale& scale :
       {BadScale{5, 5, 10}, BadScale{10, 0, 10}, BadScale{0, 60, 0}, BadScale{0, 60, -3},
        BadScale{0, infinite, 5}, BadScale{std::nan(""), 1, 5}, BadScale{0, 1e308, 1 << 30},
        BadScale{-1e308, 1e308, 7}}) {
    DialForm form;
    form.dial.min = scale.min;
    form.dial.max = scale.max;
    form.dial.steps = scale.steps;
    form.dial.labels = DialCtrl::cView;
    test::RunForm(form, false, [&] {
      test::Click(form.dial, QPoint(70, 40));
      form.dial.Focus();
      for (const Qt::Key key : {Qt::Key_End, Qt::Key_Left, Qt::Key_Home, Qt::Key_Right})
        test::Key(form, key);
      form.dial.pos = std::nan("");
      EXPECT_FALSE(Grab(form.dial).isNull()) << scale.min << ".." << scale.max;
    });
  }
}

TEST(DialCtrl, EndThatIsNoNumber_IsWhereTheOtherOneIs) {
  DialForm form;
  form.dial.min = std::nan("");
  form.dial.max = 7;
  test::RunForm(form, false, [&] {
    EXPECT_EQ(form.dial.pos, 7);
    form.dial.max = std::nan("");
    EXPECT_EQ(form.dial.pos, 0);
    EXPECT_FALSE(Grab(form.dial).isNull());
  });
}

// A loop over the steps would take minutes here.
TEST(DialCtrl, HugePrimeSteps_AreDrawnAtOnce_WithTicks) {
  DialForm form, few;
  for (DialForm* each : {&form, &few}) each->dial.labels = DialCtrl::cView;
  few.dial.steps = 1;
  form.dial.steps = 2147483647;
  form.dial.max = 2147483647.0;
  test::RunForm(form, false, [&] {
    const QImage shown = Grab(form.dial);
    for (int i = 0; i < 10; ++i) form.dial.pos += 1e8;
    EXPECT_GT(Differences(shown, Grab(form.dial)), 50);
    form.dial.steps = 1;
    EXPECT_GT(Differences(shown, Grab(form.dial)), 100) << "there were ticks between the ends";
  });
}

TEST(DialCtrl, NoRoomForLabels_ShowsTheKnob) {
  DialForm form;
  form.dial.max = 1e15;
  form.dial.labels = DialCtrl::cView;
  test::RunForm(form, false, [&] {
    for (const int side : {12, 30, 60}) {
      form.dial.SetSize(side, side);
      QApplication::processEvents();
      const QImage shown = Grab(form.dial);
      const double ratio = shown.devicePixelRatio();
      const int middle = static_cast<int>(side * ratio / 2);
      const QRgb ground = shown.pixel(0, 0);
      const int x = static_cast<int>((side / 2 + side / 5) * ratio);
      EXPECT_NE(shown.pixel(x, middle), ground) << side;
    }
  });
}

TEST(DialCtrl, SizesWithoutRoom_DoNotCrash) {
  DialForm form;
  test::RunForm(form, false, [&] {
    for (const int side : {0, 1, 7, 30, -20, 900}) {
      form.dial.SetSize(side, side);
      QApplication::processEvents();
      EXPECT_FALSE(Grab(form).isNull()) << side;
    }
  });
}

// A page of dials, for people to look at.
struct DialPage : Form {
  DialCtrl plain, few, all, bare, text, off, large, small;
  DialPage() {
    SetBounds(0, 0, 660, 400);
    Place(plain, 10, 10, 140);
    plain.pos = 20;
    Place(few, 160, 10, 140);
    few.steps = 8;
    few.max = 2;
    few.min = -2;
    few.pos = 0.5;
    few.labels = DialCtrl::cView;
    Place(all, 310, 10, 160);
    all.labels = DialCtrl::cView;
    all.max = 100;
    all.steps = 100;
    all.pos = 73;
    Place(bare, 480, 10, 100);
    bare.labels = DialCtrl::cNone;
    bare.showPos = false;
    bare.pos = 45;
    Place(text, 10, 160, 140);
    text.text = "Volume";
    text.pos = 60;
    Place(off, 160, 170, 140);
    off.enabled = false;
    Place(large, 310, 180, 210);
    large.labels = DialCtrl::cView;
    large.pos = 33;
    Place(small, 540, 180, 70);
  }
  void Place(DialCtrl& dial, int x, int y, int side) {
    dial.SetBounds(x, y, side, side);
    Add(&dial);
  }
};

TEST(DialCtrl, Looks) {
  const QPalette light = QApplication::palette();
  for (const bool isDark : {false, true}) {
    QApplication::setPalette(isDark ? test::DarkPalette() : light);
    DialPage page;
    test::RunForm(page, false, [&] {
      page.plain.Focus();
      const QString scale = qEnvironmentVariable("QT_SCALE_FACTOR", "1");
      test::Shot(page, (isDark ? "dials-dark-" : "dials-light-") + scale.toStdString());
      const QImage shown = Grab(page);
      EXPECT_EQ(qGray(shown.pixel(2, 2)) < 128, isDark);
    });
  }
  QApplication::setPalette(light);
}

TEST(DialCtrl, PaletteThatChanges_IsFollowed) {
  const QPalette light = QApplication::palette();
  DialForm form;
  test::RunForm(form, false, [&] {
    const QImage before = Grab(form.dial);
    QApplication::setPalette(test::DarkPalette());
    EXPECT_TRUE(test::WaitFor(
        [&] { return qGray(Grab(form.dial).pixel(2, 2)) < qGray(before.pixel(2, 2)) - 50; }));
  });
  QApplication::setPalette(light);
}

}  // namespace
}  // namespace mavro
