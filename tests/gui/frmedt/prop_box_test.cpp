// A word of the toolkit, and a field of the registry's rows.

#include "frmedt/PropBox.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QComboBox>
#include <QLineEdit>

#include "DarkPalette.h"
#include "NextDialog.h"
#include "frmedt/ItemsDlg.h"
#include "frmedt/PropClass.h"

namespace zendry {
namespace {

using mavro::PopertyItem;
using testing::ElementsAre;
using testing::IsEmpty;

class PropBoxTest : public testing::Test {
 protected:
  PropBoxTest() {
    form.SetBounds(0, 0, 280, 400);
    tabs.dock = mavro::Dock::cFill;
    tabs.Add(&props);
    form.Add(&tabs);
    props.onCommit = [this](CtrlRec& rec, PropValue& value) {
      log.push_back(rec.name + "." + value.pd->name + "=" + value.value);
    };
    props.onDone = [this] { ++changes; };
    props.onRefused = [this](const std::string& why) { refused = why; };
  }
  CtrlRec& Add(const char* className, const char* name) {
    CtrlRec& rec = data.AddControl(*FindClass(className), data.root, name);
    return rec;
  }
  int RowOf(std::string_view title) {
    for (int row = 0; row < props.box.Count(); ++row)
      if (props.box.Item(row).title.text == title) return row;
    return -1;
  }
  PopertyItem& Item(std::string_view title) {
    const int row = RowOf(title);
    EXPECT_GE(row, 0) << title;
    return props.box.Item(std::max(row, 0));
  }
  // Types into a row as a user does, and presses Enter.
  void Type(std::string_view title, const char* typed) {
    PopertyItem& item = Item(title);
    props.box.FocusRow(item.index);
    auto* line = qobject_cast<QLineEdit*>(test::WidgetOf(item.edit));
    line->selectAll();
    line->del();
    QTest::keyClicks(line, typed);
    test::Key(form, Qt::Key_Return);
  }
  void Choose(std::string_view title, const char* option) {
    auto* combo = qobject_cast<QComboBox*>(test::WidgetOf(Item(title).combo));
    combo->setFocus();
    combo->setCurrentText(option);
  }
  void Run(const std::function<void()>& script) { test::RunForm(form, true, script); }

