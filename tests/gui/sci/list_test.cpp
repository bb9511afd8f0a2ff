#include <gtest/gtest.h>

#include <QLabel>
#include <QListWidget>
#include <QMouseEvent>
#include <QPointer>

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

// The open list; null without one. It lies in a window that the lists share.
QListWidget* OpenList() {
  for (QWidget* widget : QApplication::allWidgets())
    if (auto* found = qobject_cast<QListWidget*>(widget); found && found->isVisible()) return found;
  return nullptr;
}

// Notes a size or place that the window of a list gets while it is on the screen.
class LateSizes final : public QObject {
 public:
  LateSizes() { qApp->installEventFilter(this); }

  int count = 0;

 private:
  bool eventFilter(QObject* watched, QEvent* event) override {
    const bool isPlace = event->type() == QEvent::Resize || event->type() == QEvent::Move;
    auto* window = qobject_cast<QWidget*>(watched);
    if (isPlace && window && window->isWindow() && window->isVisible() &&
        window->findChild<QListWidget*>())
      ++count;
    return false;
  }
};

QPoint MiddleOf(const QListWidget& list, int row) {
  return list.visualItemRect(list.item(row)).center();
}

TEST(SciList, Click_TakesTheRow) {
  EditorForm form;
  form.editor.offered = "alpha?1 beta?2 gamma?3";
  RunEditor(form, [&] {
    form.Fill("f@ + 1");
    form.Type(".");
    QListWidget* list = OpenList();
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
    QListWidget* list = OpenList();
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
    QListWidget* list = OpenList();
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
    ASSERT_TRUE(OpenList());
    bare = OpenList()->width();
    test::Key(form, Qt::Key_Escape);
    form.editor.notes = {{"alpha", {"std::string", ""}},
                         {"beta", {"int", "int Foo::beta(char c)"}}};
    form.Fill("f@");
    form.Type(".");
    QListWidget* list = OpenList();
    ASSERT_TRUE(list);
    EXPECT_GT(list->width(), bare + 30);
    EXPECT_EQ(list->item(0)->text(), "alpha");
    test::Key(form, Qt::Key_Return);
    EXPECT_EQ(form.Shown(), "f.alpha@");
  });
}

TEST(SciList, Window_HasItsSizeBeforeItIsShown) {
  EditorForm form;
  form.editor.offered = "alpha?1 beta?2";
  form.editor.notes = {{"alpha", {"std::string", ""}}, {"beta", {"int", ""}}};
  RunEditor(form, [&] {
    form.Fill("f@");
    const LateSizes late;
    form.Type(".");
    QApplication::processEvents();
    QListWidget* list = OpenList();
    ASSERT_TRUE(list);
    EXPECT_EQ(list->size(), list->window()->size());
    EXPECT_EQ(list->pos(), QPoint());
    EXPECT_EQ(late.count, 0);
  });
}

TEST(SciList, SecondList_HasItsOwnRowsAndWidth_InTheSameNativeWindow) {
  EditorForm form;
  form.editor.offered = "alpha?1 beta?2";
  RunEditor(form, [&] {
    form.Fill("f@");
    form.Type(".");
    ASSERT_TRUE(OpenList());
    const WId native = OpenList()->window()->winId();
    const int narrow = OpenList()->width();
    test::Key(form, Qt::Key_Escape);
    QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_FALSE(OpenList());
    form.editor.offered = "gamma?1 somethingThatIsFarLonger?2 omega?1";
    form.Fill("f@");
    form.Type(".");
    QListWidget* list = OpenList();
    ASSERT_TRUE(list);
    EXPECT_EQ(list->window()->winId(), native);
    EXPECT_EQ(list->count(), 3);
    EXPECT_GT(list->width(), narrow + 30);
  });
}

// The list of a word and that of a member follow each other without a pass of the loop between.
TEST(SciList, NextList_TakesThePlaceOfAnOpenOne) {
  EditorForm form;
  form.editor.offered = "alpha?1 beta?2";
  RunEditor(form, [&] {
    form.Fill("f@");
    form.Type(".");
    const QPointer<QListWidget> first = OpenList();
    form.editor.offered = "gamma?1 delta?2 omega?1";
    ASSERT_TRUE(form.editor.startCompletion());
    QListWidget* second = OpenList();
    ASSERT_TRUE(second);
    EXPECT_NE(second, first);
    EXPECT_EQ(second->count(), 3);
    EXPECT_EQ(second->window()->size(), second->size());
    QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_FALSE(first);
    EXPECT_TRUE(second->isVisible());
  });
}

TEST(SciList, Window_GoesWithTheList) {
  EditorForm form;
  form.editor.offered = "alpha?1 beta?2";
  RunEditor(form, [&] {
    form.Fill("f@");
    form.Type(".");
    ASSERT_TRUE(OpenList());
    const QPointer<QWidget> window = OpenList()->window();
    form.editor.Send(SCI_AUTOCCANCEL);
    QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_FALSE(OpenList());
    EXPECT_TRUE(window && !window->isVisible());
  });
}

// The component reads its list once more while it is destroyed.
TEST(SciList, EditorThatIsDestroyed_TakesItsOpenListAlong) {
  QPointer<QListWidget> list;
  QPointer<QWidget> window;
  {
    EditorForm form;
    form.editor.offered = "alpha?1 beta?2";
    RunEditor(form, [&] {
      form.Fill("f@");
      form.Type(".");
      list = OpenList();
      ASSERT_TRUE(list);
      window = list->window();
    });
  }
  QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  EXPECT_FALSE(list);
  EXPECT_FALSE(window);
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
