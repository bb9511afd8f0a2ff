// The keyboard focus can be seen, is reported, and is never on a button that can't be pressed.
#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QPushButton>
#include <QScrollBar>
#include <QStyleOption>

#include "Button.h"
#include "ButtonGroup.h"
#include "DataLink.h"
#include "Edit.h"
#include "EventLog.h"
#include "Form.h"
#include "GroupBox.h"
#include "GuiDriver.h"
#include "Label.h"
#include "Scroller.h"
#include "TabCtrl.h"
#include "TrackBar.h"

namespace mavro {
namespace {

// True if the focused widget shows its focus.
bool FocusIsSeen() {
  QWidget* focused = QApplication::focusWidget();
  if (!focused) return false;
  QStyleOption option;
  option.initFrom(focused);
  return option.state.testFlag(QStyle::State_HasFocus) &&
         option.state.testFlag(QStyle::State_KeyboardFocusChange);
}

struct FocusForm : Form {
  Edit edit;
  Button button;
  CheckBox check;
  RadioGroup radio;
  CheckGroup checks;
  TrackBar track;
  TabCtrl tabs;
  TabPage page;

  FocusForm() {
    SetBounds(0, 0, 500, 300);
    button.text = "&Press";
    check.text = "&Check";
    radio.text = "&Radio";
    for (const char* item : {"one", "two"}) {
      radio.items.Add(item);
      checks.items.Add(item);
    }
    page.text = "page";
    tabs.Add(&page);
    int top = 0;
    for (Control* control : Places()) {
      control->SetLocation(0, top);
      control->height = 40;
      top += 40;
      Add(control);
    }
  }
  std::vector<Control*> Places() {
    return {&edit, &button, &check, &radio, &checks, &track, &tabs};
  }
};

TEST(KeyboardFocus, IsSeen_WhereverTabAndBacktabGo) {
  FocusForm form;
  test::RunForm(form, false, [&] {
    for (Control* control : form.Places()) {
      EXPECT_TRUE(control->IsFocused());
      test::Key(form, Qt::Key_Tab);
      EXPECT_TRUE(FocusIsSeen());
    }
    for (int i = 0; i < 3; ++i) {
      test::Key(form, Qt::Key_Backtab, Qt::ShiftModifier);
      EXPECT_TRUE(FocusIsSeen());
    }
  });
}

// The picture of a button with the focus differs by the frame alone.
TEST(KeyboardFocus, ButtonThatTabWentTo_LooksUnlikeOneThatWasClicked) {
  Form form;
  Button first, second;
  form.Add(&first);
  second.SetLocation(100, 0);
  form.Add(&second);
  test::RunForm(form, false, [&] {
    test::Click(second);
    QTest::mouseMove(test::WidgetOf(form)->windowHandle(), QPoint(150, 150));
    QCoreApplication::processEvents();
    const QImage clicked = test::WidgetOf(second)->grab().toImage();
    test::Click(first);
    test::Key(form, Qt::Key_Tab);
    ASSERT_TRUE(second.IsFocused());
    QTest::mouseMove(test::WidgetOf(form)->windowHandle(), QPoint(150, 150));
    QCoreApplication::processEvents();
    EXPECT_NE(test::WidgetOf(second)->grab().toImage(), clicked);
  });
}

TEST(KeyboardFocus, IsSeen_WhereAMnemonicGoes) {
  for (const auto key : {Qt::Key_P, Qt::Key_C, Qt::Key_R}) {
    FocusForm form;
    test::RunForm(form, false, [&] {
      test::Key(form, key, Qt::AltModifier);
      EXPECT_FALSE(form.edit.IsFocused()) << key;
      EXPECT_TRUE(FocusIsSeen()) << key;
    });
  }
}

TEST(KeyboardFocus, TabToAnEdit_SelectsItsText) {
  FocusForm form;
  form.edit.text = "old";
  test::RunForm(form, false, [&] {
    form.tabs.Focus();
    test::Key(form, Qt::Key_Tab);
    ASSERT_TRUE(form.edit.IsFocused());
    test::Key(form, Qt::Key_X);
    EXPECT_EQ(form.edit.text.Get(), "x");
  });
}

struct OkForm : Form {
  Edit edit;
  Button ok, cancel;
  OkForm() {
    autoDialogKeys = true;
    ok.kind = Button::cOk;
    cancel.kind = Button::cCancel;
    Add(&edit);
    Add(&ok);
    Add(&cancel);
  }
};

TEST(DialogButtons, DisabledOrHidden_AreNotPressedByTheirKeys) {
  for (const bool hides : {false, true}) {
    test::EventLog log;
    OkForm form;
    test::RunForm(form, true, [&] {
      log.Listen("ok", form.ok.onClick);
      log.Listen("cancel", form.cancel.onClick);
      for (Button* button : {&form.ok, &form.cancel})
        (hides ? button->visible : button->enabled) = false;
      test::Key(form, Qt::Key_Return);
      EXPECT_EQ(form.result, Form::cNone) << "nothing is stored when the form is closed";
      test::Key(form, Qt::Key_Escape);
      EXPECT_EQ(log.Take(), "");
      EXPECT_EQ(form.state, cShown);
      for (Button* button : {&form.ok, &form.cancel})
        (hides ? button->visible : button->enabled) = true;
      test::Key(form, Qt::Key_Return);
      EXPECT_EQ(log.Take(), "ok:0 ");
    });
    EXPECT_EQ(form.result, Form::cOk);
  }
}

TEST(DialogButtons, OneInAHiddenPanel_IsNotPressed) {
  Form form;
  form.autoDialogKeys = true;
  Edit edit;
  Panel hidden, shown;
  Button first, second;
  first.kind = Button::cOk;
  second.kind = Button::cOk;
  hidden.Add(&first);
  shown.Add(&second);
  hidden.visible = false;
  for (Control* control : std::initializer_list<Control*>{&edit, &hidden, &shown})
    form.Add(control);
  test::EventLog log;
  log.Listen("first", first.onClick);
  log.Listen("second", second.onClick);
  test::RunForm(form, true, [&] { test::Key(form, Qt::Key_Return); });
  EXPECT_EQ(log.Take(), "second:0 ");
}

TEST(DialogButtons, FocusedButtonThatGoes_IsNotPressed) {
  for (const bool hides : {false, true}) {
    test::EventLog log;
    Form form;
    Button button;
    form.Add(&button);
    log.Listen("click", button.onClick);
    test::RunForm(form, false, [&] {
      button.Focus();
      (hides ? button.visible : button.enabled) = false;
      test::Key(form, Qt::Key_Return);
      test::Key(form, Qt::Key_Space);
      EXPECT_EQ(log.Take(), "");
    });
  }
}

TEST(FocusEvents, GroupsAndTabs_TellWhatComesAndGoesButNotWhatMovesInside) {
  test::EventLog log;
  FocusForm form;
  const std::pair<Control*, const char*> listened[] = {
      {&form.edit, "edit"}, {&form.radio, "radio"}, {&form.checks, "checks"}, {&form.tabs, "tabs"}};
  for (const auto& [control, name] : listened) {
    log.Listen(std::string(name) + "+", control->onGotFocus);
    log.Listen(std::string(name) + "-", control->onLostFocus);
  }
  test::RunForm(form, false, [&] {
    log.Take();
    form.radio.Focus();
    EXPECT_EQ(log.Take(), "edit-:0 radio+:0 ");
    test::Key(form, Qt::Key_Down);
    test::Key(form, Qt::Key_Down);
    EXPECT_EQ(log.Take(), "");
    form.checks.Focus();
    EXPECT_EQ(log.Take(), "radio-:0 checks+:0 ");
    form.tabs.Focus();
    EXPECT_EQ(log.Take(), "checks-:0 tabs+:0 ");
    test::Click(form.edit);
    EXPECT_EQ(log.Take(), "tabs-:0 edit+:0 ");
    QWidget* item = test::WidgetOf(form.radio)->findChildren<QAbstractButton*>().back();
    QTest::mouseClick(test::WidgetOf(form)->windowHandle(), Qt::LeftButton, Qt::NoModifier,
                      item->mapTo(test::WidgetOf(form), QPoint(10, item->height() / 2)));
    EXPECT_EQ(log.Take(), "edit-:0 radio+:0 ");
  });
}

TEST(FocusEvents, FocusSentBackFromOnLostFocus_IsReportedWhereItEnds) {
  test::EventLog log;
  Form form;
  Edit first, second;
  form.Add(&first);
  form.Add(&second);
  bool once = false;
  log.Listen("first+", first.onGotFocus);
  log.Listen("first-", first.onLostFocus, [&](NotifyArgs&) {
    if (!std::exchange(once, true)) first.Focus();
  });
  log.Listen("second+", second.onGotFocus);
  log.Listen("second-", second.onLostFocus);
  test::RunForm(form, false, [&] {
    log.Take();
    second.Focus();
    EXPECT_EQ(log.Take(), "first-:0 first+:0 ");
    EXPECT_TRUE(first.IsFocused());
  });
}

struct MemoForm : Form {
  Edit before;
  Memo memo;
  Edit after;
  MemoForm() {
    autoDialogKeys = true;
    Add(&before);
    Add(&memo);
    Add(&after);
  }
};

TEST(MemoKeys, TabWrites_CtrlTabAndShiftTabLeave) {
  MemoForm form;
  test::RunForm(form, true, [&] {
    form.memo.Focus();
    test::Key(form, Qt::Key_Tab);
    EXPECT_EQ(form.memo.text.Get(), "\t");
    test::Key(form, Qt::Key_Tab, Qt::ControlModifier);
    EXPECT_TRUE(form.after.IsFocused());
    form.memo.Focus();
    test::Key(form, Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_TRUE(form.before.IsFocused());
    form.memo.Focus();
    test::Key(form, Qt::Key_Backtab, Qt::ShiftModifier | Qt::ControlModifier);
    EXPECT_TRUE(form.before.IsFocused());
    EXPECT_EQ(form.memo.text.Get(), "\t");
  });
}

TEST(MemoKeys, ReadOnly_EveryTabLeaves) {
  MemoForm form;
  form.memo.readOnly = true;
  test::RunForm(form, true, [&] {
    form.memo.Focus();
    test::Key(form, Qt::Key_Tab);
    EXPECT_TRUE(form.after.IsFocused());
    test::Key(form, Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_TRUE(form.memo.IsFocused());
  });
}

}  // namespace
}  // namespace mavro
