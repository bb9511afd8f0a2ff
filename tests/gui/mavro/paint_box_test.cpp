#include "PaintBox.h"

#include <gtest/gtest.h>

#include <memory>

#include "Button.h"
#include "EventLog.h"
#include "Form.h"
#include "GuiDriver.h"
#include "Looks.h"

namespace mavro {
namespace {

struct BoxForm : Form {
  std::unique_ptr<PaintBox> box = std::make_unique<PaintBox>();
  Button button;
  BoxForm() {
    SetBounds(0, 0, 240, 150);
    button.SetBounds(150, 10, 60, 30);
    Add(&button);
    box->SetBounds(10, 10, 100, 80);
    Add(box.get());
  }
};

// Counts paintings.
struct Painter : object {
  int count = 0;
  void On(PaintArgs& args) {
    ++count;
    args.graphics->FillRect({0, 0, 10, 10}, Color::cBlue);
  }
};

TEST(PaintBox, Drawing_StaysAndMarksAreRenewed) {
  BoxForm form;
  test::EventLog log;
  Painter painter;
  log.Listen("draw", form.box->onDraw, [&](NotifyArgs&) {
    form.box->BackBuffer().FillRect({0, 0, 100, 80}, Color::cRed);
  });
  form.box->onPaint.Add_H(&painter, &Painter::On);
  test::RunForm(form, false, [&] {
    log.Take();
    painter.count = 0;
    form.box->Invalidate();
    const QImage image = test::Pixels(*form.box);
    EXPECT_EQ(image.pixelColor(5, 5), QColor(Qt::blue));
    EXPECT_EQ(image.pixelColor(image.width() - 2, image.height() - 2), QColor(Qt::red));
    EXPECT_GE(painter.count, 1);
    EXPECT_EQ(log.Take(), "") << "a painting alone draws nothing";
    form.box->Redraw(3);
    EXPECT_EQ(log.Take(), "draw:3 ");
    form.box->enabled = false;
    EXPECT_EQ(log.Take(), "draw:0 ") << "whatever makes the drawing invalid asks for it";
  });
}

TEST(PaintBox, Click_IsAPressAndAReleaseInside) {
  BoxForm form;
  test::EventLog log;
  log.Listen("click", form.box->onClick);
  log.Listen("double", form.box->onDblClick);
  test::RunForm(form, false, [&] {
    QWindow* window = test::WidgetOf(form)->windowHandle();
    test::Click(*form.box);
    EXPECT_EQ(log.Take(), "click:0 ");
    QTest::mousePress(window, Qt::LeftButton, Qt::NoModifier, {50, 50});
    QTest::mouseMove(window, {130, 50});
    QTest::mouseRelease(window, Qt::LeftButton, Qt::NoModifier, {130, 50});
    EXPECT_EQ(log.Take(), "") << "released outside";
    test::Click(*form.box, QPoint(), Qt::RightButton);
    EXPECT_EQ(log.Take(), "");
    QTest::mouseDClick(window, Qt::LeftButton, Qt::NoModifier, {50, 50});
    EXPECT_EQ(log.Take(), "click:0 double:0 ");
    test::Click(form.button);
    EXPECT_EQ(log.Take(), "");
  });
}

TEST(PaintBox, WithKeyHandlers_TakesTheFocusAndTheKeys) {
  BoxForm form;
  struct Keys : object {
    int last = 0;
    void On(KeyArgs& args) { last = args.key; }
  } keys;
  form.box->onKeyDown.Add_H(&keys, &Keys::On);
  test::RunForm(form, false, [&] {
    form.button.Focus();
    test::Click(*form.box);
    EXPECT_TRUE(form.box->IsFocused());
    test::Key(form, Qt::Key_Left);
    EXPECT_EQ(keys.last, Key::cLeft);
    test::Key(form, Qt::Key_Tab);
    EXPECT_TRUE(form.button.IsFocused()) << "a key without use moves the focus";
    test::Key(form, Qt::Key_Tab);
    EXPECT_TRUE(form.box->IsFocused());
  });
}

TEST(PaintBox, WithoutKeyHandlers_LeavesTheFocusWhereItIs) {
  BoxForm form;
  test::RunForm(form, false, [&] {
    form.button.Focus();
    test::Click(*form.box);
    EXPECT_TRUE(form.button.IsFocused());
  });
}

TEST(PaintBox, HandlerThatDeletesIt_IsSafe) {
  BoxForm form;
  test::EventLog log;
  log.Listen("click", form.box->onClick, [&](NotifyArgs&) { form.box.reset(); });
  test::RunForm(form, false, [&] {
    test::Click(*form.box);
    EXPECT_EQ(log.Take(), "click:0 ");
    EXPECT_FALSE(form.box);
  });
}

}  // namespace
}  // namespace mavro
