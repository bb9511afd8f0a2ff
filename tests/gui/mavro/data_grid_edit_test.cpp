// Cells of a grid that are edited, copied, pasted and emptied.
#include <gtest/gtest.h>

#include <QInputMethodEvent>
#include <QScrollBar>
#include <functional>
#include <memory>

#include "Clipboard.h"
#include "GridForm.h"

namespace mavro {
namespace {

using test::GridForm;

TEST(DataGridEdit, Typing_ReplacesTheCell_EnterGoesDown) {
  GridForm form;
  test::RunForm(form, true, [&] {
    form.Click(1, 1);
    form.log.Take();
    form.Type("new");
    ASSERT_NE(form.Editor(), nullptr);
    EXPECT_EQ(form.Editor()->text(), "new");
    form.Press(Qt::Key_Return);
    EXPECT_EQ(form.grid.GetCell(1, 1), "new");
    EXPECT_EQ(form.Where(), "2,1 2,1+1x1");
    EXPECT_EQ(form.log.Take(), "text:1 sel:2 ") << "Enter has not pressed OK";
    form.Type("x");
    form.Press(Qt::Key_Return, Qt::ShiftModifier);
    EXPECT_EQ(form.Where(), "1,1 1,1+1x1");
    EXPECT_EQ(form.asked, "1,1=new 2,1=x ");
    EXPECT_TRUE(form.grid.IsFocused());
  });
}

TEST(DataGridEdit, F2_EditsAtTheEnd_ArrowsStayInTheText) {
  GridForm form;
  test::RunForm(form, false, [&] {
    form.Click(1, 1);
    form.Press(Qt::Key_F2);
    form.Press(Qt::Key_Left);
    form.Type("x");
    form.Press(Qt::Key_Tab);
    EXPECT_EQ(form.grid.GetCell(1, 1), "r1cx1");
    EXPECT_EQ(form.Where(), "1,2 1,2+1x1");
    form.Press(Qt::Key_F2);
    form.Type("y");
    form.Press(Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_EQ(form.grid.GetCell(1, 2), "r1c2y");
    EXPECT_EQ(form.Where(), "1,1 1,1+1x1");
  });
}

TEST(DataGridEdit, Typing_ArrowsTakeTheTextAndMoveOn) {
  GridForm form;
  test::RunForm(form, false, [&] {
    form.Click(1, 1);
    form.Type("a");
    form.Press(Qt::Key_Right);
    form.Type("b");
    form.Press(Qt::Key_Down);
    EXPECT_EQ(form.grid.GetCell(1, 1), "a");
    EXPECT_EQ(form.grid.GetCell(1, 2), "b");
    EXPECT_EQ(form.Where(), "2,2 2,2+1x1");
  });
}

TEST(DataGridEdit, Escape_GivesTheTextUp_AndDoesNotCloseTheForm) {
  GridForm form;
  test::RunForm(form, true, [&] {
    form.Click(1, 1);
    form.Type("a");
    form.Press(Qt::Key_Escape);
    EXPECT_EQ(form.Editor(), nullptr);
    EXPECT_EQ(form.grid.GetCell(1, 1), "r1c1");
    EXPECT_EQ(form.asked, "");
    EXPECT_NE(form.impl->hwnd, nullptr);
    EXPECT_TRUE(form.grid.IsFocused());
  });
}

TEST(DataGridEdit, DoubleClick_Edits_AndAClickElsewhereTakesTheText) {
  GridForm form;
  form.log.Listen("choose", form.grid.onChoose);
  test::RunForm(form, false, [&] {
    form.DoubleClick(2, 1);
    ASSERT_NE(form.Editor(), nullptr);
    EXPECT_EQ(form.Editor()->text(), "r2c1");
    form.Type("+");
    form.Click(4, 2);
    EXPECT_EQ(form.Editor(), nullptr);
    EXPECT_EQ(form.grid.GetCell(2, 1), "r2c1+");
    EXPECT_EQ(form.log.Take(), "sel:2 text:2 sel:4 ") << "nothing was chosen";
    form.DoubleClick(2, 1);
    form.Type("+");
    form.ok.Focus();
    EXPECT_EQ(form.grid.GetCell(2, 1), "r2c1++");
  });
}

TEST(DataGridEdit, NotEditable_NothingIsEdited) {
  for (const bool byColumn : {false, true}) {
    GridForm form;
    if (byColumn)
      form.grid.columns.SetEditable(1, false);
    else
      form.grid.editLabels = false;
    test::RunForm(form, false, [&] {
      form.Click(1, 1);
      form.Type("a ");
      form.Press(Qt::Key_F2);
      form.Press(Qt::Key_Backspace);
      form.Press(Qt::Key_Delete);
      SetClipboardText("x");
      EXPECT_FALSE(form.grid.Paste());
      form.grid.EditCell(1, 1);
      form.DoubleClick(1, 1);
      EXPECT_EQ(form.Editor(), nullptr);
      EXPECT_EQ(form.grid.GetCell(1, 1), "r1c1");
      EXPECT_EQ(form.asked, "");
    });
  }
}

TEST(DataGridEdit, OnStartEdit_ChangesTheTextOrKeepsTheCell) {
  GridForm form;
  std::string told;
  form.log.Listen("start", form.grid.onStartEdit, [&](ItemArgs& args) {
    told = std::to_string(args.row) + "," + std::to_string(args.col) + "=" + args.text;
    if (args.col == 0) args.value = 0;
    if (args.col == 2) args.text = "other";
  });
  test::RunForm(form, false, [&] {
    form.Click(1, 0);
    form.Press(Qt::Key_F2);
    EXPECT_EQ(form.Editor(), nullptr);
    EXPECT_EQ(told, "1,0=r1c0");
    form.Click(1, 2);
    form.Press(Qt::Key_F2);
    ASSERT_NE(form.Editor(), nullptr);
    EXPECT_EQ(form.Editor()->text(), "other");
    form.Press(Qt::Key_Return);
    EXPECT_EQ(form.grid.GetCell(1, 2), "other");
    form.Click(1, 2);
    form.Type("x");
    EXPECT_EQ(form.Editor()->text(), "x") << "typing replaces this text too";
  });
}

TEST(DataGridEdit, RefusedText_StaysInTheEditor) {
  GridForm form;
  form.refused = "bad";
  test::RunForm(form, false, [&] {
    form.Click(1, 1);
    form.Type("bad");
    form.Press(Qt::Key_Return);
    ASSERT_NE(form.Editor(), nullptr);
    EXPECT_EQ(form.Editor()->text(), "bad");
    EXPECT_EQ(form.Where(), "1,1 1,1+1x1");
    form.Type("good");
    form.Press(Qt::Key_Return);
    EXPECT_EQ(form.grid.GetCell(1, 1), "good") << "the refused text was selected";
    form.replaced = "GOOD";
    form.Type("better");
    form.Press(Qt::Key_Tab);
    EXPECT_EQ(form.grid.GetCell(2, 1), "GOOD");
  });
}

// Every road out of the cell asks once, and leads back to the refused text.
TEST(DataGridEdit, RefusedText_StaysWhenTheFocusGoesElsewhere) {
  GridForm form;
  form.refused = "bad";
  test::RunForm(form, false, [&] {
    form.Click(1, 1);
    form.Type("bad");
    for (const auto& leave : std::initializer_list<std::function<void()>>{
             [&] { form.Click(3, 2); }, [&] { form.DoubleClick(3, 2); },
             [&] { form.ok.Focus(); }}) {
      form.asked.clear();
      form.log.Take();
      leave();
      EXPECT_EQ(form.asked, "1,1=bad ");
      ASSERT_NE(form.Editor(), nullptr);
      EXPECT_EQ(form.Editor()->text(), "bad");
      EXPECT_TRUE(form.Editor()->hasFocus());
      EXPECT_EQ(form.Where(), "1,1 1,1+1x1");
      EXPECT_EQ(form.log.Take(), "");
    }
    form.Type("good");
    form.Click(3, 2);
    EXPECT_EQ(form.Editor(), nullptr);
    EXPECT_EQ(form.grid.GetCell(1, 1), "good") << "the refused text was selected";
    EXPECT_EQ(form.Where(), "3,2 3,2+1x1");
    form.Type("bad");
    form.ok.Focus();
    form.Press(Qt::Key_Escape);
    EXPECT_EQ(form.Editor(), nullptr);
    EXPECT_EQ(form.grid.GetCell(3, 2), "r3c2");
    form.Click(4, 2);
    EXPECT_EQ(form.Where(), "4,2 4,2+1x1") << "nothing stays";
  });
}

// The OK button neither takes nor throws away what was refused.
TEST(DataGridEdit, RefusedText_KeepsADialogOpen) {
  for (const bool byMouse : {true, false}) {
    GridForm form;
    form.refused = "bad";
    const int result = test::RunForm(form, true, [&] {
      form.Click(1, 1);
      form.Type("bad");
      form.log.Take();
      if (byMouse)
        test::Click(form.ok);
      else
        form.ok.impl->OnCommand(0, 0);
      ASSERT_NE(form.impl->hwnd, nullptr) << byMouse;
      EXPECT_EQ(form.log.Take(), "") << "OK is not pressed";
      EXPECT_EQ(form.asked, "1,1=bad ");
      ASSERT_NE(form.Editor(), nullptr);
      EXPECT_TRUE(form.Editor()->hasFocus());
      EXPECT_EQ(form.Editor()->text(), "bad");
      form.Type("good");
      test::Click(form.ok);
    });
    EXPECT_EQ(result, Form::cOk);
    EXPECT_EQ(form.grid.GetCell(1, 1), "good");
  }
}

TEST(DataGridEdit, RefusedText_IsGivenUpByCancel) {
  GridForm form;
  Button cancel;
  cancel.kind = Button::cCancel;
  cancel.SetLocation(150, 260);
  form.Add(&cancel);
  form.refused = "bad";
  EXPECT_EQ(test::RunForm(form, true,
                          [&] {
                            form.Click(1, 1);
                            form.Type("bad");
                            test::Click(cancel);
                          }),
            Form::cCancel);
  EXPECT_EQ(form.grid.GetCell(1, 1), "r1c1");
}

// The handler moves the focus, as a message box does.
TEST(DataGridEdit, RefusedText_IsAskedAboutOnce_WhereTheHandlerTakesTheFocus) {
  GridForm form;
  form.refused = "bad";
  form.log.Listen("post", form.grid.onPostEdit, [&](ItemArgs&) { form.ok.Focus(); });
  test::RunForm(form, false, [&] {
    form.Click(1, 1);
    form.Type("bad");
    form.Press(Qt::Key_Return);
    EXPECT_EQ(form.asked, "1,1=bad ");
    ASSERT_NE(form.Editor(), nullptr);
    EXPECT_TRUE(form.Editor()->hasFocus());
  });
}

TEST(DataGridEdit, BackspaceBeginsEmpty_DeleteEmptiesTheSelection) {
  GridForm form;
  form.grid.columns.SetEditable(2, false);
  test::RunForm(form, false, [&] {
    form.Click(1, 1);
    form.Press(Qt::Key_Backspace);
    ASSERT_NE(form.Editor(), nullptr);
    EXPECT_EQ(form.Editor()->text(), "");
    form.Press(Qt::Key_Escape);
    form.Press(Qt::Key_Right, Qt::ShiftModifier);
    form.Press(Qt::Key_Down, Qt::ShiftModifier);
    form.Press(Qt::Key_Delete);
    EXPECT_EQ(form.grid.SelectedText(), "\tr1c2\n\tr2c2\n");
    EXPECT_EQ(form.asked, "1,1= 2,1= ");
    EXPECT_FALSE(form.grid.ClearCells()) << "column 2 is kept";
  });
}

TEST(DataGridEdit, CopyAndPaste_ARange) {
  GridForm form;
  form.grid.SetCell(1, 1, "a\tb");
  form.grid.SetCell(1, 2, "two\nlines");
  test::RunForm(form, false, [&] {
    form.grid.SelectCells({1, 1, 2, 2});
    form.grid.Focus();
    form.Press(Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(ClipboardText(), "\"a\tb\"\t\"two\nlines\"\nr2c1\tr2c2\n");
    form.grid.SelectCells({10, 3, 1, 1});
    form.Press(Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(form.grid.GetCell(10, 3), "a\tb");
    EXPECT_EQ(form.grid.GetCell(10, 4), "two\nlines");
    EXPECT_EQ(form.grid.GetCell(11, 4), "r2c2");
    EXPECT_EQ(form.Where(), "10,3 10,3+2x2") << "what was pasted is selected";
    form.Press(Qt::Key_X, Qt::ControlModifier);
    EXPECT_EQ(form.grid.GetCell(10, 3), "");
    EXPECT_EQ(form.grid.GetCell(11, 4), "");
    EXPECT_EQ(form.grid.GetCell(11, 2), "r11c2");
  });
}

TEST(DataGridEdit, Paste_Limits) {
  GridForm form;
  test::RunForm(form, false, [&] {
    form.grid.SelectCells({38, 3, 1, 1});
    SetClipboardText("1\t2\n3\t4");
    EXPECT_TRUE(form.grid.Paste()) << "it just has room";
    form.grid.SelectCells({39, 3, 1, 1});
    EXPECT_FALSE(form.grid.Paste()) << "one row too many";
    EXPECT_EQ(form.grid.GetCell(39, 4), "2");
    EXPECT_EQ(form.grid.rowCount, GridForm::cRows);
    form.grid.SelectCells({38, 4, 1, 1});
    EXPECT_FALSE(form.grid.Paste()) << "one column too many";
    EXPECT_EQ(form.grid.GetCell(39, 4), "3");
    form.grid.SelectCells({1, 1, 2, 2});
    SetClipboardText("x");
    EXPECT_TRUE(form.grid.Paste());
    EXPECT_EQ(form.grid.SelectedText(), "x\tx\nx\tx\n") << "one cell fills the selection";
    form.refused = "no";
    SetClipboardText("yes\tno");
    EXPECT_FALSE(form.grid.Paste());
    EXPECT_EQ(form.grid.GetCell(1, 1), "yes");
    EXPECT_EQ(form.grid.GetCell(1, 2), "x");
    SetClipboardText("");
    EXPECT_FALSE(form.grid.Paste());
    form.grid.selectedIndex = -1;
    SetClipboardText("y");
    EXPECT_FALSE(form.grid.Paste());
  });
}

TEST(DataGridEdit, Copy_OfNothing_KeepsTheClipboard) {
  GridForm form;
  test::RunForm(form, false, [&] {
    SetClipboardText("kept");
    form.grid.Copy();
    EXPECT_EQ(ClipboardText(), "kept");
  });
}

TEST(DataGridEdit, CellWithALineBreak_IsKeptByTheEditor) {
  GridForm form;
  form.grid.SetCell(1, 1, "one\ntwo\r\nthree");
  test::RunForm(form, false, [&] {
    form.Click(1, 1);
    EXPECT_EQ(form.View()->model()->index(1, 1).data().toString(), "one two  three");
    form.Press(Qt::Key_F2);
    form.Press(Qt::Key_Return);
    EXPECT_EQ(form.grid.GetCell(1, 1), "one\ntwo\r\nthree");
    EXPECT_EQ(form.asked, "");
    form.Click(1, 1);
    form.Press(Qt::Key_F2);
    form.Type("!");
    form.Press(Qt::Key_Return);
    EXPECT_EQ(form.grid.GetCell(1, 1), "one\ntwo\r\nthree!");
  });
}

TEST(DataGridEdit, CellOfAMegabyte_IsEditedWhole) {
  GridForm form;
  const std::string large(1 << 20, 'x');
  form.grid.SetCell(1, 1, large);
  test::RunForm(form, false, [&] {
    form.grid.Update();
    EXPECT_LT(form.View()->model()->index(1, 1).data().toString().size(), 10000);
    form.Click(1, 1);
    form.Press(Qt::Key_F2);
    ASSERT_NE(form.Editor(), nullptr);
    form.Type("y");
    form.Press(Qt::Key_Return);
    EXPECT_TRUE(form.grid.GetCell(1, 1) == large + "y");
    form.grid.SelectCells({1, 1, 1, 1});
    form.grid.Copy();
    form.grid.SelectCells({3, 1, 1, 1});
    EXPECT_TRUE(form.grid.Paste());
    EXPECT_TRUE(form.grid.GetCell(3, 1) == large + "y");
  });
}

TEST(DataGridEdit, InvalidBytes_Stay) {
  GridForm form;
  form.grid.SetCell(1, 1, "a\xFF");
  test::RunForm(form, false, [&] {
    form.Click(1, 1);
    form.Press(Qt::Key_F2);
    form.Type("b");
    form.Press(Qt::Key_Return);
    EXPECT_EQ(form.grid.GetCell(1, 1),
              "a\xFF"
              "b");
  });
}

TEST(DataGridEdit, ProgramChangesTheRow_WhatIsTypedStays) {
  GridForm form;
  test::RunForm(form, false, [&] {
    form.Click(1, 1);
    form.Type("mine");
    form.grid.SetCell(1, 1, "theirs");
    form.grid.SetCell(1, 2, "theirs");
    ASSERT_NE(form.Editor(), nullptr);
    EXPECT_EQ(form.Editor()->text(), "mine");
    form.Press(Qt::Key_Return);
    EXPECT_EQ(form.grid.GetCell(1, 1), "mine");
  });
}

TEST(DataGridEdit, InputMethod_BeginsAnEdit) {
  GridForm form;
  test::RunForm(form, false, [&] {
    form.Click(1, 1);
    QInputMethodEvent nothing;
    QCoreApplication::sendEvent(form.View(), &nothing);
    EXPECT_EQ(form.Editor(), nullptr);
    QInputMethodEvent composed;
    composed.setCommitString(QStringLiteral("\u00e9"));
    QCoreApplication::sendEvent(form.View(), &composed);
    ASSERT_NE(form.Editor(), nullptr);
    form.Press(Qt::Key_Return);
    EXPECT_EQ(form.grid.GetCell(1, 1), "\xC3\xA9");
  });
}

TEST(DataGridEdit, RowsGoWhileOneIsEdited) {
  GridForm form;
  test::RunForm(form, false, [&] {
    form.Click(3, 1);
    form.Type("x");
    form.grid.RemoveRow(0);
    ASSERT_NE(form.Editor(), nullptr) << "the edited row has only moved";
    form.Press(Qt::Key_Return);
    EXPECT_EQ(form.grid.GetCell(2, 1), "x");
    EXPECT_EQ(form.grid.GetCell(2, 0), "r3c0");
    form.Type("y");
    form.grid.RemoveRow(form.grid.selectedIndex);
    EXPECT_TRUE(test::WaitFor([&] { return form.Editor() == nullptr; }));
    form.Click(1, 1);
    form.Type("z");
    form.grid.Clear();
    EXPECT_TRUE(test::WaitFor([&] { return form.Editor() == nullptr; }));
    form.Press(Qt::Key_Return);
  });
}

TEST(DataGridEdit, SortWhileOneIsEdited_TakesTheTextFirst) {
  GridForm form;
  test::RunForm(form, false, [&] {
    form.Click(3, 1);
    form.Type("zzz");
    form.grid.SortBy(1, false);
    EXPECT_EQ(form.grid.GetCell(0, 1), "zzz");
    EXPECT_EQ(form.grid.GetCell(0, 0), "r3c0");
    EXPECT_EQ(form.Editor(), nullptr);
    EXPECT_EQ(form.grid.selectedIndex, 0);
  });
}

TEST(DataGridEdit, EditCell_ByTheProgram) {
  GridForm form;
  test::RunForm(form, false, [&] {
    form.grid.EditCell(30, 4);
    ASSERT_NE(form.Editor(), nullptr);
    EXPECT_TRUE(form.View()->viewport()->rect().contains(form.Editor()->geometry().center()));
    form.Type("x");
    form.grid.EditCell(2, 0);
    EXPECT_EQ(form.grid.GetCell(30, 4), "r30c4x");
    ASSERT_NE(form.Editor(), nullptr);
    EXPECT_EQ(form.Editor()->text(), "r2c0");
  });
}

TEST(DataGridEdit, EditorThatScrolls_DoesNotCoverLockedColumns) {
  GridForm form;
  form.grid.lockCol = 1;
  test::RunForm(form, false, [&] {
    form.grid.EditCell(1, 1);
    ASSERT_NE(form.Editor(), nullptr);
    form.View()->horizontalScrollBar()->setValue(30);
    EXPECT_EQ(form.Editor()->geometry().left(), GridForm::cWidth);
    form.grid.EditCell(1, 0);
    ASSERT_NE(form.Editor(), nullptr);
    EXPECT_EQ(form.Editor()->geometry().left(), 1);
  });
}

// A form with a grid that a handler destroys.
struct DoomedForm : GridForm {
  std::unique_ptr<DataGrid> doomed = std::make_unique<DataGrid>();
  DoomedForm() {
    doomed->SetBounds(0, 0, 300, 200);
    doomed->colCount = 2;
    doomed->rowCount = 3;
    doomed->editLabels = true;
    Add(doomed.get());
  }
  void OnItem(ItemArgs&) { doomed.reset(); }
  void OnNotify(NotifyArgs&) { doomed.reset(); }
  // Selects the first cell and presses a key.
  void Do(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
    doomed->SelectCells({0, 0, 2, 2});
    doomed->Focus();
    Press(key, modifiers);
  }
};

TEST(DataGridEdit, DestroyedByAHandler) {
  for (const char* event : {"start", "post", "paste", "text", "sel", "choose", "click"}) {
    DoomedForm form;
    const std::string name = event;
    DataGrid& grid = *form.doomed;
    if (name == "start") grid.onStartEdit.Add_H(&form, &DoomedForm::OnItem);
    if (name == "post" || name == "paste") grid.onPostEdit.Add_H(&form, &DoomedForm::OnItem);
    if (name == "text") grid.onChangeText.Add_H(&form, &DoomedForm::OnNotify);
    if (name == "sel") grid.onChangeSel.Add_H(&form, &DoomedForm::OnNotify);
    if (name == "choose") grid.onChoose.Add_H(&form, &DoomedForm::OnNotify);
    if (name == "click") grid.onClick.Add_H(&form, &DoomedForm::OnNotify);
    SetClipboardText("1\t2\n3\t4");
    test::RunForm(form, false, [&] {
      if (name == "start") form.Do(Qt::Key_F2);
      if (name == "paste") form.Do(Qt::Key_V, Qt::ControlModifier);
      if (name == "sel") form.Do(Qt::Key_Right);
      if (name == "choose") form.Do(Qt::Key_Return);
      if (name == "click") test::Click(grid, QPoint(20, 50));
      if (name == "post" || name == "text") {
        form.Do(Qt::Key_X);
        form.Press(Qt::Key_Return);
      }
      EXPECT_EQ(form.doomed, nullptr) << name;
    });
  }
}

}  // namespace
}  // namespace mavro
