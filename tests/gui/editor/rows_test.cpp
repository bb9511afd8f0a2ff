#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include "EditorFixture.h"
#include "MenuRows.h"
#include "Privileges.h"
#include "config/EditorSettings.h"

// What is shown of a text, its line ends, and what a save tidies: rows of the menus.

namespace zendry {
namespace {

using mavro::SCI_GETLINEVISIBLE;
using mavro::SCI_GETVIEWEOL;
using mavro::SCI_GETVIEWWS;
using mavro::SCI_GETWRAPMODE;
using test::IdeDriver;
using testing::HasSubstr;
using testing::Not;

using Path = std::vector<std::string>;

class IdeRows : public test::EditorFixture {
 protected:
  // Others may enter the folder, so that a test can be one of them.
  IdeRows() { chmod(ide.files.Path().c_str(), 0755); }

  static QAction* Row(const Path& captions) {
    QAction* row = test::Row(*theMainForm, captions);
    EXPECT_TRUE(row) << captions.back();
    return row;
  }
  // Chooses a row as a click does.
  static void Choose(const Path& captions) {
    QAction* row = Row(captions);
    ASSERT_TRUE(row && row->isEnabled()) << captions.back();
    row->trigger();
  }
  static bool IsOn(const Path& captions) { return Row(captions)->isChecked(); }
  static bool IsOffered(const Path& captions) { return Row(captions)->isEnabled(); }
};

const Path cWrap = {"View", "Word wrap"};
const Path cBlanks = {"View", "Show white space"};
const Path cEnds = {"View", "Show line ends"};
const Path cFold = {"View", "Fold all"};
const Path cUnfold = {"View", "Unfold all"};
const Path cLf = {"Edit", "Line ends", "LF (Unix)"};
const Path cCrLf = {"Edit", "Line ends", "CR LF (Windows)"};
const Path cCr = {"Edit", "Line ends", "CR"};
const Path cReadOnlyRow = {"Edit", "Read only"};
const Path cStrip = {"Edit", "Lines", "Strip trailing blanks"};
const Path cStripOnSave = {"Edit", "When saving", "Strip trailing blanks"};
const Path cLastLine = {"Edit", "When saving", "End the last line"};
const Path cLongLine = {"Edit", "Show long line"};

struct Toggle {
  Path row;
  Qt::Key key;
  Qt::KeyboardModifiers modifiers;
  unsigned ask;
};

TEST_F(IdeRows, Toggles_AreForAllTabsAndKeptOverARestart) {
  const Toggle toggles[] = {
      {cWrap, Qt::Key_Z, Qt::AltModifier, SCI_GETWRAPMODE},
      {cBlanks, Qt::Key_W, Qt::ControlModifier | Qt::ShiftModifier, SCI_GETVIEWWS},
      {cEnds, Qt::Key_unknown, Qt::NoModifier, SCI_GETVIEWEOL},
  };
  ide.Run({}, [&] {
    CppEditor& first = Open("a.cpp", "int a;\n");
    CppEditor& front = Open("b.cpp", "int b;\n");
    for (const Toggle& toggle : toggles) {
      EXPECT_FALSE(IsOn(toggle.row)) << toggle.row[1];
      if (toggle.key == Qt::Key_unknown)
        Choose(toggle.row);
      else
        IdeDriver::Press(toggle.key, toggle.modifiers);
      EXPECT_TRUE(IsOn(toggle.row)) << toggle.row[1];
      EXPECT_EQ(front.Send(toggle.ask), 1) << toggle.row[1];
      EXPECT_EQ(first.Send(toggle.ask), 1) << toggle.row[1];
      EXPECT_EQ(Open("c.cpp", "").Send(toggle.ask), 1) << "new ones too";
      Tabs().CloseTab(2, EditTabs::Unsaved::cDrop);
    }
    EXPECT_EQ(front.GetText(), "int b;\n") << "the keys type nothing";
  });
  theEditorSettings = {};
  ide.Run({ide.files.Path("a.cpp")}, [&] {
    for (const Toggle& toggle : toggles) {
      EXPECT_TRUE(IsOn(toggle.row)) << toggle.row[1];
      EXPECT_EQ(Front().Send(toggle.ask), 1) << toggle.row[1];
      Choose(toggle.row);
      EXPECT_FALSE(IsOn(toggle.row)) << toggle.row[1];
      EXPECT_EQ(Front().Send(toggle.ask), 0) << toggle.row[1];
    }
  });
  EXPECT_THAT(ide.Ini(), HasSubstr("ed-wrap=0\n"));
}

TEST_F(IdeRows, FoldAllAndUnfoldAll_ByKeyAndRow) {
  ide.Run({}, [&] {
    CppEditor& editor = Open("a.cpp", "int f() {\n  return 1;\n}\n");
    IdeDriver::Press(Qt::Key_Minus, Qt::AltModifier);
    EXPECT_EQ(editor.Send(SCI_GETLINEVISIBLE, 1), 0);
    IdeDriver::Press(Qt::Key_Plus, Qt::AltModifier);
    EXPECT_EQ(editor.Send(SCI_GETLINEVISIBLE, 1), 1);
    Choose(cFold);
    IdeDriver::Press(Qt::Key_Plus, Qt::AltModifier | Qt::ShiftModifier);
    EXPECT_EQ(editor.Send(SCI_GETLINEVISIBLE, 1), 1) << "a plus that needs the Shift key";
    Choose(cFold);
    EXPECT_EQ(editor.Send(SCI_GETLINEVISIBLE, 1), 0);
    Choose(cUnfold);
    EXPECT_EQ(editor.Send(SCI_GETLINEVISIBLE, 1), 1);
    EXPECT_EQ(editor.GetText(), "int f() {\n  return 1;\n}\n");
  });
}

TEST_F(IdeRows, RowsThatCannotAct_AreGray) {
  ide.Run({}, [&] {
    for (const Path& row : {cWrap, cBlanks, cEnds, cFold, cUnfold})
      EXPECT_FALSE(IsOffered(row)) << row[1] << " without a tab";
    Open("a.cpp", "int a;\n");
    for (const Path& row : {cWrap, cBlanks, cEnds, cFold, cUnfold, cLf, cReadOnlyRow, cStrip})
      EXPECT_TRUE(IsOffered(row)) << row[1];
    EXPECT_FALSE(IsOffered(cLongLine)) << "all lines are shown";
    Open("notes.txt", "text\n");
    EXPECT_FALSE(IsOffered(cFold)) << "plain text has no folds";
    EXPECT_FALSE(IsOffered({"Edit", "Lines", "Toggle comment"}));
    EXPECT_TRUE(IsOffered(cWrap));
  });
}

TEST_F(IdeRows, ShowLongLine_IsOfferedWhereThereIsOne) {
  ide.Run({}, [&] {
    const std::string line(600 * 1024, 'x');
    CppEditor& editor = Open("a.txt", "short\n" + line + "\n");
    ASSERT_EQ(editor.LinesNotShown(), 1);
    EXPECT_TRUE(IsOffered(cLongLine));
    Open("b.txt", "short\n");
    EXPECT_FALSE(IsOffered(cLongLine));
    Tabs().Show(0);
    Choose(cReadOnlyRow);
    IdeDriver::Press(Qt::Key_Down);
    Choose(cLongLine);
    EXPECT_EQ(editor.LinesNotShown(), 0) << "showing is no change of a text that is read only";
    EXPECT_TRUE(editor.IsReadOnly());
    EXPECT_FALSE(editor.dirty);
    EXPECT_FALSE(IsOffered(cLongLine));
  });
}

TEST_F(IdeRows, LineEnds_TheMarkFollowsTheTabInFront_AndConvertingIsSaved) {
  ide.Run({}, [&] {
    Open("dos.cpp", "int a;\r\nint b;\r\n");
    EXPECT_TRUE(IsOn(cCrLf));
    EXPECT_FALSE(IsOn(cLf));
    Open("unix.cpp", "int a;\n");
    EXPECT_TRUE(IsOn(cLf));
    EXPECT_FALSE(IsOn(cCrLf));
    Tabs().Show(0);
    EXPECT_TRUE(IsOn(cCrLf));
    Choose(cLf);
    EXPECT_TRUE(IsOn(cLf));
    EXPECT_FALSE(IsOn(cCrLf));
    EXPECT_EQ(IdeDriver::Status(cEncodingPane), "UTF-8   LF");
    EXPECT_EQ(IdeDriver::Captions()[0], "dos.cpp*");
    IdeDriver::Press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_TRUE(IsOn(cCrLf)) << "undone with the text";
    EXPECT_EQ(IdeDriver::Captions()[0], "dos.cpp");
    Choose(cCr);
    IdeDriver::Press(Qt::Key_S, Qt::ControlModifier);
    EXPECT_EQ(ide.files.Read("dos.cpp"), "int a;\rint b;\r");
  });
}

// Group: texts that can't be changed.

TEST_F(IdeRows, ReadOnly_TypingIsRefusedAndSaysWhy) {
  ide.Run({}, [&] {
    CppEditor& editor = Open("a.cpp", "int a; \n");
    Choose(cReadOnlyRow);
    EXPECT_TRUE(IsOn(cReadOnlyRow));
    EXPECT_THAT(IdeDriver::Status(cEncodingPane), HasSubstr("Read only"));
    Type("x");
    EXPECT_EQ(IdeDriver::Status(),
              "Read only: this text is locked. \"Read only\" in the Edit menu lets you type");
    for (const Path& row : {cLf, cStrip, Path{"Edit", "Paste"}, Path{"Edit", "Delete Line"},
                            Path{"Edit", "Lines", "Join"}, Path{"Edit", "Lines", "Sort"},
                            Path{"Edit", "Lines", "Move up"}, Path{"Edit", "Undo"}})
      EXPECT_FALSE(IsOffered(row)) << row.back();
    EXPECT_TRUE(IsOffered({"Edit", "Go to match brace"}));
    for (const auto& [key, modifiers] :
         std::initializer_list<std::pair<Qt::Key, int>>{{Qt::Key_D, Qt::ControlModifier},
                                                        {Qt::Key_Y, Qt::ControlModifier},
                                                        {Qt::Key_V, Qt::ControlModifier},
                                                        {Qt::Key_J, Qt::ControlModifier},
                                                        {Qt::Key_Up, Qt::AltModifier},
                                                        {Qt::Key_Return, 0},
                                                        {Qt::Key_Backspace, 0},
                                                        {Qt::Key_Delete, 0},
                                                        {Qt::Key_Tab, 0}})
      IdeDriver::Press(key, Qt::KeyboardModifiers(modifiers));
    EXPECT_EQ(editor.GetText(), "int a; \n");
    EXPECT_FALSE(editor.dirty);
    Open("b.cpp", "int b;\n");
    EXPECT_FALSE(IsOn(cReadOnlyRow)) << "it is the file's";
    Tabs().Show(0);
    Choose(cReadOnlyRow);
    Type("x");
    EXPECT_EQ(editor.GetText().size(), 9u);
  });
}

TEST_F(IdeRows, AFileThatMayNotBeWritten_OpensReadOnly_AndASaveIsAnswered) {
  const std::string path = ide.files.Write("a.cpp", "int a;\n");
  ASSERT_EQ(chmod(path.c_str(), 0444), 0);
  ide.Run({}, [&] {
    const test::WithoutRights user;
    CppEditor& editor = *Tabs().OpenFile(path);
    EXPECT_TRUE(IsOn(cReadOnlyRow));
    EXPECT_EQ(IdeDriver::Status(),
              "a.cpp - Read only: you may not write this file. \"Read only\" in the Edit menu lets "
              "you type");
    Type("x");
    EXPECT_EQ(editor.GetText(), "int a;\n");
    Choose(cReadOnlyRow);
    Type("x");
    EXPECT_EQ(editor.GetText(), "xint a;\n");
    IdeDriver::Press(Qt::Key_S, Qt::ControlModifier);
    EXPECT_THAT(ide.dialogs.texts, testing::ElementsAre(HasSubstr("Error on save file:" + path)));
    EXPECT_THAT(IdeDriver::Status(), HasSubstr("Permission denied"));
    EXPECT_TRUE(editor.dirty);
    EXPECT_EQ(ide.files.Read("a.cpp"), "int a;\n");
  });
}

TEST_F(IdeRows, APermissionThatChanges_IsFollowed_ButUnsavedTextStaysOpenForTyping) {
  const std::string path = ide.files.Write("a.cpp", "int a;\n");
  ide.Run({path}, [&] {
    const auto set = [&](mode_t mode) {
      ASSERT_EQ(chmod(path.c_str(), mode), 0);
      const test::WithoutRights user;
      Tabs().CheckDisk();
    };
    EXPECT_FALSE(Front().IsReadOnly());
    set(0444);
    EXPECT_TRUE(Front().IsReadOnly());
    EXPECT_TRUE(IsOn(cReadOnlyRow));
    EXPECT_THAT(IdeDriver::Status(cEncodingPane), HasSubstr("Read only"));
    set(0666);
    EXPECT_FALSE(Front().IsReadOnly());
    EXPECT_FALSE(IsOn(cReadOnlyRow));
    Type("x");
    set(0444);
    EXPECT_FALSE(Front().IsReadOnly());
    EXPECT_TRUE(ide.dialogs.texts.empty());
  });
}

TEST_F(IdeRows, ARescuedTextOfAProtectedFile_IsTaken) {
  const std::string path = ide.files.Write("a.cpp", "old\n");
  ASSERT_EQ(chmod(path.c_str(), 0444), 0);
  ide.Run({}, [&] {
    const test::WithoutRights user;
    CppEditor& editor = *Tabs().OpenFile(path);
    RescuedText rescued;
    rescued.path = path;
    rescued.content = "new\n";
    editor.TakeRescued(rescued);
    EXPECT_EQ(editor.GetText(), "new\n");
  });
}

// Group: what a save tidies.

TEST_F(IdeRows, StripTrailingBlanks_Now_IsOneUndoStep) {
  ide.Run({}, [&] {
    CppEditor& editor = Open("a.cpp", "int a; \n\t\nint b;\t \n");
    Choose(cStrip);
    EXPECT_EQ(editor.GetText(), "int a;\n\nint b;\n");
    IdeDriver::Press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(editor.GetText(), "int a; \n\t\nint b;\t \n");
    EXPECT_FALSE(editor.dirty);
  });
}

TEST_F(IdeRows, WhenSaving_OffAtFirst_ThenStripsAndEndsTheLastLine) {
  ide.Run({}, [&] {
    CppEditor& editor = Open("a.cpp", "int a; \nint b;  ");
    Type("x");
    IdeDriver::Press(Qt::Key_S, Qt::ControlModifier);
    EXPECT_EQ(ide.files.Read("a.cpp"), "xint a; \nint b;  ");
    Choose(cStripOnSave);
    Choose(cLastLine);
    EXPECT_TRUE(IsOn(cStripOnSave) && IsOn(cLastLine));
    editor.Select(16, 16);  // after one of the last blanks
    IdeDriver::Press(Qt::Key_S, Qt::ControlModifier);
    EXPECT_EQ(ide.files.Read("a.cpp"), "xint a;\nint b; \n");
    EXPECT_EQ(editor.CaretPosition(), 15);
    EXPECT_FALSE(editor.dirty);
    IdeDriver::Press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(editor.GetText(), "xint a; \nint b;  ");
  });
  EXPECT_THAT(ide.Ini(), HasSubstr("ed-strip=1\n"));
  EXPECT_THAT(ide.Ini(), HasSubstr("ed-lastline=1\n"));
  theEditorSettings = {};
}

TEST_F(IdeRows, ASaveThatNobodyAskedFor_LeavesTheCaretsLineAlone) {
  ide.Run({ide.Project({{"a.cpp", "int a; \nint b; \n"}})}, [&] {
    theEditorSettings.stripBlanks = 1;
    CppEditor& editor = *Tabs().OpenFile(ide.files.Path("a.cpp"));
    Type("x");
    theMainForm->SaveChangedFiles();  // as a build does
    EXPECT_EQ(ide.files.Read("a.cpp"), "xint a; \nint b;\n");
    editor.ShowLine(2);
    Type("y");
    theMainForm->SaveChangedFiles();
    EXPECT_EQ(ide.files.Read("a.cpp"), "xint a;\nyint b;\n");
    theEditorSettings.stripBlanks = 0;
  });
}

struct KindCase {
  const char* name;
  const char* after;
};

TEST_F(IdeRows, WhenSaving_WhatIsNoSource_KeepsItsBlanks) {
  const KindCase cases[] = {
      {"a.cpp", "x\n\n"},      {"a.h", "x\n\n"},          {"a.md", "x  \n\n"},
      {"a.txt", "x  \n\n"},    {"a.diff", "x   \n \n"},   {"a.patch", "x   \n \n"},
      {"Makefile", "x  \n\n"}, {"nodiff.txt", "x  \n\n"},
  };
  ide.Run({}, [&] {
    theEditorSettings.stripBlanks = 1;
    for (const KindCase& row : cases) {
      Open(row.name, "x   \n \n");
      IdeDriver::Press(Qt::Key_S, Qt::ControlModifier);
      EXPECT_EQ(ide.files.Read(row.name), row.after) << row.name;
    }
    theEditorSettings.stripBlanks = 0;
  });
}

// Group: the commands on lines.

struct LinesKey {
  Path row;
  const char* shown;
  Qt::Key key;
  Qt::KeyboardModifiers modifiers;
  const char* after;
};

TEST_F(IdeRows, LineCommands_EachHasARowWithItsKey_AndIsOneUndoStep) {
  const LinesKey rows[] = {
      {{"Edit", "Lines", "Toggle comment"},
       "Ctrl+Shift+C",
       Qt::Key_C,
       Qt::ControlModifier | Qt::ShiftModifier,
       "// b;\n// a; \nc;\n"},
      {{"Edit", "Lines", "Move down"}, "Alt+Dn", Qt::Key_Down, Qt::AltModifier, "c;\nb;\na; \n"},
      {{"Edit", "Lines", "Duplicate line or selection"},
       "Ctrl+D",
       Qt::Key_D,
       Qt::ControlModifier,
       "b;\na; \nb;\na; \nc;\n"},
      {{"Edit", "Lines", "Join"}, "Ctrl+J", Qt::Key_J, Qt::ControlModifier, "b; a; \nc;\n"},
      {{"Edit", "Lines", "Sort"}, "", Qt::Key_unknown, Qt::NoModifier, "a; \nb;\nc;\n"},
      {cStrip, "", Qt::Key_unknown, Qt::NoModifier, "b;\na;\nc;\n"},
  };
  ide.Run({}, [&] {
    CppEditor& editor = Open("a.cpp", "b;\na; \nc;\n");
    for (const LinesKey& row : rows) {
      editor.Select(0, 7);
      QAction* shown = Row(row.row);
      EXPECT_EQ(shown->text().section('\t', 1).toStdString(), row.shown);
      if (row.key == Qt::Key_unknown)
        shown->trigger();
      else
        IdeDriver::Press(row.key, row.modifiers);
      EXPECT_EQ(editor.GetText(), row.after) << row.row.back();
      IdeDriver::Press(Qt::Key_Z, Qt::ControlModifier);
      EXPECT_EQ(editor.GetText(), "b;\na; \nc;\n") << row.row.back();
    }
  });
}

}  // namespace
}  // namespace zendry
