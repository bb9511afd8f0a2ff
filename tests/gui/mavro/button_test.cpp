#include "Button.h"

#include <gtest/gtest.h>

#include <QCheckBox>
#include <QPushButton>
#include <functional>
#include <memory>

#include "EventLog.h"
#include "Form.h"
#include "GuiDriver.h"
#include "Label.h"
#include "Menu.h"
#include "Strips.h"

namespace mavro {
namespace {

struct ButtonForm : Form {
  test::EventLog log;
  Button ok, cancel, plain;

  ButtonForm() {
    SetBounds(0, 0, 400, 100);
    autoDialogKeys = true;
    ok.kind = Button::cOk;
    cancel.kind = Button::cCancel;
    plain.text = "&Plain";
    int left = 10;
    for (Button* button : {&ok, &cancel, &plain}) {
      button->SetLocation(left, 10);
      left += 100;
      Add(button);
    }
    log.Listen("ok", ok.onClick);
    log.Listen("cancel", cancel.onClick);
    log.Listen("plain", plain.onClick);
    log.Listen("close", onClose);
  }
};

QPushButton* WidgetOf(const Button& button) {
  return qobject_cast<QPushButton*>(test::WidgetOf(button));
}

TEST(Button, NewOne_HasTheUsualSizeAndNoPicture) {
  Button button;
  EXPECT_EQ(button.Bounds(), (Rect{0, 0, 84, 34}));
  EXPECT_EQ(button.kind, Button::cNone);
  EXPECT_EQ(button.icon, -1);
  EXPECT_FALSE(button.hot);
}

TEST(Button, Kind_GivesTheStandardCaption) {
  const char* captions[] = {"",       "OK",   "Cancel", "&No",   "&Open",  "&Save",
                            "&Print", "&Run", "&Go",    "&Edit", "Se&tup", "&Close"};
  for (int kind = Button::cOk; kind <= Button::cClose; ++kind) {
    Button button;
    button.kind = kind;
    EXPECT_EQ(button.text.Get(), captions[kind]);
  }
}

TEST(Button, Kind_KeepsACaptionOfItsOwn) {
  Button button;
  button.text = "Accept";
  button.kind = Button::cSave;
  EXPECT_EQ(button.text.Get(), "Accept");
}

TEST(Button, Kind_Changed_ReplacesTheCaptionOfTheKindBefore) {
  Button button;
  button.kind = Button::cOk;
  button.kind = Button::cClose;
  EXPECT_EQ(button.text.Get(), "&Close");
  EXPECT_EQ(button.impl->modalResult, 0);
}

TEST(Button, Kind_OkAndCancel_AnswerWithTheirResult) {
  ButtonForm form;
  EXPECT_EQ(form.ok.impl->modalResult, 1);
  EXPECT_EQ(form.cancel.impl->modalResult, 2);
  EXPECT_EQ(form.plain.impl->modalResult, 0);
}

TEST(ButtonDeath, Kind_OutOfRange_Stops) {
  Button button;
  EXPECT_DEATH(button.kind = 12, "kind >= cNone && kind <= cClose");
}

TEST(Button, Click_FiresOnce) {
  ButtonForm form;
  test::RunForm(form, false, [&] {
    test::Click(form.plain);
    EXPECT_EQ(form.log.Take(), "plain:0 ");
    EXPECT_EQ(form.state, cShown);
  });
}

TEST(Button, Click_Ok_FiresThenClosesWithItsResult) {
  ButtonForm form;
  const int result = test::RunForm(form, true, [&] { test::Click(form.ok); });
  EXPECT_EQ(result, Form::cOk);
  EXPECT_EQ(form.log.Take(), "ok:0 close:1 ");
}

TEST(Button, Click_Cancel_ClosesWithItsResult) {
  ButtonForm form;
  EXPECT_EQ(test::RunForm(form, true, [&] { test::Click(form.cancel); }), Form::cCancel);
}

TEST(Button, Keys_SpaceAndEnterPressTheFocusedButton) {
  ButtonForm form;
  test::RunForm(form, false, [&] {
    form.plain.Focus();
    test::Key(form, Qt::Key_Space);
    EXPECT_EQ(form.log.Take(), "plain:0 ");
    test::Key(form, Qt::Key_Return);
    EXPECT_EQ(form.log.Take(), "plain:0 ");
  });
}

TEST(Button, Keys_MnemonicPresses) {
  ButtonForm form;
  test::RunForm(form, false, [&] {
    test::Key(form, Qt::Key_P, Qt::AltModifier);
    EXPECT_TRUE(test::WaitFor([&] { return form.log.Take() == "plain:0 "; }));
  });
}

TEST(Button, Keys_EscapePressesCancel) {
  ButtonForm form;
  EXPECT_EQ(test::RunForm(form, true, [&] { test::Key(form, Qt::Key_Escape); }), Form::cCancel);
}

TEST(Button, Click_Disabled_DoesNothing) {
  ButtonForm form;
  form.plain.enabled = false;
  test::RunForm(form, false, [&] {
    test::Click(form.plain);
    EXPECT_EQ(form.log.Take(), "");
    form.plain.enabled = true;
    test::Click(form.plain);
    EXPECT_EQ(form.log.Take(), "plain:0 ");
  });
}

TEST(Button, Destroyed_InOnClick) {
  test::EventLog log;
  ButtonForm form;
  auto button = std::make_unique<Button>();
  log.Listen("gone", button->onClick, [&](NotifyArgs&) { button.reset(); });
  form.Add(button.get());
  test::RunForm(form, false, [&] {
    test::Click(*button);
    EXPECT_EQ(log.Take(), "gone:0 ");
    EXPECT_EQ(form.GetControlCount(), 3);
  });
}

TEST(Button, FormClosed_InOnClickOfOk_IsNotClosedAgain) {
  test::EventLog log;
  ButtonForm form;
  log.Listen("close it", form.ok.onClick, [&](NotifyArgs&) { form.Close(); });
  test::RunForm(form, true, [&] { test::Click(form.ok); });
  EXPECT_EQ(form.log.Take(), "ok:0 close:1 ");
}

TEST(Button, Command_WithoutWindow_ClicksAllTheSame) {
  ButtonForm form;
  form.plain.impl->OnCommand(0, 0);
  EXPECT_EQ(form.log.Take(), "plain:0 ");
}

// A form whose menu has the commands 77 and, gray, 78, and a button that sends one.
struct CommandForm : ButtonForm {
  ActionList acts;
  Menu rows;
  MenuBar bar;
  std::string commands;
  std::function<void()> also;

