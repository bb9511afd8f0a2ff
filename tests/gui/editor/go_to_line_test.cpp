#include "GoToLineDlg.h"

#include <gtest/gtest.h>

#include "EditorForm.h"
#include "IdeDriver.h"

// The dialog of "Go to line": what is typed into it, and where the caret goes.

namespace mavro {
namespace {

struct NumberCase {
  const char* typed;
  int line;
};

TEST(GoToLine, Number_IsWhatTheFieldBeginsWith) {
  const NumberCase cases[] = {{"12", 12},
                              {"  7", 7},
                              {"3:5", 3},
                              {"+4", 4},
                              {"", 0},
                              {"abc", 0},
                              {"-5", 0},
                              {"2147483648", 2147483647},
                              {"99999999999999999999", 2147483647}};
  for (const NumberCase& row : cases) {
    GoToLineDlg dialog(1);
    dialog.autoDialogKeys = true;
    test::RunForm(dialog, true, [&] {
      test::Key(dialog, Qt::Key_Delete);
      QTest::keyClicks(QApplication::focusWidget(), row.typed);
      test::Key(dialog, Qt::Key_Return);
    });
    EXPECT_EQ(dialog.result, Form::cOk);
    EXPECT_EQ(dialog.Line(), row.line) << row.typed;
  }
}

TEST(GoToLine, Shown_TheLineOfTheCaretStandsThereSelected) {
  GoToLineDlg dialog(42);
  dialog.autoDialogKeys = true;
  test::RunForm(dialog, true, [&] {
    test::Shot(dialog, "go-to-line");
    QTest::keyClicks(QApplication::focusWidget(), "7");
    test::Key(dialog, Qt::Key_G, Qt::AltModifier);
    EXPECT_TRUE(test::WaitFor([&] { return dialog.result == Form::cOk; }));
  });
  EXPECT_EQ(dialog.result, Form::cOk);
  EXPECT_EQ(dialog.Line(), 7);
}

class GoToLineInTheIde : public testing::Test {
 protected:
  // Opens 100 lines, presses Ctrl+G, types and ends with the key; answers the caret's line after
  // it.
  int LineAfter(const char* typed, Qt::Key end) {
    int line = 0;
    ide.Run({}, [&] {
      zendry::CppEditor& editor =
          *zendry::theMainForm->editTabs.OpenFile(ide.files.Write("a.cpp", std::string(99, '\n')));
      editor.ShowLine(50);
      ide.OnDialog([&](Form& dialog) {
        QTest::keyClicks(QApplication::focusWidget(), typed);
        test::Key(dialog, end);
      });
      test::IdeDriver::Press(Qt::Key_G, Qt::ControlModifier);
      line = editor.ShownLine();
      EXPECT_FALSE(editor.dirty);
    });
    return line;
  }

  test::IdeDriver ide;
};

TEST_F(GoToLineInTheIde, Number_TheCaretGoesThere) {
  EXPECT_EQ(LineAfter("73", Qt::Key_Return), 73);
}
TEST_F(GoToLineInTheIde, PastTheEnd_TheCaretGoesToTheLastLine) {
  EXPECT_EQ(LineAfter("5000", Qt::Key_Return), 100);
}
TEST_F(GoToLineInTheIde, NoNumber_NothingChanges) {
  EXPECT_EQ(LineAfter("x", Qt::Key_Return), 50);
}
TEST_F(GoToLineInTheIde, Escape_NothingChanges) {
  EXPECT_EQ(LineAfter("73", Qt::Key_Escape), 50);
}

}  // namespace
}  // namespace mavro
