#include "IconView.h"

#include <gtest/gtest.h>

#include <QListWidget>
#include <memory>

#include "EventLog.h"
#include "Form.h"
#include "GuiDriver.h"
#include "Icons.h"

namespace mavro {
namespace {

struct IconForm : Form {
  test::EventLog log;
  IconView view;

  IconForm() {
    SetBounds(0, 0, 360, 220);
    view.SetBounds(10, 10, 320, 180);
    view.imageList = Icons::cStrip;
    view.Add("Select", Icons::icoPoint);
    view.Add("Label", Icons::icoEdit);
    view.Add("A rather long name", Icons::icoNew);
    Add(&view);
    log.Listen("sel", view.onChangeSel);
    log.Listen("choose", view.onChoose);
  }
  QListWidget* Widget() { return qobject_cast<QListWidget*>(test::WidgetOf(view)); }
  QPoint Place(int index) { return Widget()->visualItemRect(Widget()->item(index)).center(); }
};

TEST(IconView, Window_ShowsWhatWasSetBefore) {
  IconForm form;
  form.view.selectedIndex = 1;
  test::RunForm(form, false, [&] {
    EXPECT_EQ(form.Widget()->count(), 3);
    EXPECT_EQ(form.Widget()->currentRow(), 1);
    EXPECT_FALSE(form.Widget()->item(0)->icon().isNull());
    EXPECT_EQ(form.log.Take(), "");
    test::Shot(form, "icon_view");
  });
}

TEST(IconView, ClickAndKeys_SelectAndTell) {
  IconForm form;
  test::RunForm(form, false, [&] {
    QTest::mouseClick(form.Widget()->viewport(), Qt::LeftButton, {}, form.Place(1));
    EXPECT_EQ(form.view.selectedIndex, 1);
    form.view.Focus();
    test::Key(form, Qt::Key_Right);
    EXPECT_EQ(form.log.Take(), "sel:1 sel:2 ");
  });
}

TEST(IconView, EnterAndDoubleClick_Choose) {
  IconForm form;
  form.view.selectedIndex = 2;
  test::RunForm(form, false, [&] {
    form.view.Focus();
    test::Key(form, Qt::Key_Return);
    QTest::mouseDClick(form.Widget()->viewport(), Qt::LeftButton, {}, form.Place(2));
    EXPECT_EQ(form.log.Take(), "choose:2 choose:2 ");
  });
}

TEST(IconView, ItemsChangedLive_SelectionFollows) {
  IconForm form;
  form.view.selectedIndex = 1;
  test::RunForm(form, false, [&] {
    form.view.Remove(0);
    EXPECT_EQ(form.view.selectedIndex, 0);
    EXPECT_EQ(form.view.GetItem(0).text, "Label");
    form.view.Remove(0);
    EXPECT_EQ(form.view.selectedIndex, -1);
    EXPECT_EQ(form.view.Add("\xFF", -1), 1);
    EXPECT_EQ(form.view.GetItem(1).text, "\xFF");
    form.view.Clear();
    EXPECT_EQ(form.Widget()->count(), 0);
    EXPECT_EQ(form.log.Take(), "");
  });
}

TEST(IconView, SelectedIndex_NoItemHasIt_SelectsNone) {
  IconForm form;
  form.view.selectedIndex = 12;
  test::RunForm(form, false, [&] {
    EXPECT_EQ(form.view.selectedIndex, -1);
    form.view.selectedIndex = -9;
    EXPECT_EQ(form.view.selectedIndex, -1);
  });
}

TEST(IconView, ImageThatDoesntExist_ShowsNone) {
  IconForm form;
  form.view.Add("none", 100000);
  test::RunForm(form, false, [&] {
    EXPECT_TRUE(form.Widget()->item(3)->icon().isNull());
    form.view.imageList = 0x7777;
    EXPECT_TRUE(form.Widget()->item(0)->icon().isNull());
  });
}

TEST(IconViewDeath, BadIndexes_Stop) {
  IconView view;
  EXPECT_DEATH(view.Remove(0), "index >= 0 && index < GetCount\\(\\)");
  EXPECT_DEATH(view.GetItem(-1), "index >= 0 && index < GetCount\\(\\)");
}

TEST(IconView, Destroyed_InOnChangeSel) {
  test::EventLog log;
  IconForm form;
  auto view = std::make_unique<IconView>();
  view->Add("a", -1);
  log.Listen("gone", view->onChangeSel, [&](NotifyArgs&) { view.reset(); });
  form.Add(view.get());
  test::RunForm(form, false, [&] {
    view->Focus();
    test::Key(form, Qt::Key_Space);
    EXPECT_EQ(view, nullptr);
  });
}

}  // namespace
}  // namespace mavro
