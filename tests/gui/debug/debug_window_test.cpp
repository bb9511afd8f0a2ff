#include "frame/DebugWindow.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QTreeView>

#include "DarkPalette.h"
#include "EditorFixture.h"
#include "ScopedVariable.h"
#include "debug/DebugDlg.h"
#include "editor/EditorActs.h"
#include "frame/PictureStrips.h"

// The window during sessions, with the machine's compiler and gdb.

namespace zendry {
namespace {

using test::IdeDriver;
using testing::AllOf;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

std::vector<int> EnabledIds(const mavro::Menu& menu) {
  std::vector<int> ids;
  for (const auto& item : menu.items)
    if (item->action && item->enabled) ids.push_back(item->action->id);
  return ids;
}

class DebugWindows : public test::EditorFixture {
 protected:
  static constexpr int cExecution = 1 << 2, cDisc = 1 << 9;

  // A compiler and gdb may take long on a busy machine. gdb is heard in the idle pass.
  static bool WaitLong(const std::function<bool()>& condition) {
    const auto pass = [&condition] {
      mavro::theApplication.ProcessMessages();
      return condition();
    };
    return QTest::qWaitFor(pass, 60000);
  }
  static bool WaitFor(DebugState state) {
    return WaitLong([state] { return theDebugger.State() == state; });
  }
  // The line with the execution mark in the file in front, from 1; 0 for none.
  static int MarkedLine() {
    if (!Tabs().Active()) return 0;
    return static_cast<int>(Front().Send(mavro::SCI_MARKERNEXT, 0, cExecution)) + 1;
  }
  static bool StopsAt(int line) {
    return WaitLong(
        [line] { return theDebugger.State() == DebugState::cPaused && MarkedLine() == line; });
  }
  static std::vector<int> BarIds() {
    std::vector<int> ids;
    for (int row = cFirstRunRow; row < cFirstRunRow + 3; ++row)
      ids.push_back(theMainForm->toolBar.GetRow(row).action->id);
    return ids;
  }
  static bool HasStopButton() { return theMainForm->toolBar.GetRow(cStopRow).enabled; }
  static std::string Output() { return theMainForm->output.text; }

  // Runs the window on a program of one source, in debug mode.
  void Debug(const std::string& source, const std::function<void()>& script) {
    ide.Run({ide.Project({{"a.cpp", source}}), ide.files.Path("a.cpp")}, [&] {
      theProject.SetMode(cDebug);
      script();
      theDebugger.Stop();
      EXPECT_TRUE(WaitFor(DebugState::cNotRunning));
    });
  }
  void BreakAt(int line) {
    Front().ShowLine(line);
    IdeDriver::Press(Qt::Key_F9);
  }

