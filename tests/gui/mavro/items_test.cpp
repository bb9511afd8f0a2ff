#include <gtest/gtest.h>

#include <QAbstractItemView>
#include <QComboBox>
#include <QListWidget>
#include <QWheelEvent>
#include <memory>

#include "EventLog.h"
#include "Form.h"
#include "GuiDriver.h"
#include "ListBox.h"

namespace mavro {
namespace {

struct ItemsForm : Form {
  test::EventLog log;
  ListBox list;
  ComboBox mode, free;

  ItemsForm() {
    SetBounds(0, 0, 400, 200);
    for (const char* item : {"zero", "one", "two"}) {
      list.items.Add(item);
      mode.items.Add(item);
      free.items.Add(item);
    }
    list.SetBounds(0, 0, 120, 100);
    Add(&list);
    mode.SetLocation(130, 0);
    mode.chooseOnly = true;
    Add(&mode);
    free.SetLocation(130, 40);
    Add(&free);
    log.Listen("list", list.onSelChanged);
    log.Listen("mode", mode.onSelChanged);
    log.Listen("free", free.onSelChanged);
  }
  QListWidget* ListWidget() { return qobject_cast<QListWidget*>(test::WidgetOf(list)); }
  static QComboBox* BoxWidget(ComboBox& box) {
    return qobject_cast<QComboBox*>(test::WidgetOf(box));
  }
};

TEST(ItemList, InsertRemoveFind) {
  ListBox list;
  list.items.Add("b");
  list.items.Insert("a", 0);
  list.items.Insert("c", -1);
  EXPECT_EQ(list.items.GetCount(), 3);
  EXPECT_EQ(list.items[0], "a");
  EXPECT_EQ(list.items.IndexOf("c"), 2);
  EXPECT_EQ(list.items.IndexOf("C"), -1);
  list.items.Remove(1);
  EXPECT_EQ(list.items[1], "c");
  list.items.Clear();
  EXPECT_EQ(list.items.GetCount(), 0);
}

TEST(ItemListDeath, BadIndexes_Stop) {
  ListBox list;
  list.items.Add("a");
  EXPECT_DEATH(list.items.Insert("b", 2), "index >= -1 && index <= GetCount\\(\\)");
  EXPECT_DEATH(list.items.Remove(1), "index >= 0 && index < GetCount\\(\\)");
  EXPECT_DEATH(list.items.Remove(-1), "index >= 0 && index < GetCount\\(\\)");
  EXPECT_DEATH(list.items[1], "index >= 0 && index < GetCount\\(\\)");
}

TEST(ListBox, Window_ShowsWhatWasSetBefore) {
  ItemsForm form;
  form.list.selectedIndex = 1;
  test::RunForm(form, false, [&] {
    EXPECT_EQ(form.ListWidget()->count(), 3);
    EXPECT_EQ(form.ListWidget()->currentRow(), 1);
    EXPECT_EQ(form.log.Take(), "");
  });
}

TEST(ListBox, SelectedIndex_NoItemHasIt_SelectsNone) {
  ItemsForm form;
  form.list.selectedIndex = 7;
  test::RunForm(form, false, [&] {
    EXPECT_EQ(form.list.selectedIndex, -1);
    form.list.selectedIndex = 2;
    form.list.selectedIndex = -1;
    EXPECT_TRUE(form.ListWidget()->selectedItems().isEmpty());
  });
}

TEST(ListBox, ClickAndKeys_SelectAndTell) {
  ItemsForm form;
  test::RunForm(form, false, [&] {
    const QRect second = form.ListWidget()->visualItemRect(form.ListWidget()->item(1));
    QTest::mouseClick(form.ListWidget()->viewport(), Qt::LeftButton, Qt::NoModifier,
                      second.center());
    EXPECT_EQ(form.list.selectedIndex, 1);
    EXPECT_EQ(form.log.Take(), "list:1 ");
    test::Key(form, Qt::Key_Down);
    EXPECT_EQ(form.log.Take(), "list:2 ");
  });
}

TEST(ListBox, Selection_FollowsItsItem) {
  ItemsForm form;
  form.list.selectedIndex = 1;
  test::RunForm(form, false, [&] {
    form.list.items.Insert("before", 0);
    EXPECT_EQ(form.list.selectedIndex, 2);
    EXPECT_EQ(form.ListWidget()->currentRow(), 2);
    form.list.items.Remove(0);
    EXPECT_EQ(form.list.selectedIndex, 1);
    form.list.items.Remove(1);
    EXPECT_EQ(form.list.selectedIndex, -1);
    form.list.items.Clear();
    EXPECT_EQ(form.ListWidget()->count(), 0);
    EXPECT_EQ(form.log.Take(), "");
  });
}

TEST(ListBox, EqualValue_SendsNothing) {
  ItemsForm form;
  form.list.selectedIndex = 1;
  test::RunForm(form, false, [&] {
    const QSignalBlocker silent(form.ListWidget());
    form.ListWidget()->setCurrentRow(0);
    form.list.selectedIndex = 1;
    EXPECT_EQ(form.ListWidget()->currentRow(), 0);
  });
}

TEST(ListBox, Destroyed_InOnSelChanged) {
  test::EventLog log;
  ItemsForm form;
  auto list = std::make_unique<ListBox>();
  list->items.Add("a");
  list->SetLocation(0, 100);
  log.Listen("gone", list->onSelChanged, [&](NotifyArgs&) { list.reset(); });
  form.Add(list.get());
  test::RunForm(form, false, [&] {
    list->Focus();
    test::Key(form, Qt::Key_Space);
    EXPECT_EQ(log.Take(), "gone:0 ");
  });
}

TEST(ComboBox, Window_ShowsWhatWasSetBefore) {
  ItemsForm form;
  form.mode.selectedIndex = 1;
  form.free.text = "typed";
  EXPECT_EQ(form.mode.text.Get(), "one");
  test::RunForm(form, false, [&] {
    EXPECT_EQ(form.mode.text.Get(), "one");
    EXPECT_EQ(form.free.text.Get(), "typed");
    EXPECT_EQ(form.free.selectedIndex, -1);
    EXPECT_EQ(form.log.Take(), "");
  });
  EXPECT_EQ(form.free.text.Get(), "typed");
}

TEST(ComboBox, NothingSelected_ShowsNothing) {
  ItemsForm form;
  test::RunForm(form, false, [&] {
    EXPECT_EQ(form.mode.text.Get(), "");
    EXPECT_EQ(form.mode.selectedIndex, -1);
    form.mode.items.Clear();
    form.mode.items.Add("late");
    EXPECT_EQ(form.mode.text.Get(), "");
  });
}

TEST(ComboBox, Keys_SelectAndTell) {
  ItemsForm form;
  form.mode.selectedIndex = 0;
  test::RunForm(form, false, [&] {
    form.mode.Focus();
    test::Key(form, Qt::Key_Down);
    EXPECT_EQ(form.mode.selectedIndex, 1);
    EXPECT_EQ(form.mode.text.Get(), "one");
    EXPECT_EQ(form.log.Take(), "mode:1 ");
    form.mode.selectedIndex = 2;
    EXPECT_EQ(form.log.Take(), "");
  });
}

TEST(ComboBox, Popup_EnterChooses) {
  ItemsForm form;
  form.mode.selectedIndex = 0;
  test::RunForm(form, false, [&] {
    QComboBox* box = ItemsForm::BoxWidget(form.mode);
    test::Click(form.mode);
    ASSERT_TRUE(test::WaitFor([&] { return box->view()->isVisible(); }));
    QTest::keyClick(box->view(), Qt::Key_Down);
    QTest::keyClick(box->view(), Qt::Key_Return);
    EXPECT_EQ(form.mode.selectedIndex, 1);
    EXPECT_EQ(form.log.Take(), "mode:1 ");
  });
}

TEST(ComboBox, Typing_DeselectsAndCompletesNothing) {
  ItemsForm form;
  form.free.selectedIndex = 1;
  test::RunForm(form, false, [&] {
    form.free.Focus();
    QTest::keyClick(test::WidgetOf(form.free), Qt::Key_End);
    QTest::keyClick(test::WidgetOf(form.free), Qt::Key_X);
    EXPECT_EQ(form.free.text.Get(), "onex");
    EXPECT_EQ(form.free.selectedIndex, -1);
    form.free.text = "";
    QTest::keyClick(test::WidgetOf(form.free), Qt::Key_T);
    EXPECT_EQ(form.free.text.Get(), "t");
    form.free.selectedIndex = 1;
    EXPECT_EQ(form.free.text.Get(), "one");
    EXPECT_EQ(form.free.items.GetCount(), 3);
    EXPECT_EQ(form.log.Take(), "");
  });
}

TEST(ComboBox, Text_AnyBytes_ComeOutAsTheyWent) {
  ItemsForm form;
  form.free.text = "a\xFF\xC3";
  form.mode.items.Add("b\xFE");
  form.mode.selectedIndex = 3;
  test::RunForm(form, false, [&] {
    EXPECT_EQ(form.free.text.Get(), "a\xFF\xC3");
    EXPECT_EQ(form.mode.text.Get(), "b\xFE");
  });
}

TEST(ComboBox, ChooseOnly_TextSelectsItsItem) {
  ItemsForm form;
  test::RunForm(form, false, [&] {
    form.mode.text = "two";
    EXPECT_EQ(form.mode.text.Get(), "two");
    form.mode.text = "none of them";
    EXPECT_EQ(form.mode.text.Get(), "");
  });
}

TEST(ComboBox, ChooseOnly_SwitchedWithTheWindow) {
  ItemsForm form;
  form.free.selectedIndex = 1;
  test::RunForm(form, false, [&] {
    form.free.chooseOnly = true;
    EXPECT_EQ(form.free.text.Get(), "one");
    form.free.chooseOnly = false;
    EXPECT_EQ(form.free.text.Get(), "one");
    form.free.Focus();
    QTest::keyClick(test::WidgetOf(form.free), Qt::Key_X);
    EXPECT_EQ(form.free.selectedIndex, -1);
  });
}

TEST(ComboBox, Wheel_WithoutTheFocus_ChangesNothing) {
  ItemsForm form;
  form.mode.selectedIndex = 0;
  test::RunForm(form, false, [&] {
    form.list.Focus();
    QComboBox* box = ItemsForm::BoxWidget(form.mode);
    QWheelEvent event(QPointF(5, 5), box->mapToGlobal(QPointF(5, 5)), QPoint(), QPoint(0, -120),
                      Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(box, &event);
    EXPECT_EQ(form.mode.selectedIndex, 0);
  });
}

TEST(ComboBox, Destroyed_InOnSelChanged) {
  test::EventLog log;
  ItemsForm form;
  auto box = std::make_unique<ComboBox>();
  box->items.Add("a");
  box->items.Add("b");
  box->chooseOnly = true;
  box->SetLocation(130, 80);
  log.Listen("gone", box->onSelChanged, [&](ItemArgs&) { box.reset(); });
  form.Add(box.get());
  test::RunForm(form, false, [&] {
    box->Focus();
    test::Key(form, Qt::Key_End);
    EXPECT_EQ(log.Take(), "gone:1 ");
  });
}

TEST(ComboBox, Typing_IsTold_AndReplacesTheTextOfANewForm) {
  test::EventLog log;
  Form form;
  form.SetBounds(0, 0, 300, 100);
  ComboBox box;
  box.items.Add("item");
  box.text = "old";
  log.Listen("typed", box.onChange);
  form.Add(&box);
  form.focusControl = &box;
  test::RunForm(form, false, [&] {
    EXPECT_TRUE(test::WaitFor([&] { return box.IsFocused(); }));
    QTest::keyClicks(QApplication::focusWidget(), "ab");
    EXPECT_EQ(box.text, "ab");
    EXPECT_EQ(log.Take(), "typed:0 typed:0 ");
    box.text = "set";
    EXPECT_EQ(log.Take(), "") << "an assignment isn't told";
  });
}

TEST(ComboBox, Destroyed_ByAChoiceInThePopup) {
  test::EventLog log;
  ItemsForm form;
  auto box = std::make_unique<ComboBox>();
  box->items.Add("a");
  box->items.Add("b");
  box->chooseOnly = true;
  box->SetLocation(130, 80);
  log.Listen("gone", box->onSelChanged, [&](ItemArgs&) { box.reset(); });
  form.Add(box.get());
  test::RunForm(form, false, [&] {
    QComboBox* widget = ItemsForm::BoxWidget(*box);
    test::Click(*box);
    ASSERT_TRUE(test::WaitFor([&] { return widget->view()->isVisible(); }));
    QTest::keyClick(widget->view(), Qt::Key_End);
    QTest::keyClick(widget->view(), Qt::Key_Return);
    EXPECT_EQ(log.Take(), "gone:1 ");
  });
}

}  // namespace
}  // namespace mavro
