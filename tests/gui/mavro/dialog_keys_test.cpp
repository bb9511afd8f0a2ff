#include <gtest/gtest.h>

#include "Button.h"
#include "ButtonGroup.h"
#include "Edit.h"
#include "Form.h"
#include "GroupBox.h"
#include "GuiDriver.h"
#include "Label.h"
#include "ListBox.h"
#include "TabCtrl.h"

namespace mavro {
namespace {

struct DialogForm : Form {
  Label nameLabel;
  Edit name;
  GroupBox box;
  CheckBox one, two, three;
  RadioGroup radio;
  TabCtrl tabs;
  TabPage first, second;
  Edit onFirst, onSecond;
  Button ok, cancel;

  DialogForm() {
    SetBounds(0, 0, 420, 320);
    autoDialogKeys = true;
    nameLabel.text = "&Name:";
    name.SetLocation(90, 0);
    box.text = "&Options";
    box.SetBounds(0, 40, 150, 110);
    int top = 20;
    for (CheckBox* check : {&one, &two, &three}) {
      check->SetLocation(10, top);
      top += 25;
      box.Add(check);
    }
    two.text = "&Two";
    radio.text = "&Radio";
    radio.items.Add("a");
    radio.items.Add("b");
    radio.SetBounds(160, 40, 120, 90);
    tabs.SetBounds(0, 160, 250, 100);
    first.text = "&First";
    second.text = "&Second";
    first.Add(&onFirst);
    second.Add(&onSecond);
    tabs.Add(&first);
    tabs.Add(&second);
    ok.kind = Button::cOk;
    ok.SetLocation(260, 200);
    cancel.kind = Button::cCancel;
    cancel.SetLocation(260, 240);
    for (Control* control :
         std::initializer_list<Control*>{&nameLabel, &name, &box, &radio, &tabs, &ok, &cancel})
      Add(control);
  }
  // The control that has the focus, by its place in the list.
  std::string Focused() {
    const std::pair<Control*, const char*> all[] = {
        {&name, "name"},   {&one, "one"},      {&two, "two"},         {&three, "three"},
        {&radio, "radio"}, {&tabs, "tabs"},    {&onFirst, "onFirst"}, {&onSecond, "onSecond"},
        {&ok, "ok"},       {&cancel, "cancel"}};
    for (const auto& [control, itsName] : all)
      if (control->IsFocused()) return itsName;
    return "none";
  }
};

TEST(DialogKeys, Tab_GoesInChildOrderThroughContainers) {
  DialogForm form;
  test::RunForm(form, true, [&] {
    std::string order = form.Focused();
    for (int i = 0; i < 9; ++i) {
      test::Key(form, Qt::Key_Tab);
      order += " " + form.Focused();
    }
    EXPECT_EQ(order, "name one two three radio tabs onFirst ok cancel name");
  });
}

TEST(DialogKeys, ShiftTab_GoesBack) {
  DialogForm form;
  test::RunForm(form, true, [&] {
    std::string order = form.Focused();
    for (int i = 0; i < 9; ++i) {
      test::Key(form, Qt::Key_Backtab, Qt::ShiftModifier);
      order += " " + form.Focused();
    }
    EXPECT_EQ(order, "name cancel ok onFirst tabs radio three two one name");
  });
}

TEST(DialogKeys, DisabledAndHidden_ArePassedOver) {
  DialogForm form;
  form.one.enabled = false;
  form.two.visible = false;
  test::RunForm(form, true, [&] {
    test::Key(form, Qt::Key_Tab);
    EXPECT_EQ(form.Focused(), "three");
  });
}

TEST(DialogKeys, Arrows_GoRoundTheButtonsOfAContainer) {
  DialogForm form;
  test::RunForm(form, true, [&] {
    form.one.Focus();
    test::Key(form, Qt::Key_Down);
    EXPECT_EQ(form.Focused(), "two");
    test::Key(form, Qt::Key_Right);
    test::Key(form, Qt::Key_Down);
    EXPECT_EQ(form.Focused(), "one");
    test::Key(form, Qt::Key_Up);
    EXPECT_EQ(form.Focused(), "three");
    EXPECT_FALSE(form.three.checked);
    form.ok.Focus();
    test::Key(form, Qt::Key_Right);
    EXPECT_EQ(form.Focused(), "cancel");
  });
}

TEST(DialogKeys, Mnemonics_OfLabelBoxButtonGroupAndTabs) {
  DialogForm form;
  test::RunForm(form, true, [&] {
    form.ok.Focus();
    test::Key(form, Qt::Key_N, Qt::AltModifier);
    EXPECT_EQ(form.Focused(), "name");
    test::Key(form, Qt::Key_O, Qt::AltModifier);
    EXPECT_EQ(form.Focused(), "one");
    test::Key(form, Qt::Key_T, Qt::AltModifier);
    EXPECT_TRUE(test::WaitFor([&] { return form.two.checked.Get(); }));
    test::Key(form, Qt::Key_S, Qt::AltModifier);
    EXPECT_EQ(form.tabs.selectedIndex, 1);
    test::Key(form, Qt::Key_R, Qt::AltModifier);
    EXPECT_EQ(form.Focused(), "radio");
  });
}

// The pages change from anywhere in the dialog, around the ends; the focus stays outside of them.
TEST(DialogKeys, CtrlTabAndCtrlPageKeys_TurnThePages) {
  struct Row {
    Qt::Key key;
    Qt::KeyboardModifiers modifiers;
    int page;
  };
  const Row rows[] = {{Qt::Key_Tab, Qt::ControlModifier, 1},
                      {Qt::Key_Tab, Qt::ControlModifier, 0},
                      {Qt::Key_Backtab, Qt::ControlModifier | Qt::ShiftModifier, 1},
                      {Qt::Key_PageDown, Qt::ControlModifier, 0},
                      {Qt::Key_PageUp, Qt::ControlModifier, 1},
                      {Qt::Key_Tab, Qt::NoModifier, 1},
                      {Qt::Key_PageDown, Qt::NoModifier, 1},
                      {Qt::Key_Tab, Qt::ControlModifier | Qt::AltModifier, 1}};
  DialogForm form;
  test::RunForm(form, true, [&] {
    form.ok.Focus();
    for (const Row& row : rows) {
      test::Key(form, row.key, row.modifiers);
      EXPECT_EQ(form.tabs.selectedIndex, row.page) << row.key;
      if (row.modifiers != Qt::NoModifier) {
        EXPECT_EQ(form.Focused(), "ok") << row.key;
      }
      form.ok.Focus();
    }
    form.onSecond.Focus();
    test::Key(form, Qt::Key_Tab, Qt::ControlModifier);
    EXPECT_EQ(form.Focused(), "onFirst");
  });
}

TEST(DialogKeys, CtrlTab_InAFormWithoutDialogKeys_TurnsNothing) {
  DialogForm form;
  form.autoDialogKeys = false;
  test::RunForm(form, true, [&] {
    form.ok.Focus();
    test::Key(form, Qt::Key_Tab, Qt::ControlModifier);
    EXPECT_EQ(form.tabs.selectedIndex, 0);
    form.result = Form::cCancel;
  });
}

TEST(DialogKeys, EnterInAnyControl_PressesOk) {
  for (int place = 0; place < 4; ++place) {
    DialogForm form;
    Control* controls[] = {&form.name, &form.radio, &form.tabs, &form.onFirst};
    const int result = test::RunForm(form, true, [&] {
      controls[place]->Focus();
      test::Key(form, Qt::Key_Return);
    });
    EXPECT_EQ(result, Form::cOk) << place;
  }
}

TEST(DialogKeys, Escape_PressesCancel) {
  DialogForm form;
  EXPECT_EQ(test::RunForm(form, true, [&] { test::Key(form, Qt::Key_Escape); }), Form::cCancel);
}

TEST(DialogKeys, FormWithoutAnythingToFocus_Stands) {
  Form form;
  Label label;
  form.Add(&label);
  form.autoDialogKeys = true;
  test::RunForm(form, true, [&] {
    for (const auto key : {Qt::Key_Tab, Qt::Key_Down, Qt::Key_Return, Qt::Key_Escape})
      test::Key(form, key);
    EXPECT_EQ(form.result, Form::cCancel);
  });
}

}  // namespace
}  // namespace mavro
