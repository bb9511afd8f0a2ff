// Columns, cells that are edited, sorted and looked for.
#include <gtest/gtest.h>

#include <QHeaderView>
#include <QLineEdit>
#include <QTreeView>
#include <memory>

#include "Button.h"
#include "EventLog.h"
#include "Form.h"
#include "GuiDriver.h"
#include "Icons.h"
#include "ListView.h"

namespace mavro {
namespace {

struct CellForm : Form {
  test::EventLog log;
  ListView list;
  Button ok;
  std::string refused, replaced;

  CellForm() {
    SetBounds(0, 0, 400, 260);
    autoDialogKeys = true;
    list.SetBounds(0, 0, 400, 200);
    list.columns.Add("name", 150);
    list.columns.Add("size");
    const char* cells[][2] = {{"beta", "10"}, {"Alpha", "9"}, {"gamma", "100"}};
    for (const auto& row : cells) list.SetCell(list.AddRow(row[0]), 1, row[1]);
    list.editLabels = true;
    Add(&list);
    ok.SetLocation(10, 210);
    ok.kind = Button::cOk;
    Add(&ok);
    list.onPostEdit.Add_H(this, &CellForm::OnPostEdit);
    list.onColumnClick.Add_H(this, &CellForm::OnColumnClick);
    log.Listen("text", list.onChangeText);
    log.Listen("sel", list.onChangeSel);
    log.Listen("column", list.onColumnClick);
    log.Listen("ok", ok.onClick);
  }
  void OnPostEdit(ItemArgs& args) {
    if (args.text == refused) args.value = 0;
    if (!replaced.empty()) args.text = replaced;
  }
  void OnColumnClick(NotifyArgs& args) { list.SortBy(args.value); }

