#include "ButtonGroup.h"

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QGroupBox>
#include <memory>

#include "Button.h"
#include "DataLink.h"
#include "Edit.h"
#include "EventLog.h"
#include "Form.h"
#include "GroupBox.h"
#include "GuiDriver.h"

namespace mavro {
namespace {

struct GroupForm : Form {
  test::EventLog log;
  RadioGroup radio;
  CheckGroup checks;
  Button other;

  GroupForm() {
    SetBounds(0, 0, 420, 220);
    radio.text = "&Colour:";
    checks.text = "Style:";
    for (const char* item : {"Red", "&Green", "Blue"}) radio.items.Add(item);
    for (const char* item : {"Bold", "Italic"}) checks.items.Add(item);
    radio.SetBounds(10, 10, 150, 110);
    checks.SetBounds(180, 10, 150, 80);
    other.SetBounds(10, 140, 84, 34);
    for (Control* control : std::initializer_list<Control*>{&radio, &checks, &other}) Add(control);
    log.Listen("radio", radio.onChange);
    log.Listen("checks", checks.onChange);
  }

  static QAbstractButton* Item(const Control& group, int index) {
    return test::WidgetOf(group)->findChildren<QAbstractButton*>()[index];
  }
  static std::string Checked(const Control& group) {
    std::string checked;
    for (const auto* button : test::WidgetOf(group)->findChildren<QAbstractButton*>())
      if (button->isVisible()) checked += button->isChecked() ? '1' : '0';
    return checked;
  }
};

TEST(RadioGroup, Window_ShowsWhatWasSetBefore) {
  GroupForm form;
  form.radio.itemIndex = 1;
  test::RunForm(form, false, [&] {
    EXPECT_EQ(GroupForm::Checked(form.radio), "010");
    EXPECT_EQ(qobject_cast<QGroupBox*>(test::WidgetOf(form.radio))->title(), "&Colour:");
    EXPECT_EQ(form.log.Take(), "");
    test::Shot(form, "groups");
  });
}

TEST(RadioGroup, NewOne_HasNothingChosen) {
  GroupForm form;
  EXPECT_EQ(form.radio.itemIndex, -1);
  test::RunForm(form, false, [&] { EXPECT_EQ(GroupForm::Checked(form.radio), "000"); });
}

TEST(RadioGroup, Click_ChoosesOneAndTells) {
  GroupForm form;
  form.radio.itemIndex = 0;
  test::RunForm(form, false, [&] {
    QTest::mouseClick(GroupForm::Item(form.radio, 2), Qt::LeftButton, {}, QPoint(8, 8));
    EXPECT_EQ(form.radio.itemIndex, 2);
    EXPECT_EQ(GroupForm::Checked(form.radio), "001");
    QTest::mouseClick(GroupForm::Item(form.radio, 2), Qt::LeftButton, {}, QPoint(8, 8));
    EXPECT_EQ(GroupForm::Checked(form.radio), "001");
    EXPECT_EQ(form.log.Take(), "radio:2 ");
  });
}

TEST(RadioGroup, Arrows_GoRoundAndChoose) {
  GroupForm form;
  form.radio.itemIndex = 1;
  test::RunForm(form, false, [&] {
    form.radio.Focus();
    test::Key(form, Qt::Key_Down);
    test::Key(form, Qt::Key_Right);
    EXPECT_EQ(form.radio.itemIndex, 0);
    test::Key(form, Qt::Key_Up);
    EXPECT_EQ(form.log.Take(), "radio:2 radio:0 radio:2 ");
    EXPECT_TRUE(form.radio.IsFocused());
  });
}

TEST(RadioGroup, Assignment_SendsNoEvent) {
  GroupForm form;
  test::RunForm(form, false, [&] {
    form.radio.itemIndex = 2;
    EXPECT_EQ(GroupForm::Checked(form.radio), "001");
    form.radio.itemIndex = -1;
    EXPECT_EQ(GroupForm::Checked(form.radio), "000");
    EXPECT_EQ(form.log.Take(), "");
  });
}

TEST(RadioGroup, ItemIndex_NoItemHasIt_ChoosesNone) {
  GroupForm form;
  form.radio.itemIndex = 99;
  test::RunForm(form, false, [&] {
    EXPECT_EQ(form.radio.itemIndex, -1);
    form.radio.itemIndex = -7;
    EXPECT_EQ(form.radio.itemIndex, -1);
  });
}

TEST(RadioGroup, ItemsChangedLive_ChosenOneStaysChosen) {
  GroupForm form;
  form.radio.itemIndex = 1;
  test::RunForm(form, false, [&] {
    form.radio.items.Insert("first", 0);
    EXPECT_EQ(form.radio.itemIndex, 2);
    form.radio.items.Remove(0);
    EXPECT_EQ(form.radio.itemIndex, 1);
    form.radio.items.Remove(1);
    EXPECT_EQ(form.radio.itemIndex, -1);
    form.radio.items.Clear();
    form.radio.items.Add("only\xFF");
    EXPECT_EQ(GroupForm::Checked(form.radio), "0");
    EXPECT_EQ(form.radio.items[0], "only\xFF");
  });
}

TEST(RadioGroup, Mnemonics_OfTitleAndItems) {
  GroupForm form;
  form.radio.itemIndex = 2;
  test::RunForm(form, false, [&] {
    form.other.Focus();
    test::Key(form, Qt::Key_G, Qt::AltModifier);
    EXPECT_TRUE(test::WaitFor([&] { return form.radio.itemIndex == 1; }));
    form.other.Focus();
    test::Key(form, Qt::Key_C, Qt::AltModifier);
    EXPECT_TRUE(form.radio.IsFocused());
  });
}

TEST(RadioGroup, Empty_TakesNoFocusAndStands) {
  GroupForm form;
  form.radio.items.Clear();
  test::RunForm(form, false, [&] {
    test::Key(form, Qt::Key_Tab);
    EXPECT_FALSE(form.radio.IsFocused());
  });
}

TEST(RadioGroup, ManyItems_StandInColumnsInsideTheFrame) {
  GroupForm form;
  for (int i = 0; i < 9; ++i) form.radio.items.Add("item");
  test::RunForm(form, false, [&] {
    const QRect frame = test::WidgetOf(form.radio)->rect();
    for (const auto* button : test::WidgetOf(form.radio)->findChildren<QAbstractButton*>())
      EXPECT_TRUE(frame.contains(button->geometry()));
  });
}

TEST(RadioGroup, Destroyed_InOnChange) {
  test::EventLog log;
  GroupForm form;
  auto group = std::make_unique<RadioGroup>();
  group->items.Add("a");
  group->SetBounds(200, 100, 100, 60);
  log.Listen("gone", group->onChange, [&](NotifyArgs&) { group.reset(); });
  form.Add(group.get());
  test::RunForm(form, false, [&] {
    QAbstractButton* item = GroupForm::Item(*group, 0);
    QTest::mouseClick(item, Qt::LeftButton, {}, QPoint(8, item->height() / 2));
    EXPECT_EQ(log.Take(), "gone:0 ");
  });
}

TEST(CheckGroup, FlagsAndClicks) {
  GroupForm form;
  form.checks.itemFlags = 2;
  test::RunForm(form, false, [&] {
    EXPECT_EQ(GroupForm::Checked(form.checks), "01");
    QTest::mouseClick(GroupForm::Item(form.checks, 0), Qt::LeftButton, {}, QPoint(8, 8));
    EXPECT_EQ(form.checks.itemFlags, 3);
    form.checks.itemFlags = 1;
    EXPECT_EQ(GroupForm::Checked(form.checks), "10");
    EXPECT_EQ(form.log.Take(), "checks:3 ");
  });
}

TEST(CheckGroup, Arrows_MoveOnlyTheFocus_SpaceChecks) {
  GroupForm form;
  test::RunForm(form, false, [&] {
    form.checks.Focus();
    test::Key(form, Qt::Key_Down);
    EXPECT_EQ(form.checks.itemFlags, 0);
    test::Key(form, Qt::Key_Space);
    EXPECT_EQ(form.checks.itemFlags, 2);
    test::Key(form, Qt::Key_Down);
    test::Key(form, Qt::Key_Space);
    EXPECT_EQ(form.checks.itemFlags, 3);
  });
}

TEST(CheckGroup, ItemsChangedLive_EachKeepsItsFlag) {
  GroupForm form;
  form.checks.itemFlags = 2;
  test::RunForm(form, false, [&] {
    form.checks.items.Insert("Under", 0);
    EXPECT_EQ(form.checks.itemFlags, 4);
    form.checks.items.Remove(1);
    EXPECT_EQ(form.checks.itemFlags, 2);
    form.checks.items.Remove(1);
    EXPECT_EQ(form.checks.itemFlags, 0);
  });
}

TEST(CheckGroup, The32ndItem_HasTheHighestBit) {
  GroupForm form;
  while (form.checks.items.GetCount() < 32) form.checks.items.Add("x");
  form.checks.itemFlags = INT_MIN;
  test::RunForm(form, false, [&] {
    EXPECT_EQ(GroupForm::Checked(form.checks).find('1'), 31u);
    GroupForm::Item(form.checks, 0)->click();
    EXPECT_EQ(form.checks.itemFlags, INT_MIN + 1);
  });
}

TEST(CheckGroupDeath, MoreThan32Items_Stop) {
  CheckGroup group;
  for (int i = 0; i < 32; ++i) group.items.Add("x");
  EXPECT_DEATH(group.items.Add("x"), "items.GetCount\\(\\) <= MaxItems\\(\\)");
}

struct TextSource : DataSource {
  explicit TextSource(std::string its) : value(std::move(its)) {}
  void Get(std::string& out) override { out = value; }
  void Set(const std::string& text) override { value = text; }
  std::string value;
};

TEST(GroupDataLink, LoadsAndSavesADecimalNumber) {
  GroupForm form;
  TextSource choice("1"), flags("2");
  GroupDataLink choiceLink(&form.radio), flagsLink(&form.checks);
  choiceLink.source = &choice;
  flagsLink.source = &flags;
  form.autoDialogKeys = true;
  form.other.kind = Button::cOk;
  test::RunForm(form, true, [&] {
    EXPECT_EQ(form.radio.itemIndex, 1);
    EXPECT_EQ(form.checks.itemFlags, 2);
    EXPECT_EQ(*choiceLink.selected, 1);
    form.radio.itemIndex = 2;
    form.checks.itemFlags = 3;
    test::Click(form.other);
  });
  EXPECT_EQ(choice.value, "2");
  EXPECT_EQ(flags.value, "3");
}

TEST(GroupDataLink, ClosedWithCancel_SavesNothing) {
  GroupForm form;
  TextSource choice("1");
  GroupDataLink link(&form.radio);
  link.source = &choice;
  form.other.kind = Button::cCancel;
  test::RunForm(form, true, [&] {
    form.radio.itemIndex = 2;
    test::Click(form.other);
  });
  EXPECT_EQ(choice.value, "1");
}

TEST(GroupDataLink, WithoutASource_KeepsWhatTheCodeGave) {
  GroupForm form;
  GroupDataLink link(&form.radio);
  form.radio.itemIndex = 1;
  test::RunForm(form, false, [&] { EXPECT_EQ(form.radio.itemIndex, 1); });
}

TEST(GroupDataLink, TextsThatAreNoNumber) {
  struct Row {
    const char* text;
    int flags;
  };
  for (const Row& row : {Row{"", 0}, Row{"abc", 0}, Row{" 3x", 3}, Row{"99999999999", INT_MAX},
                         Row{"-99999999999", INT_MIN}}) {
    CheckGroup group;
    TextSource source(row.text);
    GroupDataLink link(&group);
    link.source = &source;
    link.Load();
    EXPECT_EQ(group.itemFlags, row.flags) << row.text;
  }
}

struct BoxForm : Form {
  GroupBox box;
  Edit inside, docked;
  Button outside;

