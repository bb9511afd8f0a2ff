#include <gtest/gtest.h>

#include <QLabel>
#include <QListWidget>
#include <QMouseEvent>

#include "DarkPalette.h"
#include "EditorForm.h"

// The list of names as it looks and as it is clicked.

namespace mavro {
namespace {

using test::EditorForm;
using test::RunEditor;

// The one open window of a kind; null without one.
template <class Widget>
Widget* OpenWindow() {
  for (QWidget* window : QApplication::topLevelWidgets())
    if (auto* found = qobject_cast<Widget*>(window); found && found->isVisible()) return found;
  return nullptr;
}

QPoint MiddleOf(const QListWidget& list, int row) {
  return list.visualItemRect(list.item(row)).center();
}

TEST(SciList, Click_TakesTheRow) {
  EditorForm form;
  form.editor.offered = "alpha?1 beta?2 gamma?3";
  RunEditor(form, [&] {
    form.Fill("f@ + 1");
    form.Type(".");
    QListWidget* list = OpenWindow<QListWidget>();
    ASSERT_TRUE(list);
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, MiddleOf(*list, 1));
    EXPECT_EQ(form.Shown(), "f.beta@ + 1");
    EXPECT_FALSE(form.editor.Send(SCI_AUTOCACTIVE));
    EXPECT_EQ(form.editor.taken, "[beta]");
  });
}

TEST(SciList, DoubleClick_TakesTheRowOnce_AndLeavesTheCaret) {
  EditorForm form;
  form.editor.offered = "alpha?1 beta?2 gamma?3";
  RunEditor(form, [&] {
    form.Fill("f@\nx\ny\nz\n");
    form.Type(".");
    QListWidget* list = OpenWindow<QListWidget>();
    ASSERT_TRUE(list);
    const QPoint place = MiddleOf(*list, 2);
    const QPoint onScreen = list->viewport()->mapToGlobal(place);
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, place);
    QWidget* below = QApplication::widgetAt(onScreen);
    ASSERT_TRUE(below);
    QMouseEvent second(QEvent::MouseButtonDblClick, below->mapFromGlobal(onScreen), onScreen,
                       Qt::LeftButton, Qt::LeftButton, {});
    QApplication::sendEvent(below, &second);
    EXPECT_EQ(form.Shown(), "f.gamma@\nx\ny\nz\n");
    EXPECT_EQ(form.editor.taken, "[gamma]");
  });
}

TEST(SciList, ClickElsewhere_AfterATakenRow_MovesTheCaret) {
  EditorForm form;
  form.editor.offered = "alpha?1 beta?2 gamma?3";
  RunEditor(form, [&] {
    form.Fill("f@\nx\ny\nz\n");
    form.Type(".");
    QListWidget* list = OpenWindow<QListWidget>();
    ASSERT_TRUE(list);
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, MiddleOf(*list, 0));
    const QPoint onScreen = test::WidgetOf(form)->mapToGlobal(QPoint(300, 300));
    QWidget* text = QApplication::widgetAt(onScreen);
    ASSERT_TRUE(text);
    QTest::mouseClick(text, Qt::LeftButton, {}, text->mapFromGlobal(onScreen));
    EXPECT_NE(form.Shown(), "f.alpha@\nx\ny\nz\n");
  });
}

TEST(SciList, Notes_WidenTheListAndLeaveTheNamesAlone) {
  EditorForm form;
  form.editor.offered = "alpha?1 beta?2";
  int bare = 0;
  RunEditor(form, [&] {
    form.Fill("f@");
    form.Type(".");
    ASSERT_TRUE(OpenWindow<QListWidget>());
    bare = OpenWindow<QListWidget>()->width();
    test::Key(form, Qt::Key_Escape);
    form.editor.notes = {{"alpha", {"std::string", ""}},
                         {"beta", {"int", "int Foo::beta(char c)"}}};
    form.Fill("f@");
    form.Type(".");
    QListWidget* list = OpenWindow<QListWidget>();
    ASSERT_TRUE(list);
    EXPECT_GT(list->width(), bare + 30);
    EXPECT_EQ(list->item(0)->text(), "alpha");
    test::Key(form, Qt::Key_Return);
    EXPECT_EQ(form.Shown(), "f.alpha@");
  });
}

TEST(SciList, DetailOfTheSelectedRow_IsBesideTheList) {
  EditorForm form;
  form.editor.offered = "alpha?1 beta?2";
  form.editor.notes = {{"beta", {"int", "int Foo::beta(char c)"}}};
  RunEditor(form, [&] {
    form.Fill("f@");
    form.Type(".");
    EXPECT_FALSE(OpenWindow<QLabel>());
    test::Key(form, Qt::Key_Down);
    ASSERT_TRUE(OpenWindow<QLabel>());
    EXPECT_EQ(OpenWindow<QLabel>()->text(), "int Foo::beta(char c)");
    test::Key(form, Qt::Key_Up);
    EXPECT_FALSE(OpenWindow<QLabel>());
    test::Key(form, Qt::Key_Down);
    test::Key(form, Qt::Key_Return);
    EXPECT_FALSE(OpenWindow<QLabel>());
  });
}

TEST(SciList, Choice_IsSelected_AlsoWhenLettersFollow) {
  EditorForm form;
  form.editor.offered = "alpha?1 beta?2 bold?2";
  form.editor.choice = "bold";
  RunEditor(form, [&] {
    form.Fill("f@");
    form.Type(".");
    test::Key(form, Qt::Key_Return);
    EXPECT_EQ(form.Shown(), "f.bold@");
    form.Fill("f@");
    form.Type(".b");
    test::Key(form, Qt::Key_Return);
    EXPECT_EQ(form.Shown(), "f.bold@");
    form.Fill("f@");
    form.Type(".a");
    test::Key(form, Qt::Key_Return);
    EXPECT_EQ(form.Shown(), "f.alpha@");
    EXPECT_EQ(form.editor.taken, "[bold][bold][alpha]");
  });
}

}  // namespace
}  // namespace mavro