  CommandForm() {
    acts.SetTarget(this, &CommandForm::OnCommand);
    acts.Add(77, "&Seven");
    acts.Add(78, "&Gray");
    rows.Fill(acts);
    rows.items[1]->Enable(false);
    bar.Add(&rows);
    menuBar = &bar;
  }
  void OnCommand(int id) {
    commands += std::to_string(id) + " after " + log.Take();
    if (also) also();
  }
  std::string Send(Button& button, int cmd) {
    button.cmd = cmd;
    test::RunForm(*this, true, [&] { test::Click(button); });
    return commands;
  }
};

TEST(Button, Cmd_IsSentToTheForm_AfterOnClick) {
  CommandForm form;
  EXPECT_EQ(form.Send(form.plain, 77), "77 after plain:0 ");
}

TEST(Button, Cmd_OfAnAnsweringButton_IsSentBeforeTheFormCloses) {
  CommandForm form;
  EXPECT_EQ(form.Send(form.ok, 77), "77 after ok:0 ");
  EXPECT_EQ(form.log.Take(), "close:1 ");
  EXPECT_EQ(form.result, Form::cOk);
}

TEST(Button, Cmd_OfContextMenu_WithoutAMenuBar) {
  CommandForm form;
  ContextMenu popup;
  popup.root.Fill(form.acts);
  popup.Attach(nullptr);
  form.menuBar = nullptr;
  form.menu = &popup;
  popup.actions.push_back(form.acts.Find(77));
  EXPECT_EQ(form.Send(form.plain, 77), "77 after plain:0 ");
}

TEST(Button, Cmd_NoneUnknownOrGray_DoesNothing) {
  for (const int cmd : {0, 1, 2, 78, 79}) {
    CommandForm form;
    EXPECT_EQ(form.Send(form.plain, cmd), "") << cmd;
  }
}

TEST(Button, Cmd_ThatClosesTheForm_IsTheEndOfTheClick) {
  CommandForm form;
  form.also = [&] { form.Close(); };
  EXPECT_EQ(form.Send(form.ok, 77), "77 after ok:0 ");
  EXPECT_EQ(form.log.Take(), "close:1 ");
  EXPECT_EQ(form.result, Form::cNone);
}

TEST(Button, Look_DefaultIsOkOnly) {
  ButtonForm form;
  test::RunForm(form, false, [&] {
    EXPECT_TRUE(WidgetOf(form.ok)->isDefault());
    EXPECT_FALSE(WidgetOf(form.cancel)->isDefault());
    form.ok.kind = Button::cNone;
    EXPECT_FALSE(WidgetOf(form.ok)->isDefault());
  });
}

TEST(Button, Hot_IsFlatUntilTheMouseIsOverIt) {
  ButtonForm form;
  form.plain.hot = true;
  test::RunForm(form, false, [&] {
    QWidget* widget = test::WidgetOf(form.plain);
    const auto looks = [&] { return widget->grab().toImage(); };
    const QImage flat = looks();
    form.plain.hot = false;
    const QImage raised = looks();
    EXPECT_NE(flat, raised);
    form.plain.hot = true;
    widget->setAttribute(Qt::WA_UnderMouse);
    EXPECT_NE(looks(), flat);
    widget->setAttribute(Qt::WA_UnderMouse, false);
    EXPECT_EQ(looks(), flat);
  });
}

TEST(Button, Picture_OfAnUnknownStrip_LeavesTheCaption) {
  ButtonForm form;
  form.plain.SetImage(9999, 3);
  form.ok.icon = 10000;
  test::RunForm(form, false, [&] {
    EXPECT_TRUE(WidgetOf(form.plain)->icon().isNull());
    EXPECT_EQ(WidgetOf(form.plain)->text(), "&Plain");
  });
}

TEST(Button, Icon_StandsBesideTheCaption) {
  ButtonForm form;
  form.plain.icon = 4;
  test::RunForm(form, false, [&] {
    EXPECT_FALSE(WidgetOf(form.plain)->icon().isNull());
    EXPECT_EQ(WidgetOf(form.plain)->text(), "&Plain");
    form.plain.icon = 0;
    EXPECT_TRUE(WidgetOf(form.plain)->icon().isNull());
  });
}

TEST(Button, Image_StandsInsteadOfTheCaption) {
  test::RegisterStrips();
  ButtonForm form;
  form.plain.SetBounds(200, 10, 28, 28);
  form.plain.SetImage(0x6F, 2);
  test::RunForm(form, false, [&] {
    EXPECT_EQ(WidgetOf(form.plain)->iconSize(), QSize(16, 16));
    const QImage shown = WidgetOf(form.plain)->grab().toImage();
    form.plain.text = "other";
    EXPECT_EQ(WidgetOf(form.plain)->grab().toImage(), shown);
    EXPECT_EQ(WidgetOf(form.plain)->accessibleName(), "other");
  });
}

struct CheckForm : Form {
  test::EventLog log;
  CheckBox box;

