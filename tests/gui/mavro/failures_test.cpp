#include <gtest/gtest.h>

#include <stdexcept>

#include "Button.h"
#include "ChildCtrl.h"
#include "CustomCtrl.h"
#include "Edit.h"
#include "EventLog.h"
#include "Form.h"
#include "GuiDriver.h"
#include "IdleHook.h"
#include "ScriptedDialogs.h"

namespace mavro {
namespace {

// Throws from whatever it handles.
struct Thrower : object {
  int calls = 0;
  template <class Args>
  void On(Args&) {
    ++calls;
    throw std::runtime_error("handler failed");
  }
};

struct ThrowingForm : Form {
  CustomCtrl custom;
  Button button;
  Edit edit;
  Thrower thrower;
  test::ScriptedDialogs dialogs;
  ThrowingForm() {
    SetBounds(0, 0, 200, 150);
    custom.SetBounds(10, 10, 100, 60);
    button.SetBounds(10, 80, 80, 30);
    edit.SetBounds(100, 80, 80, 24);
    Add(&custom);
    Add(&button);
    Add(&edit);
  }
};

constexpr char cMessage[] = "Error: A command failed:\n\nhandler failed";

TEST(Failures, Painting_IsReportedOnceAndNotTriedAgain) {
  ThrowingForm form;
  form.custom.onPaint.Add_H(&form.thrower, &Thrower::On<PaintArgs>);
  test::RunForm(form, false, [&] {
    EXPECT_TRUE(test::WaitFor([&] { return !form.dialogs.texts.empty(); }));
    for (int i = 0; i < 5; ++i) test::WidgetOf(form)->grab();
    QApplication::processEvents();
    EXPECT_EQ(form.dialogs.texts, std::vector<std::string>{cMessage});
    EXPECT_EQ(form.thrower.calls, 1);
  });
}

TEST(Failures, Painter_IsReportedOnce) {
  ThrowingForm form;
  ChildCtrl child([](ChildCtrl&, Graphics&) { throw std::runtime_error("handler failed"); });
  form.Add(&child);
  test::RunForm(form, false, [&] {
    EXPECT_TRUE(test::WaitFor([&] { return !form.dialogs.texts.empty(); }));
    test::WidgetOf(form)->grab();
    QApplication::processEvents();
    EXPECT_EQ(form.dialogs.texts.size(), 1u);
  });
}

TEST(Failures, Click_IsReportedEachTime) {
  ThrowingForm form;
  form.button.onClick.Add_H(&form.thrower, &Thrower::On<NotifyArgs>);
  test::RunForm(form, false, [&] {
    test::Click(form.button);
    test::Click(form.button);
    EXPECT_EQ(form.dialogs.texts, (std::vector<std::string>{cMessage, cMessage}));
  });
}

// The box itself takes the focus away and gives it back.
TEST(Failures, Focus_IsReportedOnce) {
  ThrowingForm form;
  form.edit.onGotFocus.Add_H(&form.thrower, &Thrower::On<NotifyArgs>);
  test::RunForm(form, false, [&] {
    for (int i = 0; i < 3; ++i) {
      form.edit.Focus();
      form.button.Focus();
    }
    EXPECT_EQ(form.thrower.calls, 3);
    EXPECT_EQ(form.dialogs.texts.size(), 1u);
  });
}

TEST(Failures, SizeAndDrawing_AreReportedOnce) {
  ThrowingForm form;
  test::RunForm(form, false, [&] {
    form.custom.onResize.Add_H(&form.thrower, &Thrower::On<NotifyArgs>);
    for (int side = 50; side < 55; ++side) form.custom.SetSize(side, side);
    EXPECT_EQ(form.dialogs.texts.size(), 1u);
  });
}

TEST(Failures, MouseMove_IsReportedOnce) {
  ThrowingForm form;
  form.custom.onMouseMove.Add_H(&form.thrower, &Thrower::On<MouseArgs>);
  test::RunForm(form, false, [&] {
    QWindow* window = test::WidgetOf(form)->windowHandle();
    for (int x = 20; x < 60; x += 10) QTest::mouseMove(window, QPoint(x, 30));
    EXPECT_GT(form.thrower.calls, 1);
    EXPECT_EQ(form.dialogs.texts.size(), 1u);
  });
}

TEST(Failures, Keys_AreReportedAndTheFormGoesOn) {
  ThrowingForm form;
  form.onKeyPreview.Add_H(&form.thrower, &Thrower::On<NotifyArgs>);
  test::RunForm(form, false, [&] {
    form.edit.Focus();
    test::Key(form, Qt::Key_A);
    EXPECT_EQ(form.dialogs.texts.size(), 1u);
  });
}

TEST(Failures, FirstShow_IsReported) {
  ThrowingForm form;
  form.onShow.Add_H(&form.thrower, &Thrower::On<NotifyArgs>);
  test::RunForm(form, false, [&] { EXPECT_EQ(form.dialogs.texts.size(), 1u); });
}

TEST(Failures, IdleHook_IsReportedOnce) {
  ThrowingForm form;
  static int passes;
  passes = 0;
  test::RunForm(form, false, [&] {
    TheIdleSlot().hook = [] {
      ++passes;
      throw std::runtime_error("idle failed");
    };
    test::Key(form, Qt::Key_Shift);
    EXPECT_TRUE(test::WaitFor([&] { return true; }));
  });
  TheIdleSlot().hook = nullptr;
  EXPECT_LE(form.dialogs.texts.size(), 1u);
}

TEST(Failures, ThrownThingsThatAreNoExceptions_AreReported) {
  ThrowingForm form;
  struct Odd : object {
    void On(NotifyArgs&) { throw 7; }
  } odd;
  form.button.onClick.Add_H(&odd, &Odd::On);
  test::RunForm(form, false, [&] {
    test::Click(form.button);
    EXPECT_EQ(form.dialogs.texts,
              std::vector<std::string>{"Error: A command failed:\n\nunknown exception"});
  });
}

// A failure while a message is open does not open another one.
TEST(Failures, WhileOneIsShown_OthersOpenNoBox) {
  ThrowingForm form;
  static ThrowingForm* theForm;
  static int boxes;
  theForm = &form;
  boxes = 0;
  form.button.onClick.Add_H(&form.thrower, &Thrower::On<NotifyArgs>);
  Dialogs().message = [](const std::string&, const std::string&, int) {
    if (++boxes < 5) test::Click(theForm->button);
    return Answer::cOk;
  };
  test::RunForm(form, false, [&] {
    test::Click(form.button);
    EXPECT_EQ(boxes, 1);
    EXPECT_EQ(form.thrower.calls, 2);
  });
}

}  // namespace
}  // namespace mavro