  BoxForm() {
    SetBounds(0, 0, 300, 200);
    outside.SetBounds(10, 150, 84, 34);
    Add(&outside);
    box.text = "&Frame";
    box.SetBounds(10, 10, 250, 130);
    inside.SetBounds(20, 30, 80, 24);
    box.Add(&inside);
    Add(&box);
  }
};

TEST(GroupBox, ShowsItsTitleAndChildrenFromItsCorner) {
  BoxForm form;
  test::RunForm(form, false, [&] {
    auto* widget = qobject_cast<QGroupBox*>(test::WidgetOf(form.box));
    ASSERT_NE(widget, nullptr);
    EXPECT_EQ(widget->title(), "&Frame");
    EXPECT_EQ(test::WidgetOf(form.inside)->pos(), QPoint(20, 30));
    EXPECT_EQ(form.box.text.Get(), "&Frame");
    test::Shot(form, "group_box");
  });
  EXPECT_EQ(form.box.text.Get(), "&Frame");
}

TEST(GroupBox, DockedChild_StaysInsideTheFrame) {
  BoxForm form;
  form.docked.dock = Dock::cFill;
  form.box.Add(&form.docked);
  test::RunForm(form, false, [&] {
    EXPECT_GT(form.docked.top, 5);
    EXPECT_LT(form.docked.top + form.docked.height, form.box.height + 1);
    EXPECT_GT(form.docked.width, 200);
  });
}

TEST(GroupBox, Mnemonic_FocusesItsFirstChild) {
  BoxForm form;
  test::RunForm(form, false, [&] {
    form.outside.Focus();
    test::Key(form, Qt::Key_F, Qt::AltModifier);
    EXPECT_TRUE(form.inside.IsFocused());
  });
}

TEST(GroupBox, Destroyed_WithItsChildrenLive) {
  BoxForm form;
  auto box = std::make_unique<GroupBox>();
  Button button;
  box->Add(&button);
  form.Add(box.get());
  test::RunForm(form, false, [&] {
    box.reset();
    EXPECT_EQ(button.parent, nullptr);
    EXPECT_EQ(button.impl->hwnd, nullptr);
  });
}

}  // namespace
}  // namespace mavro
