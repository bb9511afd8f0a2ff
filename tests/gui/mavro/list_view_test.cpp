#include "ListView.h"

#include <gtest/gtest.h>

#include <QElapsedTimer>
#include <QHeaderView>
#include <QScrollBar>
#include <QTreeView>
#include <memory>

#include "Button.h"
#include "EventLog.h"
#include "Form.h"
#include "GuiDriver.h"

namespace mavro {
namespace {

struct TableForm : Form {
  test::EventLog log;
  ListView list;
  Button ok;

  TableForm() {
    SetBounds(0, 0, 400, 260);
    autoDialogKeys = true;
    list.SetBounds(0, 0, 400, 200);
    list.AddColumn("file", 150);
    list.AddColumn("text", 100);
    Add(&list);
    ok.SetLocation(10, 210);
    ok.kind = Button::cOk;
    Add(&ok);
    log.Listen("sel", list.onChangeSel);
    log.Listen("click", list.onClickRow);
    log.Listen("ok", ok.onClick);
  }
  void AddRows(int count) {
    for (int i = 0; i < count; ++i) list.AddRow("row " + std::to_string(i));
  }
  QTreeView* View() { return qobject_cast<QTreeView*>(test::WidgetOf(list)); }
  int ShownRows() { return View()->model()->rowCount(); }
  QPoint PlaceOf(int row, int col = 0) {
    return View()->visualRect(View()->model()->index(row, col)).center();
  }
  void ClickRow(int row, int col = 0) {
    QTest::mouseClick(View()->viewport(), Qt::LeftButton, Qt::NoModifier, PlaceOf(row, col));
  }
  int SelectedInView() {
    const auto selected = View()->selectionModel()->selectedIndexes();
    return selected.isEmpty() ? -1 : selected.first().row();
  }
};

TEST(ListView, NewOne_HasTheUsualLook) {
  ListView list;
  EXPECT_TRUE(list.fullRowSelect);
  EXPECT_TRUE(list.gridLines);
  EXPECT_TRUE(list.headerVisible);
  EXPECT_FALSE(list.showSelection);
  EXPECT_EQ(list.selectedIndex, -1);
  EXPECT_EQ(list.colCount, 0);
  EXPECT_EQ(list.rowCount, 0);
}

TEST(ListView, Cells_AnyBytes_ComeOutAsTheyWent) {
  TableForm form;
  EXPECT_EQ(form.list.AddRow("a\xFF\n"), 0);
  EXPECT_EQ(form.list.AddRow(""), 1);
  form.list.SetCell(1, 1, std::string("\x1B[31m\0", 6));
  form.list.SetItemData(1, 42);
  EXPECT_EQ(form.list.GetCell(0, 0), "a\xFF\n");
  EXPECT_EQ(form.list.GetCell(0, 1), "");
  EXPECT_EQ(form.list.GetCell(1, 1), std::string("\x1B[31m\0", 6));
  EXPECT_EQ(form.list.GetItemData(0), 0);
  EXPECT_EQ(form.list.GetItemData(1), 42);
}

TEST(ListView, LateRows_AreMadeOnceWhenTheyAreRead) {
  TableForm form;
  std::vector<int> made;
  form.list.lateCells = [&made](int data) {
    made.push_back(data);
    return std::vector<std::string>{"late " + std::to_string(data), "text"};
  };
  form.list.AddCells({"early", "x"});
  form.list.AddLateRows(7, 1);
  form.list.AddLateRows(100, 10'000);
  form.list.AddLateRows(5, 0);
  EXPECT_TRUE(made.empty());
  test::RunForm(form, false, [&] {
    EXPECT_TRUE(test::WaitFor([&] { return form.ShownRows() == 10'002; }));
    EXPECT_EQ(form.list.GetCell(1, 0), "late 7");
    form.list.SetCell(9'000, 1, "changed");
    EXPECT_EQ(form.list.GetCell(9'000, 0), "late 9098");
    EXPECT_EQ(form.list.GetCell(9'000, 1), "changed");
    EXPECT_EQ(form.list.GetItemData(9'000), 9098);
    const size_t count = made.size();
    EXPECT_LT(count, 200u) << "rows that nobody sees are not made";
    form.list.GetCell(1, 0);
    EXPECT_EQ(made.size(), count);
    form.list.Clear();
  });
}

TEST(ListView, RowMinusOne_StandsForNone) {
  TableForm form;
  form.list.AddRow("a");
  form.list.SetCell(-1, 0, "nowhere");
  form.list.SetItemData(-1, 5);
  EXPECT_EQ(form.list.GetCell(-1, 0), "");
  EXPECT_EQ(form.list.GetItemData(-1), 0);
  EXPECT_EQ(form.list.GetCell(0, 0), "a");
}

TEST(ListViewDeath, BadIndexes_StopWithTheirExpression) {
  const char* item = "nItem>=-1 && nItem<getimpl\\(&list\\).vrowCount";
  const char* cell =
      "row>=-1 && row<getimpl\\(&list\\).vrowCount && col>=0 && col<list.columns.GetCount\\(\\)";
  TableForm form;
  form.list.AddRow("a");
  EXPECT_DEATH(form.list.GetItemData(1), item);
  EXPECT_DEATH(form.list.SetItemData(-2, 0), item);
  EXPECT_DEATH(form.list.SetCell(1, 0, ""), cell);
  EXPECT_DEATH(form.list.SetCell(0, 2, ""), cell);
  EXPECT_DEATH(form.list.GetCell(0, -1), cell);
  EXPECT_DEATH(form.list.GetCell(-2, 0), cell);
  test::RunForm(form, false, [&] { EXPECT_DEATH(form.list.Select(1), item); });
}

TEST(ListView, Window_ShowsWhatWasSetBefore) {
  TableForm form;
  form.AddRows(3);
  form.list.SetCell(2, 1, "cell");
  form.list.Select(1);
  test::RunForm(form, false, [&] {
    EXPECT_EQ(form.ShownRows(), 3);
    EXPECT_EQ(form.View()->model()->index(2, 1).data().toString(), "cell");
    EXPECT_EQ(form.View()->columnWidth(0), 150);
    EXPECT_EQ(form.View()->columnWidth(0) + form.View()->columnWidth(1),
              form.View()->viewport()->width());
    EXPECT_EQ(form.SelectedInView(), 1);
    EXPECT_EQ(form.log.Take(), "");
  });
}

TEST(ListView, Look_WithTheWindow) {
  TableForm form;
  form.AddRows(3);
  test::RunForm(form, false, [&] {
    EXPECT_FALSE(form.View()->header()->isHidden());
    form.list.headerVisible = false;
    EXPECT_TRUE(form.View()->header()->isHidden());
    const QImage lined = form.View()->grab().toImage();
    form.list.gridLines = false;
    EXPECT_NE(form.View()->grab().toImage(), lined);
  });
}

TEST(ListView, GridLines_HaveAShadeBetweenTextAndBase) {
  TableForm form;
  form.AddRows(3);
  test::RunForm(form, false, [&] {
    const QTreeView& view = *form.View();
    const QRect cell = view.visualRect(view.model()->index(1, 0));
    const QImage shown = view.viewport()->grab().toImage();
    const auto lightness = [&](QPalette::ColorRole role) {
      return view.palette().color(role).lightness();
    };
    const int expected = (lightness(QPalette::Text) * 15 + lightness(QPalette::Base) * 85) / 100;
    const QPoint below(cell.left() + 1, cell.bottom());
    const QPoint beside(view.columnWidth(0) - 1, cell.center().y());
    EXPECT_NEAR(shown.pixelColor(below).lightness(), expected, 2);
    EXPECT_NEAR(shown.pixelColor(beside).lightness(), expected, 2);
    EXPECT_EQ(shown.pixelColor(beside - QPoint(2, 0)).lightness(), lightness(QPalette::Base));
  });
}

TEST(ListView, Selection_WithoutTheFocus_ShowsOnlyWhereWanted) {
  TableForm form;
  form.AddRows(3);
  test::RunForm(form, false, [&] {
    form.ok.Focus();
    const QImage none = form.View()->grab().toImage();
    form.list.Select(0);
    EXPECT_EQ(form.View()->grab().toImage(), none);
    form.list.showSelection = true;
    EXPECT_NE(form.View()->grab().toImage(), none);
  });
}

TEST(ListView, AddRow_InABurst_IsShownInAFewSteps) {
  TableForm form;
  test::RunForm(form, false, [&] {
    int steps = 0;
    QObject::connect(form.View()->model(), &QAbstractItemModel::rowsInserted, [&] { ++steps; });
    QElapsedTimer clock;
    clock.start();
    form.AddRows(10000);
    const auto milliseconds = clock.elapsed();
    ASSERT_TRUE(test::WaitFor([&] { return form.ShownRows() == 10000; }));
    EXPECT_LE(steps, 3 + milliseconds / 30);
  });
}

TEST(ListView, Update_ShowsAllRows) {
  TableForm form;
  test::RunForm(form, false, [&] {
    form.AddRows(50);
    form.list.Update();
    EXPECT_EQ(form.ShownRows(), 50);
  });
}

TEST(ListView, AddRow_LeavesSelectionAndPlace) {
  TableForm form;
  form.AddRows(100);
  test::RunForm(form, false, [&] {
    form.list.Select(50);
    const int top = form.View()->verticalScrollBar()->value();
    form.AddRows(100);
    ASSERT_TRUE(test::WaitFor([&] { return form.ShownRows() == 200; }));
    EXPECT_EQ(form.list.selectedIndex, 50);
    EXPECT_EQ(form.SelectedInView(), 50);
    EXPECT_EQ(form.View()->verticalScrollBar()->value(), top);
  });
}

TEST(ListView, Select_JustAdded_IsBroughtIntoView) {
  TableForm form;
  test::RunForm(form, false, [&] {
    form.AddRows(1000);
    form.list.Select(999);
    EXPECT_EQ(form.SelectedInView(), 999);
    EXPECT_TRUE(form.View()->viewport()->rect().contains(form.PlaceOf(999)));
    form.View()->scrollToTop();
    form.list.Select(999);
    EXPECT_TRUE(form.View()->viewport()->rect().contains(form.PlaceOf(999)));
    form.list.Select(-1);
    EXPECT_EQ(form.SelectedInView(), -1);
    EXPECT_EQ(form.log.Take(), "");
  });
}

TEST(ListView, Click_SelectsAndTells) {
  TableForm form;
  form.AddRows(5);
  test::RunForm(form, false, [&] {
    form.ClickRow(2, 1);
    EXPECT_EQ(form.list.selectedIndex, 2);
    EXPECT_EQ(form.log.Take(), "sel:2 click:2 ");
    form.ClickRow(2);
    EXPECT_EQ(form.log.Take(), "click:2 ");
  });
}

TEST(ListView, Click_WithoutFullRowSelect_CountsInTheFirstColumnOnly) {
  TableForm form;
  form.AddRows(5);
  form.list.fullRowSelect = false;
  test::RunForm(form, false, [&] {
    form.ClickRow(2);
    EXPECT_EQ(form.list.selectedIndex, 2);
    form.log.Take();
    form.ClickRow(3, 1);
    EXPECT_NE(form.list.selectedIndex, 3);
  });
}

TEST(ListView, Keys_MoveTheSelection) {
  TableForm form;
  form.AddRows(5);
  form.list.Select(0);
  test::RunForm(form, false, [&] {
    form.list.Focus();
    test::Key(form, Qt::Key_Down);
    test::Key(form, Qt::Key_End);
    EXPECT_EQ(form.log.Take(), "sel:1 sel:4 ");
  });
}

TEST(ListView, DoubleClickAndEnter_Choose) {
  TableForm form;
  form.AddRows(5);
  form.log.Listen("choose", form.list.onChoose);
  test::RunForm(form, true, [&] {
    form.ClickRow(3);
    form.log.Take();
    QTest::mouseDClick(form.View()->viewport(), Qt::LeftButton, Qt::NoModifier, form.PlaceOf(3));
    EXPECT_EQ(form.log.Take(), "choose:3 ");
    form.list.Focus();
    test::Key(form, Qt::Key_Return);
    EXPECT_EQ(form.log.Take(), "choose:3 ");
  });
}

TEST(ListView, Enter_NobodyChooses_PressesOk) {
  TableForm form;
  form.AddRows(5);
  form.list.Select(1);
  test::RunForm(form, true, [&] {
    form.list.Focus();
    test::Key(form, Qt::Key_Return);
    EXPECT_EQ(form.log.Take(), "ok:0 ");
  });
}

TEST(ListView, Clear_TakesRowsAndSelectionWithoutTelling) {
  TableForm form;
  form.AddRows(5);
  form.list.Select(3);
  test::RunForm(form, false, [&] {
    form.list.Clear();
    EXPECT_EQ(form.ShownRows(), 0);
    EXPECT_EQ(form.list.selectedIndex, -1);
    form.AddRows(2);
    form.list.Clear();
    form.list.AddRow("new");
    ASSERT_TRUE(test::WaitFor([&] { return form.ShownRows() == 1; }));
    EXPECT_EQ(form.View()->model()->index(0, 0).data().toString(), "new");
    EXPECT_EQ(form.log.Take(), "");
  });
}

TEST(ListView, Cell_HugeOrOfManyLines_StaysOneShortLineOnScreen) {
  TableForm form;
  form.list.AddRow(std::string(10 << 20, 'x'));
  form.list.AddRow("two\nlines");
  test::RunForm(form, false, [&] {
    EXPECT_LE(form.View()->model()->index(0, 0).data().toString().size(), 2000);
    EXPECT_EQ(form.View()->model()->index(1, 0).data().toString(), "two lines");
    form.View()->grab();
    EXPECT_EQ(form.list.GetCell(0, 0).size(), 10U << 20);
  });
}

TEST(ListView, Destroyed_InItsOwnEvents) {
  for (int kind = 0; kind < 3; ++kind) {
    test::EventLog log;
    TableForm form;
    auto list = std::make_unique<ListView>();
    list->SetBounds(0, 0, 300, 150);
    list->AddColumn("a", 100);
    list->AddRow("b");
    list->AddRow("c");
    NotifyEvent* events[] = {&list->onChangeSel, &list->onClickRow, &list->onChoose};
    log.Listen("gone", *events[kind], [&](NotifyArgs&) { list.reset(); });
    form.Add(list.get());
    test::RunForm(form, false, [&] {
      auto* view = qobject_cast<QTreeView*>(test::WidgetOf(*list));
      const QPoint at = view->visualRect(view->model()->index(1, 0)).center();
      QTest::mouseClick(view->viewport(), Qt::LeftButton, Qt::NoModifier, at);
      if (list) QTest::mouseDClick(view->viewport(), Qt::LeftButton, Qt::NoModifier, at);
      EXPECT_EQ(list, nullptr);
    });
  }
}

TEST(ListView, Cleared_InItsOwnEvents) {
  TableForm form;
  form.AddRows(5);
  form.log.Listen("clear", form.list.onChangeSel, [&](NotifyArgs&) { form.list.Clear(); });
  test::RunForm(form, false, [&] {
    form.ClickRow(3);
    EXPECT_EQ(form.list.rowCount, 0);
    EXPECT_EQ(form.list.selectedIndex, -1);
  });
}

}  // namespace
}  // namespace mavro