  QTreeView* View() { return qobject_cast<QTreeView*>(test::WidgetOf(list)); }
  QLineEdit* Editor() { return View()->viewport()->findChild<QLineEdit*>(); }
  void Click(int row, int col) {
    QTest::mouseClick(View()->viewport(), Qt::LeftButton, Qt::NoModifier,
                      View()->visualRect(View()->model()->index(row, col)).center());
  }
  std::string Names() {
    std::string names;
    for (int row = 0; row < list.rowCount; ++row) names += list.GetCell(row, 0) + " ";
    return names;
  }
  // Edits the selected cell and ends with a key.
  void Edit(const char* text, Qt::Key end) {
    test::Key(*this, Qt::Key_F2);
    ASSERT_NE(Editor(), nullptr);
    Editor()->selectAll();
    QTest::keyClicks(Editor(), text);
    QTest::keyClick(Editor()->window()->windowHandle(), end);
  }
};

TEST(ListColumns, CountTitlesAndLimits) {
  CellForm form;
  EXPECT_EQ(form.list.columns.GetCount(), 2);
  EXPECT_EQ(form.list.columns.Title(1), "size");
  form.list.columns.SetTitle(1, "bytes");
  test::RunForm(form, false, [&] {
    EXPECT_EQ(form.View()->model()->headerData(1, Qt::Horizontal).toString(), "bytes");
    form.list.columns.SetTitle(0, "a\xFF");
    EXPECT_EQ(form.list.columns.Title(0), "a\xFF");
  });
}

TEST(ListColumnsDeath, BadIndex_Stops) {
  CellForm form;
  EXPECT_DEATH(form.list.columns.Title(2), "col>=0 && col<list.columns.GetCount\\(\\)");
  EXPECT_DEATH(form.list.SortBy(-1), "col>=0 && col<list.columns.GetCount\\(\\)");
  EXPECT_DEATH(form.list.colCount = -1, "count >= 0");
  EXPECT_DEATH(form.list.rowCount = -1, "count >= 0");
  EXPECT_DEATH(form.list.RemoveRow(3), "nItem>=-1 && nItem<getimpl");
  EXPECT_DEATH(form.list.EditCell(0, 5), "row>=-1 && row<getimpl");
}

TEST(ListView, ColCountAndRowCount_AddAndRemoveAtTheEnd) {
  CellForm form;
  test::RunForm(form, false, [&] {
    form.list.colCount = 4;
    form.list.rowCount = 5;
    EXPECT_EQ(form.View()->model()->columnCount(), 4);
    form.list.SetCell(4, 3, "last");
    form.list.Update();
    EXPECT_EQ(form.View()->model()->rowCount(), 5);
    form.list.colCount = 1;
    form.list.rowCount = 2;
    EXPECT_EQ(form.View()->model()->columnCount(), 1);
    EXPECT_EQ(form.View()->model()->rowCount(), 2);
    form.list.colCount = 2;
    EXPECT_EQ(form.list.GetCell(0, 1), "") << "the cells went with their column";
    form.list.colCount = 0;
    form.list.rowCount = 0;
    EXPECT_EQ(form.View()->model()->rowCount(), 0);
  });
}

TEST(ListView, RemoveRow_SelectionFollowsItsRow) {
  CellForm form;
  form.list.selectedIndex = 1;
  test::RunForm(form, false, [&] {
    form.list.RemoveRow(0);
    EXPECT_EQ(form.list.selectedIndex, 0);
    EXPECT_EQ(form.View()->selectionModel()->selectedRows().value(0).row(), 0);
    form.list.RemoveRow(0);
    EXPECT_EQ(form.list.selectedIndex, -1);
    EXPECT_TRUE(form.View()->selectionModel()->selectedRows().isEmpty());
    form.list.RemoveRow(-1);
    EXPECT_EQ(form.Names(), "gamma ");
    EXPECT_EQ(form.log.Take(), "");
  });
}

TEST(ListView, F2_EditsTheCell) {
  CellForm form;
  test::RunForm(form, false, [&] {
    form.Click(1, 0);
    form.log.Take();
    form.Edit("new", Qt::Key_Return);
    EXPECT_EQ(form.list.GetCell(1, 0), "new");
    EXPECT_EQ(form.log.Take(), "text:1 ") << "Enter has not pressed OK";
    test::Shot(form, "list_cells");
  });
}

TEST(ListView, Editing_EscapeKeepsTheText) {
  CellForm form;
  test::RunForm(form, true, [&] {
    form.Click(1, 0);
    form.log.Take();
    form.Edit("new", Qt::Key_Escape);
    EXPECT_EQ(form.list.GetCell(1, 0), "Alpha");
    EXPECT_NE(form.impl->hwnd, nullptr);
    EXPECT_EQ(form.log.Take(), "");
  });
}

TEST(ListView, Editing_HandlerRefusesOrReplaces) {
  CellForm form;
  test::RunForm(form, false, [&] {
    form.Click(0, 0);
    form.log.Take();
    form.refused = "bad";
    form.Edit("bad", Qt::Key_Return);
    EXPECT_EQ(form.list.GetCell(0, 0), "beta");
    EXPECT_EQ(form.log.Take(), "");
    form.replaced = "other";
    form.Edit("good", Qt::Key_Return);
    EXPECT_EQ(form.list.GetCell(0, 0), "other");
    EXPECT_EQ(form.log.Take(), "text:0 ");
  });
}

TEST(ListView, Editing_OtherColumns) {
  CellForm form;
  test::RunForm(form, false, [&] {
    form.list.EditCell(2, 1);
    ASSERT_NE(form.Editor(), nullptr);
    QTest::keyClicks(form.Editor(), "5");
    QTest::keyClick(form.Editor()->window()->windowHandle(), Qt::Key_Return);
    EXPECT_EQ(form.list.GetCell(2, 1), "5");
  });
}

TEST(ListView, ColumnThatMayNotBeEdited) {
  CellForm form;
  form.list.columns.SetEditable(0, false);
  test::RunForm(form, false, [&] {
    form.Click(0, 0);
    test::Key(form, Qt::Key_F2);
    EXPECT_EQ(form.Editor(), nullptr);
  });
}

TEST(ListView, EditLabelsOff_NothingIsEdited) {
  CellForm form;
  form.list.editLabels = false;
  test::RunForm(form, false, [&] {
    form.Click(0, 0);
    test::Key(form, Qt::Key_F2);
    EXPECT_EQ(form.Editor(), nullptr);
  });
}

TEST(ListView, Editing_InvalidBytesStayUntilTheUserTypes) {
  CellForm form;
  form.list.SetCell(0, 0, "a\xFF");
  test::RunForm(form, false, [&] {
    form.Click(0, 0);
    test::Key(form, Qt::Key_F2);
    QTest::keyClick(form.Editor(), Qt::Key_End);
    QTest::keyClicks(form.Editor(), "b");
    QTest::keyClick(form.Editor()->window()->windowHandle(), Qt::Key_Return);
    EXPECT_EQ(form.list.GetCell(0, 0),
              "a\xFF"
              "b");
  });
}

TEST(ListView, ClearedOrDestroyed_WhileEditing_TheCellsEditorGoes) {
  for (const bool destroy : {false, true}) {
    CellForm form;
    auto list = std::make_unique<ListView>();
    list->AddColumn("a", 50);
    list->AddRow("x");
    list->editLabels = true;
    form.Add(list.get());
    test::RunForm(form, false, [&] {
      list->EditCell(0, 0);
      if (destroy)
        list.reset();
      else
        list->Clear();
      QCoreApplication::processEvents();
      for (const QLineEdit* edit : test::WidgetOf(form)->findChildren<QLineEdit*>())
        EXPECT_FALSE(edit->isVisible()) << destroy;
    });
  }
}

TEST(ListView, Destroyed_InOnPostEdit) {
  struct DoomedForm : CellForm {
    std::unique_ptr<ListView> doomed = std::make_unique<ListView>();
    void Doom(ItemArgs&) { doomed.reset(); }
  } form;
  form.doomed->AddColumn("a", 50);
  form.doomed->AddRow("x");
  form.doomed->editLabels = true;
  form.doomed->onPostEdit.Add_H(&form, &DoomedForm::Doom);
  form.Add(form.doomed.get());
  test::RunForm(form, false, [&] {
    form.doomed->EditCell(0, 0);
    auto* editor = test::WidgetOf(*form.doomed)->findChild<QLineEdit*>();
    ASSERT_NE(editor, nullptr);
    QTest::keyClicks(editor, "y");
    QTest::keyClick(editor->window()->windowHandle(), Qt::Key_Return);
    EXPECT_EQ(form.doomed, nullptr);
  });
}

TEST(ListView, HeaderClick_TellsAndSorts) {
  CellForm form;
  form.list.selectedIndex = 0;
  test::RunForm(form, false, [&] {
    QHeaderView* header = form.View()->header();
    QTest::mouseClick(header->viewport(), Qt::LeftButton, {},
                      QPoint(header->sectionViewportPosition(0) + 20, header->height() / 2));
    EXPECT_EQ(form.log.Take(), "column:0 ");
    EXPECT_EQ(form.Names(), "Alpha beta gamma ");
    EXPECT_EQ(form.list.selectedIndex, 1) << "the selection stays with its row";
    EXPECT_EQ(form.View()->selectionModel()->selectedRows().value(0).row(), 1);
    EXPECT_EQ(header->sortIndicatorSection(), 0);
  });
}

TEST(ListView, SortBy_TakesDataAndCellsAlong) {
  CellForm form;
  form.list.SetItemData(2, 77);
  form.list.SetItemImage(2, 3);
  form.list.SortBy(1, false);
  EXPECT_EQ(form.Names(), "gamma beta Alpha ");
  EXPECT_EQ(form.list.GetItemData(0), 77);
  EXPECT_EQ(form.list.GetItemImage(0), 3);
  EXPECT_EQ(form.list.GetCell(2, 1), "9");
}

TEST(ListView, Typing_SelectsTheRowThatBeginsSo) {
  CellForm form;
  test::RunForm(form, false, [&] {
    form.list.Focus();
    form.list.selectedIndex = 0;
    QTest::keyClicks(form.View(), "ga");
    EXPECT_EQ(form.list.selectedIndex, 2);
    EXPECT_EQ(form.log.Take(), "sel:2 ");
  });
}

TEST(ListView, ImageList_ShowsTheRowsPictures) {
  CellForm form;
  form.list.imageList = Icons::cStrip;
  form.list.SetItemImage(0, Icons::icoNew);
  form.list.SetItemImage(1, 100000);
  test::RunForm(form, false, [&] {
    const auto picture = [&](int row) {
      return form.View()->model()->index(row, 0).data(Qt::DecorationRole).value<QIcon>();
    };
    EXPECT_FALSE(picture(0).isNull());
    EXPECT_TRUE(picture(1).isNull());
    EXPECT_TRUE(picture(2).isNull());
    EXPECT_EQ(form.list.GetItemImage(-1), -1);
  });
}

// How high the rows are shown.
int RowHeight(CellForm& form) {
  return form.View()->visualRect(form.View()->model()->index(0, 0)).height();
}

TEST(ListView, Rows_GrowWithTheirPictures) {
  CellForm form;
  test::RunForm(form, false, [&] {
    const int plain = RowHeight(form);
    form.list.font = Font(8);
    const int small = RowHeight(form);
    EXPECT_LT(small, 24);
    form.list.imageList = Icons::cStrip;
    EXPECT_GE(RowHeight(form), 24) << "the stock icons are 24 pixels high";
    form.list.font = Font(40);
    EXPECT_GT(RowHeight(form), 48) << "a large font needs more than the pictures";
    form.list.font = Font(8);
    form.list.imageList = 0;
    EXPECT_EQ(RowHeight(form), small);
    EXPECT_GE(plain, small);
  });
}

TEST(ListView, ReturnThatEndsAnEdit_ChoosesNothing) {
  CellForm form;
  form.log.Listen("choose", form.list.onChoose);
  form.list.Select(0);
  test::RunForm(form, true, [&] {
    form.list.Focus();
    for (const Qt::Key end : {Qt::Key_Return, Qt::Key_Enter}) {
      form.Edit(end == Qt::Key_Return ? "one" : "two", end);
      ASSERT_TRUE(test::WaitFor([&] { return form.Editor() == nullptr; }));
      EXPECT_EQ(form.log.Take(), "text:0 ");
    }
    test::Key(form, Qt::Key_Return);
    EXPECT_EQ(form.log.Take(), "choose:0 ") << "the next one does";
  });
}

}  // namespace
}  // namespace mavro
