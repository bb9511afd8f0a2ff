#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QLineEdit>
#include <QTreeView>

#include "EditorFixture.h"

// The pages of watched expressions, with no session.

namespace zendry {
namespace {

using test::IdeDriver;
using testing::ElementsAre;

class WatchPages : public test::EditorFixture {
 protected:
  static mavro::ListView& List(int page = 0) { return theMainForm->watches[page].list; }
  static QTreeView* View(int page = 0) {
    return qobject_cast<QTreeView*>(test::WidgetOf(List(page)));
  }
  static QLineEdit* Cell(int page = 0) { return View(page)->viewport()->findChild<QLineEdit*>(); }
  static void ClickRow(int row, int column = 0) {
    test::WaitFor([&] { return View()->model()->rowCount() > row; });
    QTest::mouseClick(View()->viewport(), Qt::LeftButton, Qt::NoModifier,
                      View()->visualRect(View()->model()->index(row, column)).center());
  }
  // Types into the cell that is open, and ends with a key.
  static void TypeCell(const char* text, Qt::Key end = Qt::Key_Return) {
    ASSERT_NE(Cell(), nullptr);
    Cell()->selectAll();
    QTest::keyClicks(Cell(), text);
    QTest::keyClick(Cell()->window()->windowHandle(), end);
  }
  static void ShowPage(int page = 0) { theMainForm->ShowPage(cFirstWatchPage + page); }
};

TEST_F(WatchPages, TheEmptyRow_TakesANewExpression) {
  ide.Run({}, [&] {
    ShowPage();
    EXPECT_THAT(IdeDriver::Rows(List()), ElementsAre("|"));
    ClickRow(0);
    TypeCell(" count ");
    EXPECT_THAT(IdeDriver::Rows(List()), ElementsAre("count|", "|"));
    ClickRow(1);
    TypeCell("a + b");
    EXPECT_THAT(IdeDriver::Rows(List()), ElementsAre("count|", "a + b|", "|"));
    EXPECT_EQ(theDebugger.watches.lists[0].size(), 2u);
    EXPECT_EQ(theDebugger.watches.lists[1].size(), 0u);
  });
}

TEST_F(WatchPages, ACell_IsEditedInPlace) {
  ide.Run({}, [&] {
    ShowPage();
    theDebugger.AddExpression(0, "one");
    theDebugger.AddExpression(0, "two");
    test::WidgetOf(List())->setFocus();
    List().Select(0);
    test::Key(*theMainForm, Qt::Key_Return);
    TypeCell("three");
    EXPECT_THAT(IdeDriver::Rows(List()), ElementsAre("three|", "two|", "|"));
    List().EditCell(1, 0);
    TypeCell("four", Qt::Key_Escape);
    EXPECT_THAT(IdeDriver::Rows(List()), ElementsAre("three|", "two|", "|"));
    List().EditCell(1, 0);
    TypeCell("three");
    EXPECT_THAT(IdeDriver::Rows(List()), ElementsAre("three|", "two|", "|")) << "it has that one";
  });
}

TEST_F(WatchPages, AnEmptiedCell_TakesItsRowAway) {
  ide.Run({}, [&] {
    ShowPage();
    for (const char* text : {"one", "two", "three"}) theDebugger.AddExpression(0, text);
    List().EditCell(1, 0);
    TypeCell("  ");
    EXPECT_THAT(IdeDriver::Rows(List()), ElementsAre("one|", "three|", "|"));
    test::WidgetOf(List())->setFocus();
    List().Select(0);
    test::Key(*theMainForm, Qt::Key_Delete);
    EXPECT_THAT(IdeDriver::Rows(List()), ElementsAre("three|", "|"));
    List().Select(1);
    test::Key(*theMainForm, Qt::Key_Delete);
    EXPECT_THAT(IdeDriver::Rows(List()), ElementsAre("three|", "|"));
  });
}

TEST_F(WatchPages, Values_ChangedOnesAreMarked_ErrorsShowWhileThereIsNone) {
  ide.Run({}, [&] {
    ShowPage();
    for (const char* text : {"same", "other", "wrong", "lost", "longer"})
      theDebugger.AddExpression(0, text);
    auto& rows = theDebugger.watches.lists[0];
    rows[0].value = rows[0].whole = "1";
    rows[1].value = rows[1].whole = "2";
    rows[1].hasChanged = true;
    rows[2].error = "No symbol \"wrong\" in current context.";
    rows[3].value = rows[3].whole = "4";
    rows[3].error = "No symbol \"lost\" in current context.";
    rows[4].value = "{1, 2";
    rows[4].whole = "{1, 2,\n  3\x1b}";
    theMainForm->debugWindow.ShowWatches(0);
    EXPECT_THAT(IdeDriver::Rows(List()),
                ElementsAre("same|1", "other|2", "wrong|No symbol \"wrong\" in current context.",
                            "lost|4", "longer|{1, 2", "|"));
    for (int row = 0; row < 6; ++row) EXPECT_EQ(List().IsCellMarked(row, 1), row == 1) << row;
    List().Update();
    const auto tip = [](int row) {
      return View()->model()->index(row, 1).data(Qt::ToolTipRole).toString().toStdString();
    };
    EXPECT_EQ(tip(3), "No symbol \"lost\" in current context.");
    EXPECT_EQ(tip(4), "{1, 2,\n  3<1b>}");
    rows[1].hasChanged = false;
    rows[1].value = "3";
    theMainForm->debugWindow.ShowWatchValue(0, 1);
    EXPECT_EQ(List().GetCell(1, 1), "3");
    EXPECT_FALSE(List().IsCellMarked(1, 1));
    test::Shot(*theMainForm, "ide-watches");
  });
}

TEST_F(WatchPages, AValueThatComes_LeavesTheOpenCellOpen) {
  ide.Run({}, [&] {
    ShowPage();
    theDebugger.AddExpression(0, "one");
    theDebugger.AddExpression(0, "two");
    List().EditCell(1, 0);
    QTest::keyClicks(Cell(), "typed");
    theDebugger.watches.lists[0][0].value = "1";
    theMainForm->debugWindow.ShowWatchValue(0, 0);
    theMainForm->debugWindow.ShowWatches(0);
    ASSERT_NE(Cell(), nullptr);
    EXPECT_EQ(Cell()->text().toStdString(), "typed");
  });
}

TEST_F(WatchPages, TheClearButton_ClearsThePageThatShows) {
  ide.Run({}, [&] {
    theDebugger.AddExpression(0, "one");
    theDebugger.AddExpression(2, "two");
    ShowPage(2);
    EXPECT_EQ(theMainForm->debugWindow.CurrentWatchList(), 2);
    theMainForm->ClearPane(theMainForm->bottomTabs.selectedIndex);
    EXPECT_THAT(IdeDriver::Rows(List(0)), ElementsAre("one|", "|"));
    EXPECT_THAT(IdeDriver::Rows(List(2)), ElementsAre("|"));
    theMainForm->ShowPage(cResultPage);
    EXPECT_EQ(theMainForm->debugWindow.CurrentWatchList(), 0);
    theMainForm->ShowPage(cErrorPage);
    EXPECT_EQ(theMainForm->debugWindow.CurrentWatchList(), 0);
  });
}

TEST_F(WatchPages, AddToWatch_AsksWithTheExpressionAtTheCaret) {
  ide.Run({}, [&] {
    CppEditor& editor = Open("a.cpp", "int x = item->count;\n");
    ShowPage(1);
    editor.Focus();
    editor.Select(17, 17);
    ide.OnDialog([&](mavro::Form& dialog) {
      EXPECT_EQ(dialog.text.Get(), "watch");
      EXPECT_EQ(dialog.Bounds(), (mavro::Rect{200, 200, 300, 118}));
      test::Shot(dialog, "ide-watch-dialog");
      test::Key(dialog, Qt::Key_Return);
    });
    IdeDriver::Press(Qt::Key_F9, Qt::ShiftModifier);
    EXPECT_THAT(IdeDriver::Rows(List(1)), ElementsAre("item->count|", "|"));
    EXPECT_EQ(theMainForm->bottomTabs.selectedIndex, cFirstWatchPage + 1);
    ide.OnDialog([&](mavro::Form& dialog) { test::Key(dialog, Qt::Key_Return); });
    theDebugger.OnCommand(cAddWatchCommand);
    EXPECT_THAT(ide.dialogs.texts, ElementsAre("Information: Watch contains: item->count"));
    EXPECT_THAT(IdeDriver::Rows(List(1)), ElementsAre("item->count|", "|"));
    ide.OnDialog([&](mavro::Form& dialog) { test::Key(dialog, Qt::Key_Escape); });
    editor.Select(4, 5);
    theDebugger.OnCommand(cAddWatchCommand);
    EXPECT_THAT(IdeDriver::Rows(List(1)), ElementsAre("item->count|", "|"));
  });
}

}  // namespace
}  // namespace zendry