  CheckForm() {
    SetBounds(0, 0, 300, 100);
    box.text = "&Parse";
    box.SetLocation(10, 10);
    Add(&box);
    log.Listen("click", box.onClick);
  }
  bool Shows() const { return qobject_cast<QCheckBox*>(test::WidgetOf(box))->isChecked(); }
};

TEST(CheckBox, Click_TogglesAndFires) {
  CheckForm form;
  test::RunForm(form, false, [&] {
    test::Click(form.box, QPoint(8, 11));
    EXPECT_TRUE(form.box.checked);
    EXPECT_EQ(form.log.Take(), "click:0 ");
    test::Key(form, Qt::Key_P, Qt::AltModifier);
    EXPECT_TRUE(test::WaitFor([&] { return form.log.Take() == "click:0 "; }));
    EXPECT_FALSE(form.box.checked);
  });
}

TEST(CheckBox, Enter_PressesTheButtonForOk) {
  ButtonForm form;
  CheckBox box;
  box.SetLocation(10, 60);
  form.log.Listen("box", box.onClick);
  form.Add(&box);
  test::RunForm(form, true, [&] {
    box.Focus();
    test::Key(form, Qt::Key_Return);
    EXPECT_EQ(form.log.Take(), "ok:0 close:1 ");
  });
  EXPECT_FALSE(box.checked);
}

TEST(CheckBox, Checked_BeforeAndWithTheWindow_FiresNothing) {
  CheckForm form;
  form.box.checked = true;
  test::RunForm(form, false, [&] {
    EXPECT_TRUE(form.Shows());
    form.box.checked = false;
    EXPECT_FALSE(form.Shows());
    EXPECT_EQ(form.log.Take(), "");
  });
  EXPECT_FALSE(form.box.checked);
}

TEST(CheckBox, Checked_EqualValue_SendsNothing) {
  CheckForm form;
  test::RunForm(form, false, [&] {
    auto* widget = qobject_cast<QCheckBox*>(test::WidgetOf(form.box));
    widget->setChecked(true);
    form.box.checked = false;
    EXPECT_TRUE(form.Shows());
  });
}

TEST(CheckBox, Destroyed_InOnClick) {
  test::EventLog log;
  CheckForm form;
  auto box = std::make_unique<CheckBox>();
  box->SetLocation(10, 40);
  log.Listen("gone", box->onClick, [&](NotifyArgs&) { box.reset(); });
  form.Add(box.get());
  test::RunForm(form, false, [&] {
    test::Click(*box, QPoint(8, 11));
    EXPECT_EQ(log.Take(), "gone:0 ");
  });
}

}  // namespace
}  // namespace mavro
