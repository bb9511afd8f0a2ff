#include "PropertyBox.h"

#include <gtest/gtest.h>

#include <QAbstractScrollArea>
#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollBar>

#include "DarkPalette.h"
#include "Form.h"
#include "GuiDriver.h"
#include "ScriptedDialogs.h"

namespace mavro {
namespace {

struct BoxForm : Form {
  PropertyBox box;
  Button ok;
  std::string log;

  explicit BoxForm(int rows = 4) {
    SetBounds(0, 0, 260, 200);
    box.dock = Dock::cFill;
    box.onChange.Add_H(this, &BoxForm::OnChange);
    box.onDblClickRow.Add_H(this, &BoxForm::OnDouble);
    Add(&box);
    ok.kind = Button::cOk;
    ok.dock = Dock::cBootom;
    Add(&ok);
    box.SetCount(rows);
    for (int row = 0; row < rows; ++row) Fill(row);
  }
  void Fill(int row) {
    PopertyItem& item = box.Item(row);
    item.SetTitle("row" + std::to_string(row));
    item.SetMode(row % 4);
    if (item.ActiveMode() == PopertyItem::cCombo) item.SetOptions("one|two|three");
    item.SetValue(item.ActiveMode() == PopertyItem::cCombo ? "two" : "old");
  }
  void OnChange(ItemArgs& args) { log += std::to_string(args.row) + "=" + args.text + ";"; }
  void OnDouble(ItemArgs& args) { log += "double" + std::to_string(args.row) + ";"; }
  QLineEdit* Line(int row = 0) {
    return qobject_cast<QLineEdit*>(test::WidgetOf(box.Item(row).edit));
  }
  void Type(const char* text) {
    Line()->setFocus();
    Line()->selectAll();
    QTest::keyClicks(Line(), text);
  }
  QWindow* WidgetWindow() { return test::WidgetOf(*this)->windowHandle(); }
};

TEST(PropertyBox, NewOne_HasNoRowsAndIsNarrow) {
  PropertyBox box;
  EXPECT_EQ(box.width, 100);
  EXPECT_EQ(box.Count(), 0);
  box.SetCount(1);
  EXPECT_EQ(box.Item(0).title.text, "Item");
}

TEST(PropertyBox, EachRow_ShowsTheEditorOfItsMode) {
  BoxForm form;
  test::RunForm(form, true, [&] {
    for (int row = 0; row < 4; ++row)
      for (Control* editor : form.box.Item(row).editors)
        EXPECT_EQ(editor->impl->hwnd && test::WidgetOf(*editor)->isVisible(),
                  editor == form.box.Item(row).editors[row])
            << row;
    PopertyItem& first = form.box.Item(0);
    first.SetMode(PopertyItem::cButton);
    EXPECT_FALSE(test::WidgetOf(first.edit)->isVisible());
    EXPECT_TRUE(test::WidgetOf(first.button)->isVisible());
    EXPECT_EQ(first.button.text, "...");
  });
}

TEST(PropertyBox, FewerRows_HideTheRest_MoreReuseThem) {
  BoxForm form;
  test::RunForm(form, true, [&] {
    Control* second = &form.box.Item(1);
    form.box.SetCount(1);
    EXPECT_FALSE(second->visible);
    form.box.SetCount(6);
    EXPECT_EQ(&form.box.Item(1), second);
    EXPECT_TRUE(test::WidgetOf(*second)->isVisible());
    EXPECT_EQ(form.box.GetControlCount(), 6);
    form.box.SetCount(0);
    EXPECT_FALSE(second->visible);
  });
}

TEST(PropertyBox, Enter_TakesTheText_AndLeavesTheDialogOpen) {
  BoxForm form;
  test::RunForm(form, true, [&] {
    form.Type("new");
    EXPECT_EQ(form.log, "");
    test::Key(form, Qt::Key_Return);
    EXPECT_EQ(form.log, "0=new;");
    EXPECT_TRUE(form.impl->hwnd);
    EXPECT_EQ(form.result, Form::cNone);
  });
}

TEST(PropertyBox, Escape_GivesTheOldTextBack_OnlyTheNextOneIsTheDialogs) {
  BoxForm form;
  Button cancel;
  cancel.kind = Button::cCancel;
  cancel.dock = Dock::cBootom;
  form.Add(&cancel);
  test::RunForm(form, true, [&] {
    form.Type("new");
    test::Key(form, Qt::Key_Escape);
    EXPECT_EQ(form.Line()->text(), "old");
    ASSERT_TRUE(form.impl->hwnd);
    test::Key(form, Qt::Key_Escape);
    EXPECT_TRUE(test::WaitFor([&] { return !form.impl->hwnd; }));
  });
  EXPECT_EQ(form.log, "");
  EXPECT_EQ(form.result, Form::cCancel);
}

TEST(PropertyBox, LeavingTheEditor_TakesWhatWasTyped_Once) {
  BoxForm form;
  test::RunForm(form, true, [&] {
    form.Type("new");
    test::Key(form, Qt::Key_Tab);
    EXPECT_EQ(form.log, "0=new;");
    form.Line()->setFocus();
    test::Key(form, Qt::Key_Tab);
    EXPECT_EQ(form.log, "0=new;") << "nothing was typed";
  });
}

TEST(PropertyBox, ANumber_TakesDigitsOnly_AndHalfANumberIsNotTaken) {
  BoxForm form;
  form.box.Item(0).edit.dataType = Edit::cInteger;
  form.box.Item(0).SetValue("12");
  test::RunForm(form, true, [&] {
    form.Type("-x7");
    test::Key(form, Qt::Key_Return);
    EXPECT_EQ(form.log, "0=-7;");
    form.Type("-");
    test::Key(form, Qt::Key_Return);
    EXPECT_EQ(form.log, "0=-7;");
    test::Key(form, Qt::Key_Tab);
    EXPECT_EQ(form.Line()->text(), "-7");
    EXPECT_EQ(form.log, "0=-7;");
  });
}

TEST(PropertyBox, UpAndDown_GoToTheNeighbour_FromEveryEditor) {
  BoxForm form(5);
  test::RunForm(form, true, [&] {
    form.Line()->setFocus();
    for (int row = 1; row < 5; ++row) {
      test::Key(form, Qt::Key_Down);
      EXPECT_TRUE(form.box.Item(row).editors[row % 4]->IsFocused()) << row;
    }
    test::Key(form, Qt::Key_Down);
    EXPECT_TRUE(form.box.Item(4).edit.IsFocused()) << "the last row";
    for (int row = 3; row >= 0; --row) {
      test::Key(form, Qt::Key_Up);
      EXPECT_TRUE(form.box.Item(row).editors[row % 4]->IsFocused()) << row;
    }
    EXPECT_EQ(form.log, "") << "no value has changed";
  });
}

TEST(PropertyBox, Combo_TellsAChoice_AndAnUnknownValueSelectsNone) {
  BoxForm form;
  test::RunForm(form, true, [&] {
    auto* combo = qobject_cast<QComboBox*>(test::WidgetOf(form.box.Item(2).combo));
    EXPECT_EQ(combo->currentText(), "two");
    form.box.Item(2).SetValue("four");
    EXPECT_EQ(combo->currentIndex(), -1);
    EXPECT_EQ(form.log, "");
    combo->setFocus();
    QTest::keyClick(form.WidgetWindow(), Qt::Key_End);
    EXPECT_EQ(form.log, "2=three;");
  });
}

TEST(PropertyBox, Options_AreCutAtEachBar) {
  PropertyBox box;
  box.SetCount(1);
  PopertyItem& item = box.Item(0);
  item.SetMode(PopertyItem::cCombo);
  item.SetOptions("a||b|");
  ASSERT_EQ(item.combo.items.GetCount(), 3);
  EXPECT_EQ(item.combo.items[1], "");
  item.SetOptions("x");
  EXPECT_EQ(item.combo.items.GetCount(), 1);
  item.SetOptions("");
  EXPECT_EQ(item.combo.items.GetCount(), 0);
}

TEST(PropertyBox, ButtonAndCheckBox_TellAtOnce) {
  BoxForm form;
  test::RunForm(form, true, [&] {
    test::Click(form.box.Item(1).button);
    EXPECT_EQ(form.log, "1=old;");
    test::Click(form.box.Item(3).check, QPoint(8, 12));
    EXPECT_EQ(form.log, "1=old;3=true;");
  });
}

TEST(PropertyBox, DoubleClick_IsToldInPlaceOfTheClick) {
  BoxForm form;
  form.box.waitsForDoubleClick = true;
  test::RunForm(form, true, [&] {
    QWidget* button = test::WidgetOf(form.box.Item(1).button);
    QTest::mouseClick(button, Qt::LeftButton);
    EXPECT_EQ(form.log, "") << "a second click may follow";
    QTest::mouseDClick(button, Qt::LeftButton);
    EXPECT_EQ(form.log, "double1;");
    button->setFocus();
    test::Key(form, Qt::Key_Space);
    EXPECT_EQ(form.log, "double1;1=old;") << "no second press of a key is waited for";
    QTest::mouseClick(button, Qt::LeftButton);
    EXPECT_TRUE(test::WaitFor([&] { return form.log == "double1;1=old;1=old;"; }));
  });
}

TEST(PropertyBox, SixtyRows_ScrollAndFollowTheFocus) {
  BoxForm form(60);
  test::RunForm(form, true, [&] {
    auto* area = qobject_cast<QAbstractScrollArea*>(test::WidgetOf(form.box));
    EXPECT_TRUE(test::WaitFor([&] { return area->verticalScrollBar()->isVisible(); }));
    form.box.FocusRow(59);
    EXPECT_TRUE(test::WaitFor([&] { return area->verticalScrollBar()->value() > 0; }));
    const QWidget* last = test::WidgetOf(form.box.Item(59));
    EXPECT_TRUE(area->viewport()->rect().contains(last->geometry()));
    EXPECT_EQ(last->width(), area->viewport()->width());
    form.box.SetCount(2);
    EXPECT_TRUE(test::WaitFor([&] { return !area->verticalScrollBar()->isVisible(); }));
    EXPECT_EQ(test::WidgetOf(form.box.Item(0))->y(), 0);
    EXPECT_EQ(test::WidgetOf(form.box.Item(0))->width(), area->viewport()->width());
  });
}

TEST(PropertyBox, TitleColumn_FitsItsTitles_UntilItIsDragged) {
  BoxForm form;
  test::RunForm(form, true, [&] {
    PopertyItem& item = form.box.Item(0);
    item.SetTitle("headerVisible");
    form.box.FitTitles();
    QFontMetrics font(test::WidgetOf(item.title)->font());
    EXPECT_GE(item.title.width, font.horizontalAdvance("headerVisible"));
    const int edge = item.edit.left;
    QWidget* row = test::WidgetOf(item);
    QTest::mousePress(row, Qt::LeftButton, {}, QPoint(edge - 3, 12));
    QTest::mouseMove(row, QPoint(70, 12));
    QTest::mouseRelease(row, Qt::LeftButton, {}, QPoint(70, 12));
    EXPECT_NE(item.edit.left, edge);
    const int dragged = item.edit.left;
    EXPECT_EQ(form.box.Item(1).button.left, dragged) << "all rows have one edge";
    EXPECT_EQ(item.title.hint, "headerVisible") << "the tip shows what is cut";
    form.box.FitTitles();
    EXPECT_EQ(item.edit.left, dragged);
  });
}

TEST(PropertyBox, NarrowBox_KeepsRoomForTheEditors) {
  BoxForm form;
  test::RunForm(form, true, [&] {
    form.box.Item(0).SetTitle(
        "a title that is longer than any box would be wide, and longer still");
    form.box.FitTitles();
    EXPECT_GE(form.box.Item(0).edit.width, form.box.width * 2 / 5 - 20);
    EXPECT_NE(form.box.Item(0).title.hint, "");
  });
}

TEST(PropertyBox, ClickOnATitle_FocusesItsEditor) {
  BoxForm form;
  test::RunForm(form, true, [&] {
    test::Click(form.box.Item(0).title, QPoint(3, 8));
    EXPECT_TRUE(form.box.Item(0).edit.IsFocused());
  });
}

struct Look {
  const char* name;
  bool isDark;
};

class PropertyBoxLook : public testing::TestWithParam<Look> {};

INSTANTIATE_TEST_SUITE_P(Looks, PropertyBoxLook,
                         testing::Values(Look{"light", false}, Look{"dark", true}),
                         [](const auto& look) { return look.param.name; });

TEST_P(PropertyBoxLook, Shot) {
  const QPalette before = QApplication::palette();
  if (GetParam().isDark) QApplication::setPalette(test::DarkPalette());
  {
    BoxForm form(12);
    test::RunForm(form, true, [&] {
      form.box.Item(0).SetTitle("headerVisible");
      form.box.FitTitles();
      form.box.FocusRow(4);
      test::Shot(form, std::string("property-box-") + GetParam().name);
    });
  }
  QApplication::setPalette(before);
}

}  // namespace
}  // namespace mavro
