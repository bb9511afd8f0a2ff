// A grid's current cell, selection, columns, rows and looks.
#include <gtest/gtest.h>

#include <QAccessible>
#include <QHeaderView>
#include <QScrollBar>
#include <memory>

#include "DarkPalette.h"
#include "GridForm.h"
#include "Icons.h"
#include "Looks.h"

namespace mavro {
namespace {

using test::GridForm;

constexpr int cLongMilliseconds = 60000;  // for what a busy machine does late

struct KeyRow {
  Qt::Key key;
  Qt::KeyboardModifiers modifiers;
  const char* where;
};

TEST(DataGrid, Keys_MoveTheCurrentCell) {
  GridForm form;
  test::RunForm(form, false, [&] {
    form.Click(1, 1);
    const KeyRow rows[] = {
        {Qt::Key_Right, {}, "1,2 1,2+1x1"},
        {Qt::Key_Down, {}, "2,2 2,2+1x1"},
        {Qt::Key_Left, {}, "2,1 2,1+1x1"},
        {Qt::Key_Up, {}, "1,1 1,1+1x1"},
        {Qt::Key_End, {}, "1,4 1,4+1x1"},
        {Qt::Key_Right, {}, "1,4 1,4+1x1"},
        {Qt::Key_Tab, {}, "2,0 2,0+1x1"},
        {Qt::Key_Backtab, Qt::ShiftModifier, "1,4 1,4+1x1"},
        {Qt::Key_Home, {}, "1,0 1,0+1x1"},
        {Qt::Key_End, Qt::ControlModifier, "39,4 39,4+1x1"},
        {Qt::Key_Up, Qt::ControlModifier, "0,4 0,4+1x1"},
        {Qt::Key_Down, Qt::ControlModifier, "39,4 39,4+1x1"},
        {Qt::Key_Home, Qt::ControlModifier, "0,0 0,0+1x1"},
        {Qt::Key_Right, Qt::ControlModifier, "0,4 0,4+1x1"},
        {Qt::Key_Left, Qt::ControlModifier, "0,0 0,0+1x1"},
        {Qt::Key_Return, {}, "1,0 1,0+1x1"},
        {Qt::Key_Return, Qt::ShiftModifier, "0,0 0,0+1x1"},
    };
    for (const KeyRow& row : rows) {
      form.Press(row.key, row.modifiers);
      EXPECT_EQ(form.Where(), row.where) << row.key;
    }
    EXPECT_EQ(form.Editor(), nullptr);
  });
}

TEST(DataGrid, PageKeys_MoveByWhatIsSeen) {
  GridForm form;
  test::RunForm(form, false, [&] {
    form.Click(0, 0);
    const int page = form.View()->viewport()->height() / form.View()->rowHeight(0);
    form.Press(Qt::Key_PageDown);
    EXPECT_EQ(form.grid.selectedIndex, page);
    form.Press(Qt::Key_PageUp);
    EXPECT_EQ(form.grid.selectedIndex, 0);
  });
}

TEST(DataGrid, Shift_ExtendsTheSelection) {
  GridForm form;
  test::RunForm(form, false, [&] {
    form.Click(2, 1);
    form.Press(Qt::Key_Right, Qt::ShiftModifier);
    form.Press(Qt::Key_Down, Qt::ShiftModifier);
    EXPECT_EQ(form.Where(), "3,2 2,1+2x2");
    form.Press(Qt::Key_Home, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(form.Where(), "0,0 0,0+3x2");
    form.Click(4, 2, Qt::ShiftModifier);
    EXPECT_EQ(form.Where(), "4,2 2,1+3x2");
    form.Press(Qt::Key_Left);
    EXPECT_EQ(form.Where(), "4,1 4,1+1x1");
    form.Press(Qt::Key_Space, Qt::ShiftModifier);
    EXPECT_EQ(form.Where(), "4,0 4,0+1x5");
    form.Press(Qt::Key_Space, Qt::ControlModifier);
    EXPECT_EQ(form.Where(), "0,0 0,0+40x1");
    form.Press(Qt::Key_A, Qt::ControlModifier);
    EXPECT_EQ(form.Where(), "0,0 0,0+40x5");
  });
}

TEST(DataGrid, Drag_SelectsAndScrolls) {
  GridForm form;
  test::RunForm(form, false, [&] {
    QWidget* area = form.View()->viewport();
    QTest::mousePress(area, Qt::LeftButton, {}, form.Middle(1, 1));
    QTest::mouseMove(area, form.Middle(3, 2));
    EXPECT_EQ(form.Where(), "3,2 1,1+3x2");
    QTest::mouseMove(area, QPoint(form.Middle(3, 2).x(), area->height() + 20));
    EXPECT_TRUE(QTest::qWaitFor([&] { return form.grid.selectedIndex == GridForm::cRows - 1; },
                                cLongMilliseconds));
    QTest::mouseRelease(area, Qt::LeftButton, {}, QPoint(100, area->height() + 20));
    EXPECT_EQ(form.Where(), "39,2 1,1+39x2");
    EXPECT_EQ(form.View()->verticalScrollBar()->value(),
              form.View()->verticalScrollBar()->maximum());
  });
}

TEST(DataGrid, OtherButton_KeepsASelectionThatItIsPressedOn) {
  GridForm form;
  test::RunForm(form, false, [&] {
    form.grid.SelectCells({1, 1, 3, 2});
    QTest::mouseClick(form.View()->viewport(), Qt::RightButton, {}, form.Middle(3, 2));
    EXPECT_EQ(form.Where(), "1,1 1,1+3x2");
    QTest::mouseClick(form.View()->viewport(), Qt::RightButton, {}, form.Middle(4, 2));
    EXPECT_EQ(form.Where(), "4,2 4,2+1x1");
  });
}

TEST(DataGrid, FullRowSelect_SelectsRows) {
  GridForm form;
  form.grid.fullRowSelect = true;
  test::RunForm(form, false, [&] {
    form.Click(2, 1);
    EXPECT_EQ(form.Where(), "2,1 2,0+1x5");
    form.Press(Qt::Key_Down, Qt::ShiftModifier);
    EXPECT_EQ(form.Where(), "3,1 2,0+2x5");
  });
}

TEST(DataGrid, Events_OfTheUserOnly) {
  GridForm form;
  form.log.Listen("click", form.grid.onClick);
  form.log.Listen("choose", form.grid.onChoose);
  form.grid.editLabels = false;
  test::RunForm(form, false, [&] {
    form.grid.selectedIndex = 3;
    form.grid.SelectCells({4, 1, 2, 2});
    EXPECT_EQ(form.log.Take(), "");
    form.Click(1, 1);
    EXPECT_EQ(form.log.Take(), "sel:1 click:1 ");
    form.Press(Qt::Key_Right);
    EXPECT_EQ(form.log.Take(), "sel:1 ");
    form.Press(Qt::Key_Return);
    EXPECT_EQ(form.log.Take(), "choose:1 ") << "not OK";
    form.DoubleClick(2, 0);
    EXPECT_EQ(form.log.Take(), "sel:2 choose:2 ");
    form.Press(Qt::Key_Left);
    EXPECT_EQ(form.log.Take(), "") << "nothing has changed";
  });
}

TEST(DataGrid, GenericRows_OfTheDesigner) {
  GridForm form;
  form.log.Listen("create", form.grid.onCreate);
  form.grid.text = "Prices";
  form.grid.lockCol = 12;
  form.grid.rowHeight = 33;
  form.grid.tag = 4;
  test::RunForm(form, false, [&] {
    EXPECT_EQ(form.log.Take(), "create:0 ");
    EXPECT_EQ(form.grid.text, "Prices");
    EXPECT_EQ(form.grid.lockCol, 12);
    EXPECT_EQ(form.grid.rowHeight, 33);
    EXPECT_EQ(form.View()->rowHeight(0), 33);
  });
}

TEST(DataGrid, RowHeight_Limits) {
  GridForm form;
  test::RunForm(form, false, [&] {
    const int natural = form.View()->rowHeight(0);
    const std::pair<int, int> rows[] = {{1, 1},   {1000, 1000},  {1001, 1000},      {0, natural},
                                        {50, 50}, {-7, natural}, {2000000000, 1000}};
    for (const auto& [asked, shown] : rows) {
      form.grid.rowHeight = asked;
      EXPECT_EQ(form.View()->rowHeight(7), shown) << asked;
    }
    form.grid.rowHeight = 0;
    form.grid.font = Font(30);
    EXPECT_GT(form.View()->rowHeight(0), natural);
  });
}

TEST(DataGrid, SelectCells_Limits) {
  GridForm form;
  form.grid.SelectCells({38, 3, 9, 9});
  EXPECT_EQ(form.Where(), "38,3 38,3+2x2") << "without a window";
  test::RunForm(form, false, [&] {
    EXPECT_EQ(form.Where(), "38,3 38,3+2x2");
    EXPECT_TRUE(form.View()
                    ->visualRect(form.View()->model()->index(38, 3))
                    .intersects(form.View()->viewport()->rect()));
    form.grid.SelectCells({-1, -1, 2, 2});
    EXPECT_EQ(form.Where(), "0,0 0,0+1x1");
    for (const CellRange& none :
         {CellRange{40, 0, 1, 1}, {0, 5, 1, 1}, {0, 0, 0, 1}, {1, 1, -1, 1}, {-1, 0, 1, 1}}) {
      form.grid.SelectCells({2, 2, 1, 1});
      form.grid.SelectCells(none);
      EXPECT_EQ(form.Where(), "-") << none.row << "," << none.col;
      EXPECT_EQ(form.grid.GetCurrentCol(), -1);
      EXPECT_EQ(form.grid.SelectedText(), "");
    }
    form.grid.Focus();
    form.Press(Qt::Key_Down);
    EXPECT_EQ(form.Where(), "0,2 0,2+1x1") << "from no cell to the first row";
  });
}

TEST(DataGrid, NoRowsOrNoColumns_EveryKeyDoesNothing) {
  for (const bool hasRows : {false, true}) {
    GridForm form;
    if (hasRows)
      form.grid.colCount = 0;
    else
      form.grid.Clear();
    form.ok.kind = Button::cNone;  // Enter has no button to press
    test::RunForm(form, false, [&] {
      form.grid.Focus();
      for (const Qt::Key key : {Qt::Key_Down, Qt::Key_Right, Qt::Key_PageDown, Qt::Key_Return,
                                Qt::Key_F2, Qt::Key_X, Qt::Key_Delete, Qt::Key_Space})
        form.Press(key);
      for (const Qt::Key key : {Qt::Key_End, Qt::Key_C, Qt::Key_V, Qt::Key_X, Qt::Key_A})
        form.Press(key, Qt::ControlModifier);
      QTest::mouseClick(form.View()->viewport(), Qt::LeftButton, {}, QPoint(20, 20));
      form.grid.Update();
      EXPECT_EQ(form.Where(), "-");
      EXPECT_FALSE(form.grid.Paste());
      EXPECT_EQ(form.log.Take(), "");
    });
  }
}

TEST(DataGrid, RowsAndColumnsGo_TheCurrentCellStaysInTheGrid) {
  GridForm form;
  test::RunForm(form, false, [&] {
    form.grid.SelectCells({5, 4, 1, 1});
    form.grid.RemoveRow(2);
    EXPECT_EQ(form.Where(), "4,4 4,4+1x1");
    form.grid.colCount = 3;
    EXPECT_EQ(form.Where(), "4,2 4,2+1x1");
    form.grid.rowCount = 5;
    EXPECT_EQ(form.Where(), "4,2 4,2+1x1");
    form.grid.rowCount = 4;
    EXPECT_EQ(form.Where(), "-");
    EXPECT_EQ(form.grid.selectedIndex, -1);
    form.grid.colCount = 0;
    form.grid.rowCount = 0;
    form.grid.Update();
  });
}

TEST(DataGrid, Tab_LeavesAtTheEnds_CtrlTabAtOnce) {
  GridForm form;
  test::RunForm(form, false, [&] {
    form.Click(0, 1);
    form.Press(Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_EQ(form.Where(), "0,0 0,0+1x1");
    form.Press(Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_TRUE(form.ok.IsFocused());
    form.grid.Focus();
    form.grid.SelectCells({39, 3, 1, 1});
    form.Press(Qt::Key_Tab);
    EXPECT_TRUE(form.grid.IsFocused());
    form.Press(Qt::Key_Tab);
    EXPECT_TRUE(form.ok.IsFocused());
    form.Click(2, 2);
    form.Press(Qt::Key_Tab, Qt::ControlModifier);
    EXPECT_TRUE(form.ok.IsFocused());
    form.grid.editLabels = false;
    form.Click(2, 2);
    form.Press(Qt::Key_Tab);
    EXPECT_TRUE(form.ok.IsFocused()) << "nothing is edited here";
  });
}

TEST(DataGrid, LockCol_KeepsColumnsInView) {
  GridForm form;
  form.grid.lockCol = 1;
  test::RunForm(form, false, [&] {
    QTableView* view = form.View();
    form.grid.SelectCells({0, 4, 1, 1});
    EXPECT_GT(view->horizontalScrollBar()->value(), 0);
    const auto left = [&](int col) {
      return view->visualRect(view->model()->index(0, col)).left();
    };
    EXPECT_EQ(left(0), 0);
    EXPECT_LT(left(1), GridForm::cWidth);
    EXPECT_EQ(view->indexAt(QPoint(5, 5)).column(), 0);
    form.grid.SelectCells({0, 1, 1, 1});
    EXPECT_EQ(left(1), GridForm::cWidth) << "it isn't hidden by the locked one";
    form.grid.SelectCells({0, 4, 1, 1});
    form.Click(3, 0);
    EXPECT_EQ(form.Where(), "3,0 3,0+1x1");
    EXPECT_GT(view->horizontalScrollBar()->value(), 0) << "a locked cell is in view already";
  });
}

TEST(DataGrid, LockCol_Limits) {
  GridForm form;
  test::RunForm(form, false, [&] {
    QTableView* view = form.View();
    view->horizontalScrollBar()->setValue(50);
    const auto left = [&](int col) {
      return view->visualRect(view->model()->index(0, col)).left();
    };
    for (const int none : {0, -1, -2000000000}) {
      form.grid.lockCol = none;
      EXPECT_EQ(left(0), -50) << none;
    }
    // Three columns of 80 fit beside 40 free pixels, four don't: those yield.
    for (const int locked : {3, 4, 5, 6, 2000000000}) {
      form.grid.lockCol = locked;
      EXPECT_EQ(left(2), 160) << locked;
      EXPECT_EQ(left(3), 190) << locked;
      form.grid.Update();
    }
    form.grid.colCount = 1;
    form.grid.Update();
    EXPECT_EQ(left(0), 0);
  });
}

// Presses the right edge of a title, drags it by `by` pixels and lets go.
void DragEdge(GridForm& form, int edge, int by) {
  QHeaderView* header = form.View()->horizontalHeader();
  const int y = header->height() / 2;
  QTest::mousePress(header->viewport(), Qt::LeftButton, {}, QPoint(edge - 1, y));
  QTest::mouseMove(header->viewport(), QPoint(edge - 1 + by / 2, y));
  QTest::mouseMove(header->viewport(), QPoint(edge - 1 + by, y));
  QTest::mouseRelease(header->viewport(), Qt::LeftButton, {}, QPoint(edge - 1 + by, y));
}

TEST(DataGrid, Drag_SetsTheWidthOfAColumn) {
  GridForm form;
  test::RunForm(form, false, [&] {
    DragEdge(form, 2 * GridForm::cWidth, 30);
    EXPECT_EQ(form.grid.GetColWidth(1), GridForm::cWidth + 30);
    DragEdge(form, 2 * GridForm::cWidth + 30, -300);
    EXPECT_EQ(form.grid.GetColWidth(1), DataGrid::cLeastWidth);
  });
}

TEST(DataGrid, Drag_OfALockedColumn_WhileTheOthersAreScrolled) {
  GridForm form;
  form.grid.lockCol = 1;
  test::RunForm(form, false, [&] {
    form.View()->horizontalScrollBar()->setValue(60);
    DragEdge(form, GridForm::cWidth, 25);
    EXPECT_EQ(form.grid.GetColWidth(0), GridForm::cWidth + 25);
    EXPECT_EQ(form.grid.GetColWidth(1), GridForm::cWidth);
  });
}

TEST(DataGrid, DoubleClickOnAnEdge_FitsTheColumn) {
  GridForm form;
  form.grid.SetCell(2, 1, "a text that is wider than its column");
  form.grid.SetCell(2, 3, std::string(5000, 'x'));
  test::RunForm(form, false, [&] {
    QHeaderView* header = form.View()->horizontalHeader();
    const auto fit = [&](int col) {
      const int edge = header->sectionViewportPosition(col) + header->sectionSize(col) - 1;
      QTest::mouseDClick(header->viewport(), Qt::LeftButton, {}, QPoint(edge, 5));
      return form.grid.GetColWidth(col);
    };
    EXPECT_GT(fit(1),
              form.View()->fontMetrics().horizontalAdvance("a text that is wider than its"));
    EXPECT_LT(fit(0), GridForm::cWidth);
    form.View()->horizontalScrollBar()->setValue(form.View()->horizontalScrollBar()->maximum());
    EXPECT_EQ(fit(3), 600) << "no cell fills the screen";
  });
}

TEST(DataGrid, ImageList_ShowsPicturesInTheFirstColumn) {
  GridForm form;
  test::RunForm(form, false, [&] {
    const int plain = form.View()->rowHeight(0);
    form.grid.imageList = Icons::cStrip;
    form.grid.SetItemImage(0, Icons::icoNew);
    EXPECT_GE(form.View()->rowHeight(0), 24);
    const QAbstractItemModel& model = *form.View()->model();
    EXPECT_FALSE(model.index(0, 0).data(Qt::DecorationRole).value<QIcon>().isNull());
    form.grid.imageList = 0;
    EXPECT_EQ(form.View()->rowHeight(0), plain);
  });
}

TEST(DataGrid, ColWidth_Limits) {
  GridForm form;
  form.grid.SetColWidth(1, 5);
  EXPECT_EQ(form.grid.GetColWidth(1), DataGrid::cLeastWidth);
  form.grid.SetColWidth(1, 123);
  test::RunForm(form, false, [&] {
    EXPECT_EQ(form.grid.GetColWidth(1), 123);
    form.grid.SetColWidth(4, -3);
    EXPECT_EQ(form.grid.GetColWidth(4), DataGrid::cLeastWidth);
    form.grid.SetColWidth(4, DataGrid::cLeastWidth + 1);
    EXPECT_EQ(form.View()->columnWidth(4), DataGrid::cLeastWidth + 1);
  });
}

TEST(DataGridDeath, ColumnThatDoesntExist) {
  GridForm form;
  EXPECT_DEATH(form.grid.GetColWidth(5), "col>=0 && col<list.columns.GetCount");
  EXPECT_DEATH(form.grid.SetColWidth(-1, 50), "col>=0 && col<list.columns.GetCount");
}

void ClickTitle(GridForm& form, int col) {
  QHeaderView* header = form.View()->horizontalHeader();
  QTest::mouseClick(header->viewport(), Qt::LeftButton, {},
                    QPoint(header->sectionViewportPosition(col) + 30, header->height() / 2));
}

TEST(DataGrid, Title_SelectsItsColumn_UnlessTheProgramUsesIt) {
  GridForm form;
  test::RunForm(form, false, [&] {
    ClickTitle(form, 2);
    EXPECT_EQ(form.Where(), "0,2 0,2+40x1");
    EXPECT_EQ(form.log.Take(), "sel:0 ");
  });
  GridForm sorted;
  sorted.log.Listen("column", sorted.grid.onColumnClick,
                    [&](NotifyArgs& args) { sorted.grid.SortBy(args.value, false); });
  test::RunForm(sorted, false, [&] {
    sorted.grid.SelectCells({0, 1, 1, 1});
    ClickTitle(sorted, 1);
    EXPECT_EQ(sorted.log.Take(), "column:1 ");
    EXPECT_EQ(sorted.grid.GetCell(39, 1), GridForm::Name(0, 1));
    EXPECT_EQ(sorted.Where(), "39,1 39,1+1x1") << "the current cell stays with its row";
  });
}

TEST(DataGrid, LateRows_OnlyWhatIsSeenIsMade) {
  GridForm form;
  int made = 0;
  form.grid.Clear();
  form.grid.lateCells = [&](int data) {
    ++made;
    return std::vector<std::string>{std::to_string(data), std::to_string(data * 2)};
  };
  form.grid.AddLateRows(0, 100000);
  test::RunForm(form, false, [&] {
    form.grid.Update();
    EXPECT_LT(made, 100);
    form.grid.Focus();
    form.Press(Qt::Key_End, Qt::ControlModifier);
    form.grid.Update();
    EXPECT_EQ(form.grid.selectedIndex, 99999);
    EXPECT_LT(made, 200);
    EXPECT_EQ(form.grid.GetCell(99999, 1), "199998");
  });
}

TEST(DataGrid, ScreenReaders_GetATableWithNamedCells) {
  GridForm form;
  form.grid.lockCol = 1;
  form.grid.accessibleName = "Prices";
  test::RunForm(form, false, [&] {
    form.Click(2, 1);
    auto* access = QAccessible::queryAccessibleInterface(form.View());
    ASSERT_NE(access->tableInterface(), nullptr);
    EXPECT_EQ(access->role(), QAccessible::Table);
    EXPECT_EQ(access->text(QAccessible::Name), "Prices");
    EXPECT_EQ(access->tableInterface()->rowCount(), GridForm::cRows);
    EXPECT_EQ(access->tableInterface()->columnDescription(1), "C1");
    QAccessibleInterface* cell = access->tableInterface()->cellAt(2, 1);
    EXPECT_EQ(cell->text(QAccessible::Name), "r2c1");
    EXPECT_TRUE(cell->state().focused);
    EXPECT_TRUE(cell->state().selected);
    form.Press(Qt::Key_F2);
    ASSERT_NE(form.Editor(), nullptr);
    EXPECT_EQ(form.Editor()->accessibleName(), "C1");
  });
}

TEST(DataGrid, WithoutTheFocus_TheSelectionShowsIfWanted) {
  for (const bool wanted : {false, true}) {
    GridForm form;
    form.grid.showSelection = wanted;
    form.grid.SelectCells({1, 1, 1, 1});
    test::RunForm(form, false, [&] {
      form.ok.Focus();
      const QRgb frame = form.View()->palette().color(QPalette::Highlight).rgb();
      EXPECT_EQ(test::CountPixels(test::Pixels(form.grid), frame) > 0, wanted);
      form.grid.Focus();
      EXPECT_GT(test::CountPixels(test::Pixels(form.grid), frame), 0);
    });
  }
}

TEST(DataGrid, LightAndDark) {
  const QPalette light = QApplication::palette();
  for (const bool isDark : {false, true}) {
    QApplication::setPalette(isDark ? test::DarkPalette() : light);
    GridForm form;
    form.grid.lockCol = 1;
    form.grid.MarkCell(5, 2, true);
    test::RunForm(form, false, [&] {
      form.View()->horizontalScrollBar()->setValue(50);
      form.Click(2, 1);
      form.Press(Qt::Key_Down, Qt::ShiftModifier);
      form.Press(Qt::Key_Right, Qt::ShiftModifier);
      const QImage pixels = test::Pixels(form.grid);
      EXPECT_EQ(qGray(test::GroundOf(pixels)) < 128, isDark);
      EXPECT_GT(test::InkStrength(pixels), 100);
      const QString scale = qEnvironmentVariable("QT_SCALE_FACTOR", "1");
      const std::string name =
          std::string(isDark ? "data-grid-dark-" : "data-grid-light-") + scale.toStdString();
      test::Shot(form, name);
      form.Press(Qt::Key_F2);
      test::Shot(form, name + "-edit");
    });
  }
  QApplication::setPalette(light);
}

}  // namespace
}  // namespace mavro