  FormData data;
  PropBox props{data};
  mavro::TabCtrl tabs;
  mavro::Form form;
  std::vector<std::string> log;
  int changes = 0;
  std::string refused;
};

TEST_F(PropBoxTest, AControl_HasItsClassItsNameAndTheRowsOfItsClass) {
  CtrlRec& rec = Add("Button", "button1");
  Run([&] {
    props.Show(rec);
    EXPECT_EQ(props.box.Count(), static_cast<int>(rec.classDef->props.size()) + 2);
    EXPECT_EQ(Item("class").Value(), "Button");
    EXPECT_EQ(Item("name").Value(), "button1");
    EXPECT_EQ(Item("text").ActiveMode(), PopertyItem::cEdit);
    EXPECT_EQ(Item("kind").ActiveMode(), PopertyItem::cCombo);
    EXPECT_EQ(Item("font").ActiveMode(), PopertyItem::cButton);
    EXPECT_EQ(Item("left").edit.dataType, mavro::Edit::cInteger);
    EXPECT_EQ(Item("text").edit.dataType, mavro::Edit::cNormal);
  });
}

TEST_F(PropBoxTest, TheForm_HasNoName_AndADialIsAFloat) {
  CtrlRec& dial = Add("DialCtrl", "dial1");
  Run([&] {
    props.Show(data.root);
    EXPECT_EQ(RowOf("name"), -1);
    EXPECT_GE(RowOf("windowType"), 0);
    props.Show(dial);
    EXPECT_EQ(Item("pos").edit.dataType, mavro::Edit::cFloat);
    EXPECT_EQ(Item("steps").edit.dataType, mavro::Edit::cInteger) << "a row that was a float";
  });
}

TEST_F(PropBoxTest, ATypedValue_IsInTheModelBeforeItIsTold) {
  CtrlRec& rec = Add("Button", "button1");
  Run([&] {
    props.Show(rec);
    props.onCommit = [&](CtrlRec& told, PropValue& value) {
      EXPECT_EQ(&told, &rec);
      EXPECT_EQ(&value, rec.FindValue("width"));
      EXPECT_EQ(rec.ValueText("width"), "120");
    };
    Type("width", "120");
    EXPECT_EQ(rec.ValueText("width"), "120");
    EXPECT_EQ(changes, 1);
  });
}

TEST_F(PropBoxTest, AnUnchangedValue_IsNotTold) {
  CtrlRec& rec = Add("Button", "button1");
  rec.SetValueText("width", "84");
  Run([&] {
    props.Show(rec);
    Type("width", "84");
    EXPECT_THAT(log, IsEmpty());
    EXPECT_EQ(changes, 0);
  });
}

TEST_F(PropBoxTest, ASelection_IsOneOfItsOptions_AndAnUnknownOneStaysInTheModel) {
  CtrlRec& rec = Add("Button", "button1");
  rec.SetValueText("kind", "cOk");
  rec.SetValueText("icon", "cNoSuchIcon");
  Run([&] {
    props.Show(rec);
    EXPECT_EQ(Item("kind").Value(), "cOk");
    EXPECT_EQ(Item("icon").combo.selectedIndex, -1);
    EXPECT_EQ(rec.ValueText("icon"), "cNoSuchIcon");
    Choose("kind", "cClose");
    EXPECT_THAT(log, ElementsAre("button1.kind=cClose"));
  });
}

TEST_F(PropBoxTest, Quotes_AreMadeSafe) {
  CtrlRec& rec = Add("Button", "button1");
  Run([&] {
    props.Show(rec);
    Type("text", "say \"hi\"");
    EXPECT_EQ(rec.ValueText("text"), "say \\\"hi\\\"");
    EXPECT_EQ(Item("text").Value(), "say \\\"hi\\\"");
  });
}

TEST_F(PropBoxTest, AName_IsTaken_OrRefusedWithAWord) {
  CtrlRec& rec = Add("Button", "button1");
  Add("Button", "button2");
  Run([&] {
    props.Show(rec);
    for (const char* wrong : {"button2", "two words", "2nd", "class", ""}) {
      refused.clear();
      Type("name", wrong);
      EXPECT_NE(refused, "") << wrong;
      EXPECT_EQ(rec.name, "button1") << wrong;
      EXPECT_EQ(Item("name").Value(), "button1") << wrong;
    }
    EXPECT_THAT(log, IsEmpty());
    Type("name", "okButton");
    EXPECT_EQ(rec.name, "okButton");
    EXPECT_THAT(log, ElementsAre("okButton.name=okButton"));
  });
}

TEST_F(PropBoxTest, TheClass_MayBeAnyClassName) {
  CtrlRec& rec = Add("Button", "button1");
  Run([&] {
    props.Show(rec);
    Type("class", "my::RedButton");
    EXPECT_EQ(rec.declClass, "my::RedButton");
    EXPECT_EQ(rec.className, "Button");
    Type("class", "Red Button;");
    EXPECT_EQ(rec.declClass, "my::RedButton");
    EXPECT_NE(refused, "");
  });
}

TEST_F(PropBoxTest, SetValue_SetsModelAndRow_AndTellsNothing) {
  CtrlRec& rec = Add("Button", "button1");
  Run([&] {
    props.Show(rec);
    props.SetValue("left", "77");
    EXPECT_EQ(rec.ValueText("left"), "77");
    EXPECT_EQ(Item("left").Value(), "77");
    props.SetValue("no such row", "1");
    EXPECT_THAT(log, IsEmpty());
  });
}

TEST_F(PropBoxTest, RawEntries_HaveNoRow) {
  CtrlRec& rec = Add("Button", "button1");
  rec.SetProperty("Foo", "1)");
  Run([&] {
    props.Show(rec);
    EXPECT_EQ(props.box.Count(), static_cast<int>(rec.classDef->props.size()) + 2);
  });
}

TEST_F(PropBoxTest, Several_ShowWhatIsCommon_AndChangeTogether) {
  CtrlRec& first = Add("Button", "button1");
  CtrlRec& second = Add("TrackBar", "trackBar1");
  first.SetValueText("width", "80");
  second.SetValueText("width", "80");
  first.SetValueText("left", "1");
  second.SetValueText("left", "2");
  Run([&] {
    props.Show({&first, &second});
    EXPECT_EQ(RowOf("name"), -1);
    EXPECT_EQ(RowOf("kind"), -1) << "of buttons only";
    EXPECT_EQ(RowOf("text"), -1);
    EXPECT_EQ(Item("width").Value(), "80");
    EXPECT_EQ(Item("left").Value(), "");
    EXPECT_EQ(Item("class").Value(), "");
    Type("left", "9");
    EXPECT_THAT(log, ElementsAre("button1.left=9", "trackBar1.left=9"));
    EXPECT_EQ(changes, 1);
    Choose("backColor", "cRed");
    EXPECT_EQ(second.ValueText("backColor"), "cRed");
  });
}

TEST_F(PropBoxTest, RowsOfOneName_ButOtherTypes_AreNotCommon) {
  CtrlRec& track = Add("TrackBar", "trackBar1");
  CtrlRec& dial = Add("DialCtrl", "dial1");
  CtrlRec& spin = Add("SpinEdit", "spin1");
  Run([&] {
    props.Show({&track, &dial});
    EXPECT_EQ(RowOf("min"), -1);
    props.Show({&track, &spin});
    EXPECT_GE(RowOf("min"), 0);
  });
}

TEST_F(PropBoxTest, None_IsAnEmptyBox) {
  CtrlRec& rec = Add("Button", "button1");
  Run([&] {
    props.Show(rec);
    props.Show(std::vector<CtrlRec*>());
    EXPECT_EQ(props.box.Count(), 0);
  });
}

TEST_F(PropBoxTest, ACommitThatFillsTheBoxAnew_IsHarmless) {
  CtrlRec& rec = Add("Button", "button1");
  CtrlRec& other = Add("Label", "label1");
  Run([&] {
    props.Show(rec);
    props.onCommit = [&](CtrlRec&, PropValue&) { props.Show(other); };
    Type("width", "33");
    EXPECT_EQ(rec.ValueText("width"), "33");
    EXPECT_EQ(Item("name").Value(), "label1");
  });
}

TEST_F(PropBoxTest, ATabControl_EditsTheTextOfItsPage_AndItsPagesAreACommand) {
  mavro::TabCtrl live;
  mavro::TabPage page;
  page.text = "First";
  live.Add(&page);
  live.SetBounds(0, 0, 50, 50);
  CtrlRec& rec = Add("TabCtrl", "tabCtrl1");
  rec.ctrl = &live;
  form.Add(&live);
  Run([&] {
    props.Show(rec);
    EXPECT_EQ(Item("text").Value(), "First");
    test::Click(Item("pages").button);
    EXPECT_THAT(log, ElementsAre("tabCtrl1.pages=..."));
    EXPECT_EQ(rec.ValueText("pages"), "") << "a command is no value";
  });
}

TEST_F(PropBoxTest, FontRow_OpensItsDialog) {
  CtrlRec& rec = Add("Button", "button1");
  rec.SetValueText("font", "Font(10)");
  Run([&] {
    props.Show(rec);
    test::OnNextDialog(form, [](mavro::Form& dialog) {
      EXPECT_EQ(dialog.text, "Font");
      test::Key(dialog, Qt::Key_Escape);
    });
    test::Click(Item("font").button);
    EXPECT_THAT(log, IsEmpty());
    test::OnNextDialog(form, [](mavro::Form& dialog) {
      QTest::keyClick(test::WidgetOf(dialog)->windowHandle(), Qt::Key_Return);
    });
    test::Click(Item("font").button);
    EXPECT_THAT(log, IsEmpty()) << "the same font";
  });
}

TEST_F(PropBoxTest, QuotesInItems_AreMadeSafe) {
  CtrlRec& rec = Add("ListBox", "listBox1");
  Run([&] {
    props.Show(rec);
    test::OnNextDialog(form, [](mavro::Form& dialog) {
      EXPECT_EQ(dialog.text, "Items");
      QTest::keyClicks(QApplication::focusWidget(), "say \"hi\"");
      test::Key(dialog, Qt::Key_Return);
      QTest::keyClicks(QApplication::focusWidget(), "C:\\dir\\");
      test::Click(static_cast<ItemsDlg&>(dialog).okButton);
    });
    test::Click(Item("items").button);
    EXPECT_EQ(rec.ValueText("items"), "say \\\"hi\\\"\r\nC:\\dir\\\\\r\n");
    test::OnNextDialog(
        form, [](mavro::Form& dialog) { test::Click(static_cast<ItemsDlg&>(dialog).okButton); });
    test::Click(Item("items").button);
    EXPECT_EQ(rec.ValueText("items"), "say \\\"hi\\\"\r\nC:\\dir\\\\\r\n")
        << "what is safe stays as it is";
  });
}

TEST_F(PropBoxTest, TypingIsKeptWhenAnotherControlIsShownAfterwards) {
  CtrlRec& rec = Add("Button", "button1");
  CtrlRec& other = Add("Label", "label1");
  mavro::Button elsewhere;
  elsewhere.dock = mavro::Dock::cBootom;
  form.Add(&elsewhere);
  Run([&] {
    props.Show(rec);
    props.box.FocusRow(RowOf("text"));
    QTest::keyClicks(test::WidgetOf(Item("text").edit), "typed");
    elsewhere.Focus();
    props.Show(other);
    EXPECT_EQ(rec.ValueText("text"), "typed");
    EXPECT_NE(other.ValueText("text"), "typed");
  });
}

class PropBoxLook : public PropBoxTest, public testing::WithParamInterface<bool> {};

INSTANTIATE_TEST_SUITE_P(Looks, PropBoxLook, testing::Bool(),
                         [](const auto& look) { return look.param ? "dark" : "light"; });

TEST_P(PropBoxLook, Shot) {
  const QPalette before = QApplication::palette();
  if (GetParam()) QApplication::setPalette(test::DarkPalette());
  CtrlRec& rec = Add("ListView", "listView1");
  rec.FillDefaults();
  Run([&] {
    props.Show(rec);
    for (int row = 0; row < props.box.Count(); ++row)
      EXPECT_EQ(props.box.Item(row).title.hint, "") << "cut: " << props.box.Item(row).title.text;
    QCoreApplication::processEvents();  // the scroll bar comes by itself
    test::Shot(form, GetParam() ? "prop-box-dark" : "prop-box");
  });
  QApplication::setPalette(before);
}

}  // namespace
}  // namespace zendry
