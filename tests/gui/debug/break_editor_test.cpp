#include "debug/BreakEditor.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QLineEdit>
#include <QTreeView>

#include "DarkPalette.h"
#include "EditorFixture.h"
#include "Looks.h"

// The list of breakpoints, and their marks, with no session.

namespace zendry {
namespace {

using test::IdeDriver;
using testing::ElementsAre;
using testing::IsEmpty;

const std::vector<IdeDriver::File> cFiles = {{"a.cpp", "int a;\nint b;\nint c;\nint d;\n"},
                                             {"src/b.cpp", "int e;\nint f;\n"}};

class BreakList : public test::EditorFixture {
 protected:
  // Runs the program on a project with breakpoints, and `script` with the dialog.
  void WithDialog(const std::function<void(BreakEditor&)>& script) {
    ide.Run({ide.Project(cFiles)}, [&] {
      theDebugger.Toggle(ide.files.Path("a.cpp"), 1);
      theDebugger.Toggle(ide.files.Path("a.cpp"), 3);
      theDebugger.Toggle(ide.files.Path("src/b.cpp"), 0);
      ASSERT_EQ(theDebugger.breakpoints.entries.size(), 3u);
      ide.OnDialog([&](mavro::Form& dialog) {
        script(dynamic_cast<BreakEditor&>(dialog));
        if (dialog.impl->hwnd) dialog.Close();
      });
      IdeDriver::Press(Qt::Key_B, Qt::ControlModifier | Qt::AltModifier);
    });
  }
};

TEST_F(BreakList, ShowsFileLineConditionAndNumber) {
  WithDialog([&](BreakEditor& dialog) {
    EXPECT_EQ(dialog.text.Get(), "Breakpoints");
    EXPECT_EQ(dialog.width.Get(), 592);
    EXPECT_EQ(dialog.height.Get(), 321);
    theDebugger.breakpoints.entries[1].condition = "d > 1";
    theDebugger.breakpoints.entries[1].id = 7;
    theMainForm->debugWindow.BreakpointsChanged();
    EXPECT_THAT(IdeDriver::Rows(dialog.list),
                ElementsAre("a.cpp|2||", "a.cpp|4|d > 1|7", "src/b.cpp|1||"));
    EXPECT_EQ(dialog.list.selectedIndex, 0);
    EXPECT_THAT(test::UnreadableCaptions(dialog), IsEmpty());
    test::Shot(dialog, "ide-breakpoints");
  });
}

TEST_F(BreakList, Locate_ShowsTheLineAndCloses) {
  WithDialog([&](BreakEditor& dialog) {
    dialog.list.Select(2);
    test::Click(dialog.locate);
    EXPECT_FALSE(dialog.impl->hwnd);
    EXPECT_EQ(theMainForm->ActiveFile(), ide.files.Path("src/b.cpp"));
    EXPECT_EQ(Front().ShownLine(), 1);
  });
}

TEST_F(BreakList, Locate_FileThatIsGone_SaysSoAndStays) {
  WithDialog([&](BreakEditor& dialog) {
    std::filesystem::remove(ide.files.Path("src/b.cpp"));
    dialog.list.Select(2);
    test::Click(dialog.locate);
    EXPECT_THAT(ide.dialogs.texts,
                ElementsAre("Information: No file: " + ide.files.Path("src/b.cpp")));
    EXPECT_TRUE(dialog.impl->hwnd);
  });
}

TEST_F(BreakList, Remove_TakesTheSelectedOne_AndThenTheNext) {
  WithDialog([&](BreakEditor& dialog) {
    test::Click(dialog.remove);
    EXPECT_THAT(IdeDriver::Rows(dialog.list), ElementsAre("a.cpp|4||", "src/b.cpp|1||"));
    EXPECT_EQ(dialog.list.selectedIndex, 0);
    dialog.list.Select(1);
    test::WidgetOf(dialog.list)->setFocus();
    test::Key(dialog, Qt::Key_Delete);
    EXPECT_THAT(IdeDriver::Rows(dialog.list), ElementsAre("a.cpp|4||"));
    EXPECT_EQ(dialog.list.selectedIndex, 0);
    test::Click(dialog.remove);
    EXPECT_THAT(theDebugger.breakpoints.entries, IsEmpty());
    EXPECT_FALSE(dialog.remove.enabled);
    EXPECT_FALSE(dialog.locate.enabled);
    EXPECT_FALSE(dialog.condition.enabled);
    EXPECT_FALSE(dialog.removeAll.enabled);
  });
}

TEST_F(BreakList, RemoveAll_EmptiesTheList) {
  WithDialog([&](BreakEditor& dialog) {
    test::Click(dialog.removeAll);
    EXPECT_THAT(IdeDriver::Rows(dialog.list), IsEmpty());
    EXPECT_THAT(theDebugger.breakpoints.entries, IsEmpty());
  });
}

TEST_F(BreakList, Condition_IsAskedForAndShown) {
  WithDialog([&](BreakEditor& dialog) {
    ide.OnDialog([&](mavro::Form&) {});
    auto* poll = new QTimer;
    QObject::connect(poll, &QTimer::timeout, [&, poll] {
      mavro::Form* form = mavro::activeForm;
      if (!form || form == &dialog || form == theMainForm) return;
      poll->stop();
      poll->deleteLater();
      EXPECT_EQ(form->text.Get(), "Condtion:");
      QTest::keyClicks(QApplication::focusWidget(), "a == 2");
      test::Shot(*form, "ide-condition");
      test::Key(*form, Qt::Key_Return);
    });
    poll->start(2);
    test::Click(dialog.condition);
    EXPECT_EQ(theDebugger.breakpoints.entries[0].condition, "a == 2");
    EXPECT_EQ(dialog.list.GetCell(0, 2), "a == 2");
  });
}

TEST_F(BreakList, Condition_IsEditedInPlace) {
  WithDialog([&](BreakEditor& dialog) {
    auto* view = qobject_cast<QTreeView*>(test::WidgetOf(dialog.list));
    dialog.list.EditCell(1, 2);
    auto* cell = view->viewport()->findChild<QLineEdit*>();
    ASSERT_NE(cell, nullptr);
    QTest::keyClicks(cell, "n > 5");
    QTest::keyClick(cell->window()->windowHandle(), Qt::Key_Return);
    EXPECT_EQ(theDebugger.breakpoints.entries[1].condition, "n > 5");
    EXPECT_EQ(dialog.list.GetCell(1, 2), "n > 5");
    EXPECT_TRUE(dialog.impl->hwnd) << "Enter has ended the edit only";
    for (const int column : {0, 1, 3})
      EXPECT_FALSE(view->model()->flags(view->model()->index(0, column)) & Qt::ItemIsEditable);
  });
}

// Group: marks in the margin.

class BreakMarks : public test::EditorFixture {
 protected:
  static constexpr int cDisc = 1 << 9, cRing = 1 << 13;
  static int Signs(int line) {
    return static_cast<int>(Front().Send(mavro::SCI_MARKERGET, line)) & (cDisc | cRing);
  }
  static std::vector<int> Lines() {
    std::vector<int> lines;
    theDebugger.ReconcileAll();
    for (const Breakpoint& entry : theDebugger.breakpoints.entries) lines.push_back(entry.line);
    return lines;
  }
  // Clicks in the margin of marks.
  static void ClickMargin(int line) {
    CppEditor& editor = Front();
    const auto y = editor.Send(mavro::SCI_POINTYFROMPOSITION, 0, editor.LineStart(line));
    const auto numbers = editor.Send(mavro::SCI_GETMARGINWIDTHN, 0);
    test::Click(editor, QPoint(static_cast<int>(numbers) + 8, static_cast<int>(y) + 5));
  }
};

TEST_F(BreakMarks, F9AndAClickInTheMargin_SetAndRemove) {
  ide.Run({ide.Project(cFiles), ide.files.Path("a.cpp")}, [&] {
    Front().ShowLine(2);
    IdeDriver::Press(Qt::Key_F9);
    EXPECT_THAT(Lines(), ElementsAre(1));
    EXPECT_EQ(Signs(1), cDisc);
    EXPECT_EQ(theProject.mode, cDebug) << "a breakpoint is for debugging";
    ClickMargin(3);
    EXPECT_THAT(Lines(), ElementsAre(1, 3));
    ClickMargin(1);
    EXPECT_THAT(Lines(), ElementsAre(3));
    EXPECT_EQ(Signs(1), 0);
    IdeDriver::Press(Qt::Key_F2, Qt::ControlModifier);
    EXPECT_THAT(Lines(), ElementsAre(3)) << "a bookmark is something else";
    Front().ShowLine(4);
    IdeDriver::Press(Qt::Key_F9);
    EXPECT_THAT(Lines(), IsEmpty());
  });
}

TEST_F(BreakMarks, TextsWithoutBreakpoints_SaySo) {
  ide.Run({}, [&] {
    Open("a.txt", "text\n");
    ClickMargin(0);
    EXPECT_THAT(Lines(), IsEmpty());
    EXPECT_EQ(IdeDriver::Status(), "No breakpoint: they are for C and C++ only");
    Tabs().NewTab("");
    ClickMargin(0);
    EXPECT_EQ(IdeDriver::Status(), "A breakpoint needs a file: save this text first");
    EXPECT_EQ(Signs(0), 0);
  });
}

TEST_F(BreakMarks, FollowEdits_AndGoWithTheirLine) {
  ide.Run({ide.Project(cFiles), ide.files.Path("a.cpp")}, [&] {
    ClickMargin(1);
    ClickMargin(2);
    Front().Select(0, 0);
    Front().ReplaceSelection("// one\n// two\n");
    EXPECT_THAT(Lines(), ElementsAre(3, 4));
    Front().Select(Front().LineStart(3), Front().LineStart(4));
    Front().ReplaceSelection("");
    EXPECT_THAT(Lines(), ElementsAre(3));
  });
}

TEST_F(BreakMarks, AFileThatIsClosed_HasThemWhenItIsOpenedAgain) {
  ide.Run({ide.Project(cFiles), ide.files.Path("a.cpp")}, [&] {
    ClickMargin(1);
    Front().Select(0, 0);
    Front().ReplaceSelection("// one\n");
    ASSERT_TRUE(Tabs().SaveActive(EditTabs::SaveName::cOwn));
    Tabs().CloseTab(0, EditTabs::Unsaved::cAsk);
    EXPECT_THAT(Lines(), ElementsAre(2));
    Tabs().OpenFile(ide.files.Path("a.cpp"));
    EXPECT_EQ(Signs(2), cDisc);
    EXPECT_THAT(Lines(), ElementsAre(2));
  });
}

TEST_F(BreakMarks, InAFileThatIsNotOpen_ShowWhenItIsOpened) {
  ide.Run({ide.Project(cFiles)}, [&] {
    theDebugger.Toggle(ide.files.Path("src/b.cpp"), 1);
    Tabs().OpenFile(ide.files.Path("src/b.cpp"));
    EXPECT_EQ(Signs(1), cDisc);
  });
}

TEST_F(BreakMarks, SavedUnderAnotherName_TheNewFileHasNone) {
  ide.Run({ide.Project(cFiles), ide.files.Path("a.cpp")}, [&] {
    ClickMargin(1);
    ide.dialogs.files = {{ide.files.Path("new.cpp")}};
    ASSERT_TRUE(Tabs().SaveActive(EditTabs::SaveName::cAsked));
    EXPECT_EQ(Signs(1), 0);
    EXPECT_THAT(Lines(), ElementsAre(1));
    EXPECT_EQ(theDebugger.breakpoints.entries[0].file, ide.files.Path("a.cpp"));
  });
}

TEST_F(BreakMarks, OneThatGdbCanNotSet_HasAnotherLook) {
  ide.Run({ide.Project(cFiles), ide.files.Path("a.cpp")}, [&] {
    ClickMargin(1);
    ClickMargin(2);
    ClickMargin(3);
    auto& entries = theDebugger.breakpoints.entries;
    entries[0].isPending = true;
    entries[1].refusal = "No line 3 in file \"a.cpp\".";
    theMainForm->debugWindow.BreakpointsChanged();
    EXPECT_EQ(Signs(1), cRing);
    EXPECT_EQ(Signs(2), cRing);
    EXPECT_EQ(Signs(3), cDisc);
    entries[0].isPending = false;
    theMainForm->debugWindow.BreakpointsChanged();
    EXPECT_EQ(Signs(1), cDisc);
  });
}

TEST_F(BreakMarks, AnotherProject_HasNone) {
  const std::string other = ide.Project({{"other.cpp", "int o;\n"}}, "other.zpj");
  ide.Run({ide.Project(cFiles), ide.files.Path("a.cpp")}, [&] {
    ClickMargin(1);
    theDebugger.AddExpression(0, "a");
    theFileActs.OpenFiles({other});
    EXPECT_THAT(Lines(), IsEmpty());
    EXPECT_THAT(IdeDriver::Rows(theMainForm->watches[0].list), ElementsAre("|"));
  });
}

TEST_F(BreakMarks, RightClickInTheMargin_MeansItsLine) {
  ide.Run({ide.Project(cFiles), ide.files.Path("a.cpp")}, [&] {
    CppEditor& editor = Front();
    const auto press = [&editor](int x, int line) {
      mavro::MouseArgs args;
      args.x = x;
      args.y =
          static_cast<int>(editor.Send(mavro::SCI_POINTYFROMPOSITION, 0, editor.LineStart(line))) +
          5;
      editor.onMouseDown.Fire(args);
      editor.onContextMenu.Fire(args);  // as the press does; no menu is opened
    };
    press(editor.MarginWidth() - 1, 2);
    EXPECT_EQ(editor.ShownLine(), 3);
    EXPECT_EQ(editor.menu, &Tabs().Host()->MarginMenu());
    press(editor.MarginWidth(), 1);
    EXPECT_EQ(editor.ShownLine(), 3) << "in the text the caret stays";
  });
}

// Group: what the session shows.

TEST_F(BreakMarks, ShowExecution_OpensTheFileAndMarksTheLine) {
  ide.Run({ide.Project(cFiles), ide.files.Path("a.cpp")}, [&] {
    DebugWindow& window = theMainForm->debugWindow;
    constexpr int cExecution = 1 << 2;
    const auto marks = [](int line) {
      return static_cast<int>(Front().Send(mavro::SCI_MARKERGET, line));
    };
    EXPECT_TRUE(window.ShowExecution(ide.files.Path("a.cpp"), 2));
    EXPECT_TRUE(marks(2) & cExecution);
    EXPECT_EQ(Front().ShownLine(), 3);
    EXPECT_TRUE(window.ShowExecution(ide.files.Path("a.cpp"), 1));
    EXPECT_FALSE(marks(2) & cExecution);
    EXPECT_TRUE(window.ShowExecution(ide.files.Path("src/b.cpp"), 0));
    EXPECT_EQ(theMainForm->ActiveFile(), ide.files.Path("src/b.cpp"));
    EXPECT_FALSE(window.ShowExecution("/no/such.cpp", 0));
    EXPECT_THAT(theIdeSession.recentFiles.items, ElementsAre(ide.files.Path("a.cpp")));
    EXPECT_EQ(theMainForm->ActiveFile(), ide.files.Path("src/b.cpp"));
    EXPECT_THAT(ide.dialogs.texts, IsEmpty());
    window.RemoveExecution("");
    EXPECT_FALSE(marks(0) & cExecution);
    window.RemoveExecution(ide.files.Path("a.cpp"));
    Tabs().Show(0);
    EXPECT_FALSE(marks(1) & cExecution);
    window.RemoveExecution("/no/such.cpp");
  });
}

TEST_F(BreakMarks, TheStack_IsListedAndWalked) {
  ide.Run({ide.Project(cFiles)}, [&] {
    DebugWindow& window = theMainForm->debugWindow;
    window.ClearStack();
    window.AddStackRow({"#0  0x00007ffff7c in raise ()", {"", 0, 0}});
    window.AddStackRow({"#1  inner (n=1)", {"src/b.cpp", 2, 1}});
    window.AddStackRow({"#2  main ()", {ide.files.Path("a.cpp"), 3, 2}});
    window.ShowStackPage();
    const mavro::ListView& list = theMainForm->resultList.list;
    EXPECT_THAT(IdeDriver::Rows(list),
                ElementsAre("||#0  0x00007ffff7c in raise ()", "src/b.cpp|2|#1  inner (n=1)",
                            "a.cpp|3|#2  main ()"));
    EXPECT_EQ(theMainForm->bottomTabs.selectedIndex, cResultPage);
    theMainForm->resultList.ShowRow(1);
    EXPECT_EQ(theMainForm->ActiveFile(), ide.files.Path("src/b.cpp"));
    EXPECT_EQ(Front().ShownLine(), 2);
    theMainForm->resultList.ShowRow(2);
    EXPECT_EQ(theMainForm->ActiveFile(), ide.files.Path("a.cpp"));
    theMainForm->resultList.ShowRow(0);
    EXPECT_EQ(theMainForm->ActiveFile(), ide.files.Path("a.cpp"));
    window.ClearStack();
    EXPECT_THAT(IdeDriver::Rows(list), IsEmpty());
  });
}

}  // namespace
}  // namespace zendry