  const test::ScopedVariable noDisplay{"DISPLAY", ""};
};

const std::string cCounts =
    "#include <cstdio>\n"
    "int Twice(int n) {\n"
    "  return n + n;\n"
    "}\n"
    "int main() {\n"
    "  int sum = 1;\n"
    "  sum = Twice(sum);\n"
    "  sum = Twice(sum);\n"
    "  std::printf(\"%d\\n\", sum);\n"
    "  return sum;\n"
    "}\n";

TEST_F(DebugWindows, NoSession_OnlyWhatCanActIsOffered) {
  const std::string source = ide.files.Write("alone.cpp", "int main() {}\n");
  ide.Run({}, [&] {
    mavro::Menu& menu = theMainForm->debugMenu;
    EXPECT_THAT(EnabledIds(menu), ElementsAre(cViewBreakpointsCommand));
    Tabs().OpenFile(ide.files.Write("a.txt", ""));
    EXPECT_THAT(EnabledIds(menu), ElementsAre(cAddWatchCommand, cViewBreakpointsCommand));
    Tabs().OpenFile(source);
    const std::vector<int> ofSource = {
        cBreakpointCommand, cAddWatchCommand, cStepIntoCommand,
        cStepOutCommand,    cStepOverCommand, cRunToCursorCommand,
        cRunCommand,        cRunPlainCommand, cViewBreakpointsCommand};
    EXPECT_EQ(EnabledIds(menu), ofSource);
    theDebugger.Toggle(source, 0);
    EXPECT_THAT(EnabledIds(menu), Contains(cClearBreakpointsCommand));
    theDebugger.AddExpression(0, "x");
    EXPECT_THAT(EnabledIds(menu), Contains(cClearWatchesCommand));
    IdeDriver::Press(Qt::Key_F9, Qt::ControlModifier | Qt::ShiftModifier);
    theMainForm->ShowPage(cFirstWatchPage);
    theDebugger.OnCommand(cClearWatchesCommand);
    EXPECT_EQ(EnabledIds(menu), ofSource);
  });
}

TEST_F(DebugWindows, FromABreakpointToTheEnd) {
  Debug(cCounts, [&] {
    BreakAt(7);
    const std::vector<int> buildIds = BarIds();
    theDebugger.AddExpression(0, "sum");
    theMainForm->ShowPage(cFirstWatchPage);
    IdeDriver::Press(Qt::Key_F5);
    ASSERT_TRUE(StopsAt(7));
    EXPECT_THAT(BarIds(), ElementsAre(cStepOverCommand, cStepIntoCommand, cStepOutCommand));
    EXPECT_TRUE(HasStopButton());
    EXPECT_TRUE(theMainForm->toolBar.GetRow(cFirstRunRow).enabled);
    EXPECT_EQ(Front().ShownLine(), 7);
    const mavro::ListView& list = theMainForm->watches[0].list;
    EXPECT_TRUE(WaitLong([&] { return list.GetCell(0, 1) == "1"; }));
    IdeDriver::Press(Qt::Key_F10);
    ASSERT_TRUE(StopsAt(8));
    EXPECT_TRUE(WaitLong([&] { return list.GetCell(0, 1) == "2"; }));
    EXPECT_TRUE(list.IsCellMarked(0, 1));
    IdeDriver::Press(Qt::Key_F8);
    ASSERT_TRUE(StopsAt(3));
    IdeDriver::Press(Qt::Key_F8, Qt::ShiftModifier);
    ASSERT_TRUE(StopsAt(8));
    Front().ShowLine(9);
    IdeDriver::Press(Qt::Key_F10, Qt::ControlModifier);
    ASSERT_TRUE(StopsAt(9));
    EXPECT_TRUE(WaitLong([&] { return list.GetCell(0, 1) == "4"; }));
    test::Shot(*theMainForm, "ide-debugging");
    IdeDriver::Press(Qt::Key_F5);
    ASSERT_TRUE(WaitFor(DebugState::cNotRunning));
    EXPECT_EQ(MarkedLine(), 0);
    EXPECT_EQ(BarIds(), buildIds);
    EXPECT_FALSE(HasStopButton());
    EXPECT_THAT(Output(), HasSubstr("4"));
    EXPECT_THAT(IdeDriver::Status(), HasSubstr("4")) << "its exit code";
    EXPECT_THAT(ide.dialogs.texts, IsEmpty());
  });
}

TEST_F(DebugWindows, ABreakpoint_FollowsEditsOverARebuild) {
  Debug(cCounts, [&] {
    BreakAt(7);
    IdeDriver::Press(Qt::Key_F5);
    ASSERT_TRUE(StopsAt(7));
    Front().Select(0, 0);
    Front().ReplaceSelection("// one\n// two\n");
    EXPECT_EQ(MarkedLine(), 9);
    IdeDriver::Press(Qt::Key_F5, Qt::ShiftModifier);
    ASSERT_TRUE(WaitFor(DebugState::cNotRunning));
    IdeDriver::Press(Qt::Key_F5);
    ASSERT_TRUE(StopsAt(9));
    EXPECT_THAT(ide.files.Read("a.cpp"), StartsWith("// one")) << "the build has saved it";
  });
}

TEST_F(DebugWindows, InTheDark_IsSeenToo) {
  const QPalette light = QApplication::palette();
  QApplication::setPalette(test::DarkPalette());
  Debug(cCounts, [&] {
    BreakAt(6);
    BreakAt(7);
    theDebugger.AddExpression(0, "sum");
    theMainForm->ShowPage(cFirstWatchPage);
    IdeDriver::Press(Qt::Key_F5);
    ASSERT_TRUE(StopsAt(6));
    IdeDriver::Press(Qt::Key_F5);
    ASSERT_TRUE(StopsAt(7));
    const mavro::ListView& list = theMainForm->watches[0].list;
    EXPECT_TRUE(WaitLong([&] { return list.GetCell(0, 1) == "1"; }));
    test::Shot(*theMainForm, "ide-debugging-dark");
  });
  QApplication::setPalette(light);
}

TEST_F(DebugWindows, AStepThatIsQuick_GraysNothing) {
  Debug(cCounts, [&] {
    BreakAt(7);
    IdeDriver::Press(Qt::Key_F5);
    ASSERT_TRUE(StopsAt(7));
    IdeDriver::Press(Qt::Key_F10);
    EXPECT_TRUE(theMainForm->toolBar.GetRow(cFirstRunRow).enabled);
    ASSERT_TRUE(StopsAt(8));
    EXPECT_TRUE(theMainForm->toolBar.GetRow(cFirstRunRow).enabled);
  });
}

TEST_F(DebugWindows, ARunningProgram_CanBePausedAndStopped) {
  Debug("int main() {\n  volatile long n = 0;\n  for (;;)\n    ++n;\n}\n", [&] {
    BreakAt(2);
    IdeDriver::Press(Qt::Key_F5);
    ASSERT_TRUE(StopsAt(2));
    IdeDriver::Press(Qt::Key_F5);
    ASSERT_TRUE(WaitFor(DebugState::cRunning));
    const auto* step = &theMainForm->toolBar.GetRow(cFirstRunRow);
    ASSERT_TRUE(WaitLong([&] { return HasStopButton() && !step->enabled; }));
    EXPECT_THAT(EnabledIds(theMainForm->debugMenu),
                AllOf(Contains(cPauseCommand), Contains(cStopDebugCommand)));
    IdeDriver::Press(Qt::Key_F5, Qt::ControlModifier | Qt::ShiftModifier);
    ASSERT_TRUE(WaitFor(DebugState::cPaused));
    EXPECT_GT(MarkedLine(), 0);
    test::ClickToolRow(theMainForm->toolBar, cStopRow);
    ASSERT_TRUE(WaitFor(DebugState::cNotRunning));
    EXPECT_EQ(MarkedLine(), 0);
  });
}

TEST_F(DebugWindows, TheCallStack_IsWalked) {
  Debug(cCounts, [&] {
    BreakAt(3);
    IdeDriver::Press(Qt::Key_F5);
    ASSERT_TRUE(StopsAt(3));
    test::Click(theMainForm->closeBottom);
    ASSERT_FALSE(theMainForm->bottomPanel.visible);
    IdeDriver::Press(Qt::Key_C, Qt::ControlModifier | Qt::AltModifier);
    const mavro::ListView& list = theMainForm->resultList.list;
    ASSERT_TRUE(WaitLong([&] { return list.rowCount == 2; }));
    EXPECT_TRUE(theMainForm->bottomPanel.visible);
    EXPECT_EQ(theMainForm->bottomTabs.selectedIndex, cResultPage);
    EXPECT_THAT(IdeDriver::Rows(list),
                ElementsAre(StartsWith("a.cpp|3|#0  Twice (n=1)"), StartsWith("a.cpp|7|#1")));
    theDebugger.AddExpression(0, "sum");
    theMainForm->ShowPage(cFirstWatchPage);
    theMainForm->ShowPage(cResultPage);
    auto* view = qobject_cast<QTreeView*>(test::WidgetOf(list));
    ASSERT_TRUE(WaitLong([&] { return view->model()->rowCount() == 2; }));
    QTest::mouseClick(view->viewport(), Qt::LeftButton, Qt::NoModifier,
                      view->visualRect(view->model()->index(1, 0)).center());
    EXPECT_TRUE(WaitLong([&] { return Front().ShownLine() == 7; }));
    EXPECT_TRUE(StopsAt(7)) << "the mark shows the frame that is looked at";
  });
}

TEST_F(DebugWindows, TheCallStack_FollowsTheSteps) {
  Debug(cCounts, [&] {
    BreakAt(7);
    IdeDriver::Press(Qt::Key_F5);
    ASSERT_TRUE(StopsAt(7));
    const mavro::ListView& list = theMainForm->resultList.list;
    IdeDriver::Press(Qt::Key_C, Qt::ControlModifier | Qt::AltModifier);
    ASSERT_TRUE(WaitLong([&] { return list.rowCount == 1; }));
    IdeDriver::Press(Qt::Key_F8);
    ASSERT_TRUE(StopsAt(3));
    EXPECT_TRUE(WaitLong([&] { return list.rowCount == 2; })) << "its page is in front";
    theMainForm->ShowPage(cFirstWatchPage);
    IdeDriver::Press(Qt::Key_F8, Qt::ShiftModifier);
    ASSERT_TRUE(StopsAt(7));
    EXPECT_EQ(list.rowCount, 2) << "nobody sees it";
    theMainForm->ShowPage(cResultPage);
    EXPECT_TRUE(WaitLong([&] { return list.rowCount == 1; }));
    theMainForm->resultList.Clear();
    theMainForm->resultList.AddRow("a.cpp", 1, "found");
    theMainForm->resultList.AddRow("a.cpp", 2, "found");
    IdeDriver::Press(Qt::Key_F10);
    ASSERT_TRUE(StopsAt(8));
    EXPECT_EQ(list.rowCount, 2) << "the page has the rows of a search now";
  });
}

TEST_F(DebugWindows, AProgramThatPrintsWithoutEnd_LeavesTheWindowToTheUser) {
  Debug(
      "#include <cstdio>\nint main() {\n"
      "  for (int i = 0;; ++i) std::printf(\"line %d\\n\", i);\n}\n",
      [&] {
        IdeDriver::Press(Qt::Key_F5);
        ASSERT_TRUE(WaitLong([] { return Output().find("line 20000") != std::string::npos; }));
        Front().Focus();
        Type("//x");
        EXPECT_THAT(Front().GetText(), StartsWith("//x")) << "keys are answered";
        EXPECT_EQ(theDebugger.State(), DebugState::cRunning);
        test::ClickToolRow(theMainForm->toolBar, cStopRow);
        ASSERT_TRUE(WaitFor(DebugState::cNotRunning));
      });
}

TEST_F(DebugWindows, AValueUnderTheMouse_IsShown) {
  Debug(cCounts, [&] {
    BreakAt(8);
    IdeDriver::Press(Qt::Key_F5);
    ASSERT_TRUE(StopsAt(8));
    auto* sci = test::WidgetOf(Front());
    const auto at = static_cast<int>(Front().GetText().find("sum = Twice"));
    QMetaObject::invokeMethod(sci, "SCN_DWELLSTART", Q_ARG(int, at), Q_ARG(int, 1), Q_ARG(int, 1));
    EXPECT_TRUE(WaitLong([] { return Front().Send(mavro::SCI_CALLTIPACTIVE) != 0; }));
    QMetaObject::invokeMethod(sci, "SCN_DWELLEND", Q_ARG(int, at), Q_ARG(int, 1), Q_ARG(int, 1));
    EXPECT_FALSE(Front().Send(mavro::SCI_CALLTIPACTIVE));
    theMainForm->debugWindow.ShowValueTip("late = 1");
    EXPECT_FALSE(Front().Send(mavro::SCI_CALLTIPACTIVE)) << "the mouse has gone";
  });
}

TEST_F(DebugWindows, TheConsole_PassesCommands) {
  Debug(cCounts, [&] {
    BreakAt(8);
    IdeDriver::Press(Qt::Key_F5);
    ASSERT_TRUE(StopsAt(8));
    ide.OnDialog([&](mavro::Form& form) {
      auto& dialog = dynamic_cast<DebugDlg&>(form);
      QTest::keyClicks(QApplication::focusWidget(), "print sum * 100");
      test::Key(dialog, Qt::Key_Return);
      EXPECT_TRUE(WaitLong([&] {
        return dialog.output.text.Get().find("$1 = 200") != std::string::npos;
      })) << dialog.output.text.Get();
      test::Shot(dialog, "ide-console-used");
      test::Key(dialog, Qt::Key_Escape);
    });
    theDebugger.OnCommand(cCommanderCommand);
    theMainForm->debugWindow.AppendToConsole("the dialog has gone");
  });
}

TEST_F(DebugWindows, AProgramWithoutATerminal_ReadsFromTheLineBelowItsOutput) {
  Debug(
      "#include <iostream>\n#include <string>\nint main() {\n  std::string name;\n"
      "  std::cout << \"name? \" << std::flush;\n  std::getline(std::cin, name);\n"
      "  std::cout << \"hello \" << name << std::endl;\n}\n",
      [&] {
        EXPECT_FALSE(theMainForm->debugWindow.inputBar.visible);
        IdeDriver::Press(Qt::Key_F5);
        ASSERT_TRUE(WaitLong([] { return Output().find("name? ") != std::string::npos; }));
        DebugWindow& window = theMainForm->debugWindow;
        ASSERT_TRUE(WaitLong([&] { return window.inputBar.visible.Get(); }));
        theMainForm->ShowPage(cOutputPage);
        window.input.Focus();
        QTest::keyClicks(QApplication::focusWidget(), "ann");
        test::Shot(*theMainForm, "ide-program-input");
        IdeDriver::Press(Qt::Key_Return);
        EXPECT_TRUE(WaitLong([] { return Output().find("hello ann") != std::string::npos; }));
        EXPECT_TRUE(WaitFor(DebugState::cNotRunning));
        EXPECT_FALSE(window.inputBar.visible);
        EXPECT_TRUE(Front().IsFocused()) << "typing goes on there";
        EXPECT_EQ(window.input.text.Get(), "");
      });
}

TEST_F(DebugWindows, RightClick_OpensTheDebuggersMenuWhileItRuns) {
  Debug(cCounts, [&] {
    BreakAt(7);
    EXPECT_NE(&Tabs().Host()->TextMenu(), &Tabs().Host()->MarginMenu());
    IdeDriver::Press(Qt::Key_F5);
    ASSERT_TRUE(StopsAt(7));
    mavro::ContextMenu& menu = Tabs().Host()->TextMenu();
    EXPECT_EQ(&menu, &Tabs().Host()->MarginMenu());
    EXPECT_THAT(
        EnabledIds(menu.root),
        ElementsAre(cBreakpointCommand, cAddWatchCommand, cStepIntoCommand, cStepOverCommand,
                    cStepOutCommand, cRunToCursorCommand, cRunCommand, cStopDebugCommand,
                    cViewStackCommand, cViewBreakpointsCommand, cToggleBookmarkCommand));
  });
}

TEST_F(DebugWindows, ClosingTheProject_EndsTheSessionWithoutAQuestion) {
  Debug(cCounts, [&] {
    BreakAt(7);
    IdeDriver::Press(Qt::Key_F5);
    ASSERT_TRUE(StopsAt(7));
    theFileActs.OnCommand(cCloseProjectCommand);
    EXPECT_TRUE(WaitFor(DebugState::cNotRunning));
    EXPECT_FALSE(HasStopButton());
    EXPECT_THAT(theDebugger.breakpoints.entries, IsEmpty());
    EXPECT_THAT(ide.dialogs.texts, IsEmpty());
    EXPECT_EQ(Tabs().TabCount(), 0);
  });
}

TEST_F(DebugWindows, ClosingTheWindow_EndsTheSession) {
  ide.Run({ide.Project({{"a.cpp", cCounts}}), ide.files.Path("a.cpp")}, [&] {
    theProject.SetMode(cDebug);
    BreakAt(7);
    IdeDriver::Press(Qt::Key_F5);
    ASSERT_TRUE(StopsAt(7));
    theMainForm->Close();
    EXPECT_FALSE(theDebugger.IsRunning());
  });
  EXPECT_THAT(ide.dialogs.texts, IsEmpty());
}

TEST_F(DebugWindows, Parameters_AreWrittenWithTheProject) {
  const std::string project = ide.Project({{"a.cpp", cCounts}});
  ide.Run({project}, [&] {
    ide.OnDialog([&](mavro::Form& dialog) {
      EXPECT_EQ(dialog.text.Get(), "Program parameters");
      QTest::keyClicks(QApplication::focusWidget(), "-a b");
      test::Key(dialog, Qt::Key_Return);
    });
    theDebugger.OnCommand(cParametersCommand);
    EXPECT_EQ(theProject.programParams, "-a b");
    EXPECT_FALSE(theProject.modified);
    theFileActs.OnCommand(cSaveProjectCommand);
    EXPECT_THAT(ide.files.Read("p.zpj"), HasSubstr("<pars p=\"-a b\"/>"));
  });
  theProject.programParams.clear();
  ide.Run({project}, [&] {
    EXPECT_EQ(theDebugger.Params(), "-a b");
    EXPECT_EQ(theProject.programParams, "-a b");
  });
}

}  // namespace
}  // namespace zendry
