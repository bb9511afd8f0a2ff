#include "CustomCtrl.h"

#include <gtest/gtest.h>

#include <QImage>
#include <functional>

#include "Button.h"
#include "ChildCtrl.h"
#include "EventLog.h"
#include "Form.h"
#include "GuiDriver.h"
#include "LayoutForm.h"
#include "Virtual.h"

namespace mavro {
namespace {

// Calls a function for each painting.
struct Painter : object {
  std::function<void(Graphics&)> paint;
  int count = 0;
  void On(PaintArgs& args) {
    ++count;
    if (paint) paint(*args.graphics);
  }
};

struct CustomForm : Form {
  CustomCtrl custom;
  Painter painter;
  CustomForm() {
    SetBounds(0, 0, 200, 150);
    custom.SetBounds(10, 10, 100, 80);
    Add(&custom);
  }
};

QColor Shown(const Control& control, int x, int y) {
  const QImage image = test::WidgetOf(control)->grab().toImage();
  const double ratio = image.devicePixelRatio();
  return image.pixelColor(int((x + 0.5) * ratio), int((y + 0.5) * ratio));
}

TEST(CustomCtrl, BackBuffer_IsShownAndKept) {
  CustomForm form;
  test::EventLog log;
  log.Listen("draw", form.custom.onDraw, [&](NotifyArgs&) {
    form.custom.BackBuffer().FillRect({0, 0, 100, 80}, Color::cRed);
  });
  test::RunForm(form, false, [&] {
    log.Take();
    EXPECT_EQ(Shown(form.custom, 50, 50), QColor(Qt::red));
    EXPECT_EQ(Shown(form.custom, 99, 79), QColor(Qt::red));
    EXPECT_EQ(log.Take(), "");
  });
}

TEST(CustomCtrl, Redraw_FiresOnDrawWithItsValue) {
  CustomForm form;
  test::EventLog log;
  log.Listen("draw", form.custom.onDraw);
  form.custom.Redraw(7);
  EXPECT_EQ(log.Take(), "");
  test::RunForm(form, false, [&] {
    log.Take();
    form.custom.Redraw(7);
    EXPECT_EQ(log.Take(), "draw:7 ");
  });
}

TEST(CustomCtrl, NewSize_RemakesTheBufferAndDraws) {
  CustomForm form;
  test::EventLog log;
  log.Listen("draw", form.custom.onDraw);
  log.Listen("resize", form.custom.onResize);
  test::RunForm(form, false, [&] {
    form.custom.BackBuffer().FillRect({0, 0, 100, 80}, Color::cRed);
    log.Take();
    form.custom.SetSize(120, 90);
    EXPECT_EQ(log.Take(), "resize:0 draw:0 ");
    EXPECT_NE(Shown(form.custom, 50, 50), QColor(Qt::red));
    form.custom.BackBuffer().SetPixel(119, 89, Color::cBlue);
    EXPECT_EQ(Shown(form.custom, 119, 89), QColor(Qt::blue));
  });
}

TEST(CustomCtrl, Border_StandsAroundTheBuffer) {
  CustomForm form;
  form.custom.borderStyle = BorderStyle::cFrame;
  form.custom.backColor = Color(Color::cYellow);
  test::EventLog log;
  log.Listen("draw", form.custom.onDraw,
             [&](NotifyArgs&) { form.custom.BackBuffer().SetPixel(0, 0, Color::cRed); });
  test::RunForm(form, false, [&] {
    EXPECT_EQ(form.custom.impl->hwnd->ClientWidth(), 98);
    EXPECT_EQ(Shown(form.custom, 1, 1), QColor(Qt::red));
    EXPECT_NE(Shown(form.custom, 0, 0), QColor(Qt::red));
  });
}

TEST(CustomCtrl, Hidden_IsNotDrawnWhenSized) {
  CustomForm form;
  form.custom.visible = false;
  test::EventLog log;
  log.Listen("draw", form.custom.onDraw);
  test::RunForm(form, false, [&] {
    EXPECT_EQ(log.Take(), "draw:0 ");
    form.custom.SetSize(50, 50);
    EXPECT_EQ(log.Take(), "");
    form.custom.visible = true;
    test::WidgetOf(form)->grab();
    EXPECT_EQ(log.Take(), "draw:0 ");
  });
}

TEST(CustomCtrl, Buffer_StartsInTheBackgroundColour) {
  CustomForm form;
  form.custom.backColor = Color(Color::cYellow);
  test::RunForm(form, false, [&] { EXPECT_EQ(Shown(form.custom, 50, 50), QColor(Qt::yellow)); });
}

TEST(CustomCtrl, OnPaint_DrawsOverTheBufferForOnce) {
  CustomForm form;
  form.custom.onPaint.Add_H(&form.painter, &Painter::On);
  form.painter.paint = [](Graphics& graphics) { graphics.FillRect({0, 0, 20, 20}, Color::cBlue); };
  test::RunForm(form, false, [&] {
    EXPECT_EQ(Shown(form.custom, 5, 5), QColor(Qt::blue));
    EXPECT_NE(form.custom.BackBuffer().GetPixel(5, 5), Color(Color::cBlue));
    form.painter.paint = nullptr;
    EXPECT_NE(Shown(form.custom, 5, 5), QColor(Qt::blue));
    EXPECT_GT(form.painter.count, 1);
  });
}

TEST(CustomCtrl, DialogCode_SaysAllKeysOnlyWhenWanted) {
  CustomForm form;
  test::RunForm(form, false, [&] {
    EXPECT_EQ(SendMessage(form.custom.impl->hwnd, WM_GETDLGCODE, VK_TAB, 0), 0);
    form.custom.wantsKeys = true;
    EXPECT_EQ(SendMessage(form.custom.impl->hwnd, WM_GETDLGCODE, VK_TAB, 0), 4);
  });
}

TEST(CustomCtrl, WantedKeys_AreTheHandlersFirst) {
  CustomForm form;
  Button button;
  button.SetBounds(120, 10, 60, 30);
  form.Add(&button);
  form.custom.wantsKeys = true;
  struct Keys : object {
    int last = 0;
    bool handle = true;
    void On(KeyArgs& args) {
      last = args.key;
      args.handled = handle;
    }
  } keys;
  form.custom.onKeyDown.Add_H(&keys, &Keys::On);
  test::RunForm(form, false, [&] {
    EXPECT_TRUE(form.custom.IsFocused());
    test::Key(form, Qt::Key_Tab);
    EXPECT_EQ(keys.last, VK_TAB);
    EXPECT_TRUE(form.custom.IsFocused());
    keys.handle = false;
    test::Key(form, Qt::Key_Tab);
    EXPECT_TRUE(button.IsFocused());
  });
}

TEST(CustomCtrl, SizesWithoutSense_NeverCrash) {
  CustomForm form;
  test::EventLog log;
  log.Listen("draw", form.custom.onDraw, [&](NotifyArgs&) {
    form.custom.BackBuffer().FillRect({0, 0, 1 << 20, 1 << 20}, Color::cRed);
  });
  test::RunForm(form, false, [&] {
    for (const int side : {0, -50, 1, 100000, 16777215, 20}) {
      form.custom.SetBounds(-side, -side, side, side / 2);
      form.custom.Redraw();
    }
    EXPECT_EQ(Shown(form.custom, 5, 5), QColor(Qt::red));
  });
}

TEST(CustomCtrl, RemovedAndAddedAgain_HasItsBuffer) {
  CustomForm form;
  test::RunForm(form, false, [&] {
    form.Remove(&form.custom);
    EXPECT_FALSE(form.custom.BackBuffer().IsOpen());
    form.Add(&form.custom);
    form.custom.BackBuffer().SetPixel(3, 3, Color::cRed);
    EXPECT_EQ(Shown(form.custom, 3, 3), QColor(Qt::red));
  });
}

// ChildCtrl and the stand-ins.

TEST(ChildCtrl, New_HasItsDefaultSizeAndNoPainter) {
  ChildCtrl child;
  EXPECT_EQ(child.Bounds(), (Rect{0, 0, 180, 80}));
  EXPECT_EQ(child.painter, nullptr);
}

struct PlaceholderForm : Form {
  ChildCtrl plain{PaintPlaceholder}, combo{PaintComboPlaceholder}, spin{PaintSpinPlaceholder}, bare;
  PlaceholderForm() {
    SetBounds(0, 0, 220, 200);
    plain.SetLocation(10, 10);
    combo.SetBounds(10, 100, 80, 24);
    combo.flag = true;
    spin.SetBounds(110, 100, 80, 24);
    bare.SetBounds(10, 140, 40, 40);
    for (ChildCtrl* child : {&plain, &combo, &spin, &bare}) {
      child->text = "name";
      Add(child);
    }
  }
};

// Left edge of what is painted in the text colour within a part of a control; -1 for nothing.
int InkFrom(const Control& control, int left, int right) {
  const QImage image = test::WidgetOf(control)->grab().toImage();
  const double ratio = image.devicePixelRatio();
  for (int x = int(left * ratio); x < int(right * ratio); ++x)
    for (int y = 0; y < image.height(); ++y)
      if (qGray(image.pixel(x, y)) < 100) return int(x / ratio);
  return -1;
}

TEST(Placeholders, Default_ShowsTheTextOnTheWindowGround) {
  PlaceholderForm form;
  test::RunForm(form, false, [&] {
    const QColor ground = QApplication::palette().color(QPalette::Base);
    EXPECT_EQ(Shown(form.plain, 150, 60), ground);
    for (const auto& [x, y] : {std::pair{0, 40}, {179, 40}, {90, 0}, {90, 79}})
      EXPECT_NE(Shown(form.plain, x, y), ground) << "a frame, " << x << "," << y;
    EXPECT_EQ(Shown(form.plain, 178, 78), ground);
    EXPECT_GE(InkFrom(form.plain, 0, 180), 4);
    EXPECT_LE(InkFrom(form.plain, 0, 180), 7);
    form.plain.text = "";
    EXPECT_EQ(InkFrom(form.plain, 0, 180), -1);
  });
}

TEST(Placeholders, Combo_HasAnArrowButtonAtTheRightEdge) {
  PlaceholderForm form;
  test::RunForm(form, false, [&] {
    EXPECT_LE(InkFrom(form.combo, 0, 60), 7);
    EXPECT_EQ(Shown(form.combo, 63, 20), QApplication::palette().color(QPalette::Window));
    EXPECT_GE(InkFrom(form.combo, 61, 79), 64);
    EXPECT_NE(Shown(form.combo, 58, 20), QApplication::palette().color(QPalette::Window));
    // The triangle points down: wider above than below.
    EXPECT_LT(qGray(Shown(form.combo, 68, 10).rgb()), 128);
    EXPECT_GT(qGray(Shown(form.combo, 67, 13).rgb()), 128);
  });
}

TEST(Placeholders, Spin_HasTheTextInTheMiddleAndTwoArrows) {
  PlaceholderForm form;
  test::RunForm(form, false, [&] {
    EXPECT_GE(InkFrom(form.spin, 0, 60), 25);
    EXPECT_LE(InkFrom(form.spin, 0, 60), 28);
    EXPECT_LT(qGray(Shown(form.spin, 70, 6).rgb()), 128);
    EXPECT_LT(qGray(Shown(form.spin, 70, 18).rgb()), 128);
    EXPECT_GT(qGray(Shown(form.spin, 67, 4).rgb()), 128);
    EXPECT_GT(qGray(Shown(form.spin, 67, 20).rgb()), 128);
  });
}

TEST(Placeholders, OwnColours_AreUsed) {
  PlaceholderForm form;
  form.plain.backColor = Color(Color::cYellow);
  test::RunForm(form, false, [&] {
    EXPECT_EQ(Shown(form.plain, 150, 60), QColor(Qt::yellow));
    test::Shot(form, "placeholders");
  });
}

// The canvas.

struct CanvasForm : Form {
  LayoutForm canvas;
  Button button;
  CanvasForm() {
    SetBounds(0, 0, 240, 180);
    canvas.SetBounds(10, 10, 200, 150);
    button.SetBounds(20, 20, 80, 30);
    canvas.Add(&button);
    Add(&canvas);
  }
};

TEST(LayoutForm, Grid_HasADotEveryEightPixels) {
  CanvasForm form;
  form.canvas.Remove(&form.button);
  test::RunForm(form, false, [&] {
    const QColor dot = Shown(form.canvas, 8, 16);
    const QColor ground = Shown(form.canvas, 9, 16);
    EXPECT_NE(dot, ground);
    EXPECT_EQ(Shown(form.canvas, 0, 0), dot);
    EXPECT_EQ(Shown(form.canvas, 192, 144), dot);
    EXPECT_EQ(Shown(form.canvas, 12, 12), ground);
    form.canvas.SetSize(220, 160);
    EXPECT_EQ(Shown(form.canvas, 216, 152), dot);
  });
}

TEST(LayoutForm, Mouse_ReachesTheCanvasAndNeverItsChildren) {
  CanvasForm form;
  struct Mouse : object {
    std::string log;
    void On(MouseArgs& args) {
      log += std::to_string(args.kind) + "@" + std::to_string(args.x) + "," +
             std::to_string(args.y) + " ";
    }
  } mouse;
  form.canvas.onMouseDown.Add_H(&mouse, &Mouse::On);
  form.canvas.onMouseMove.Add_H(&mouse, &Mouse::On);
  form.canvas.onMouseUp.Add_H(&mouse, &Mouse::On);
  test::EventLog clicks;
  clicks.Listen("click", form.button.onClick);
  test::RunForm(form, false, [&] {
    test::Click(form.canvas, QPoint(50, 35));
    EXPECT_EQ(mouse.log, "4@50,35 1@50,35 2@50,35 ");
    mouse.log.clear();
    QTest::mouseMove(test::WidgetOf(form)->windowHandle(), QPoint(70, 50));
    EXPECT_EQ(mouse.log, "4@60,40 ");
    EXPECT_EQ(clicks.Take(), "");
  });
}

TEST(LayoutForm, ChildMadeLater_IsUnderTheGlassToo) {
  CanvasForm form;
  Button late;
  late.SetBounds(20, 80, 80, 30);
  test::EventLog log;
  log.Listen("click", late.onClick);
  test::RunForm(form, false, [&] {
    form.canvas.Add(&late);
    test::Click(form.canvas, QPoint(50, 95));
    EXPECT_EQ(log.Take(), "");
    test::Shot(form, "layout-form");
  });
}

TEST(LayoutForm, Current_IsTheOneThatHasAWindow) {
  test::EventLog log;
  {
    CanvasForm form;
    log.Listen("resize", form.canvas.onResize);
    EXPECT_EQ(theLayoutForm, nullptr);
    test::RunForm(form, false, [&] { EXPECT_EQ(theLayoutForm, &form.canvas); });
    EXPECT_NE(log.Take(), "");
    EXPECT_EQ(theLayoutForm, nullptr);
  }
}

}  // namespace
}  // namespace mavro
