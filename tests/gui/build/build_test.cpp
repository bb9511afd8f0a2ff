#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QAbstractScrollArea>
#include <QScrollBar>

#include "IdeDriver.h"

// Building from the window, with the tools of the machine.

namespace zendry {
namespace {

using test::IdeDriver;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::SizeIs;
using testing::StartsWith;

const std::vector<IdeDriver::File> cGoodFiles = {
    {"main.cpp", "int f();\nint main() { return f(); }\n"},
    {"src/f.cpp", "int f() { return 0; }\n"}};

// Two files with an error each, and a warning.
const std::vector<IdeDriver::File> cBadFiles = {{"a.cpp", "int a;\nint b = x;\n\n\nint c = y;\n"}};

class IdeBuild : public testing::Test {
 protected:
  static std::string Output() { return theMainForm->output.text; }
  static std::vector<std::string> Errors() { return IdeDriver::Rows(theMainForm->errorList.list); }
  static int CaretLine() { return theMainForm->editTabs.Active()->editor->ShownLine(); }
  // Calls `script` from the message queue while the next build handles what waits between files.
  static void WhileBuilding(const std::function<void()>& script) {
    auto* poll = new QTimer;
    QObject::connect(poll, &QTimer::timeout, [poll, script] {
      if (!theMainForm->toolBar.GetRow(cStopRow).enabled) return;
      poll->stop();
      poll->deleteLater();
      script();
    });
    poll->start(1);  // never due at once: handling what waits must come to an end
  }
  static int CountOf(const std::string& text, const std::string& part) {
    int count = 0;
    for (size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1))
      ++count;
    return count;
  }

  IdeDriver ide;
};

TEST_F(IdeBuild, KeyOfMake_BuildsTheProject) {
  ide.Run({ide.Project(cGoodFiles)}, [&] {
    IdeDriver::Press(Qt::Key_F7);
    EXPECT_TRUE(ide.files.Exists("out-rel/p.exe"));
    EXPECT_THAT(Output(), HasSubstr("------ Compiling --> " + ide.files.Path("main.cpp")));
    EXPECT_THAT(Output(), HasSubstr("Build succeeded  errors: 0  warnings: 0"));
    EXPECT_THAT(Errors(), IsEmpty());
    EXPECT_THAT(ide.dialogs.texts, IsEmpty());
    EXPECT_FALSE(theMainForm->toolBar.GetRow(cStopRow).enabled);
  });
}

TEST_F(IdeBuild, Errors_AreListedAndTheFirstIsShown) {
  ide.Run({ide.Project(cBadFiles)}, [&] {
    IdeDriver::Press(Qt::Key_F7);
    ASSERT_THAT(Errors(), SizeIs(2));
    EXPECT_THAT(Errors()[0], StartsWith("a.cpp|2|error: "));
    EXPECT_THAT(Errors()[1], StartsWith("a.cpp|5|error: "));
    EXPECT_THAT(ide.dialogs.texts,
                ElementsAre("Information: There ware errors!  errors: 2  warnings: 0"));
    EXPECT_EQ(theMainForm->bottomTabs.selectedIndex, cErrorPage);
    EXPECT_EQ(theMainForm->errorList.list.selectedIndex, 0);
    EXPECT_THAT(IdeDriver::Captions(), ElementsAre("a.cpp"));
    EXPECT_EQ(CaretLine(), 2);
  });
}

TEST_F(IdeBuild, Errors_AreWalkedByKeys_AndTheEndsBeep) {
  ide.Run({ide.Project(cBadFiles)}, [&] {
    IdeDriver::Press(Qt::Key_F7);
    IdeDriver::Press(Qt::Key_F4);
    EXPECT_EQ(CaretLine(), 5);
    EXPECT_EQ(ide.dialogs.beeps, 0);
    IdeDriver::Press(Qt::Key_F4);
    EXPECT_EQ(CaretLine(), 5);
    EXPECT_EQ(ide.dialogs.beeps, 1);
    IdeDriver::Press(Qt::Key_F4, Qt::ShiftModifier);
    EXPECT_EQ(CaretLine(), 2);
    IdeDriver::Press(Qt::Key_F4, Qt::ShiftModifier);
    EXPECT_EQ(ide.dialogs.beeps, 2);
    EXPECT_EQ(theMainForm->errorList.list.selectedIndex, 0);
  });
}

TEST_F(IdeBuild, Errors_ClickOnARow_ShowsItsPlace) {
  ide.Run({ide.Project(cBadFiles)}, [&] {
    IdeDriver::Press(Qt::Key_F7);
    mavro::NotifyArgs args{&theMainForm->errorList.list, 1};
    theMainForm->errorList.list.onClickRow.Fire(args);
    EXPECT_EQ(CaretLine(), 5);
    EXPECT_EQ(theMainForm->errorList.list.selectedIndex, 1);
  });
}

TEST_F(IdeBuild, Errors_RowsThatNameNoFile_StopQuietly) {
  ide.Run({ide.Project({{"a.cpp", "int f() { return 0; }\n"}})}, [&] {
    IdeDriver::Press(Qt::Key_F7);
    ASSERT_THAT(Errors(), Not(IsEmpty()));
    EXPECT_EQ(theMainForm->editTabs.TabCount(), 0);
    theMainForm->errorList.ShowCurrent();
    EXPECT_EQ(theMainForm->editTabs.TabCount(), 0);
  });
}

TEST_F(IdeBuild, CompileFile_CompilesTheFileInFront) {
  ide.Run({ide.Project(cGoodFiles)}, [&] {
    theMainForm->editTabs.OpenFile(ide.files.Path("src/f.cpp"));
    IdeDriver::Press(Qt::Key_F7, Qt::ControlModifier);
    EXPECT_TRUE(ide.files.Exists("out-rel/f.o"));
    EXPECT_FALSE(ide.files.Exists("out-rel/main.o"));
  });
}

TEST_F(IdeBuild, ClearOutput_DeletesTheObjects) {
  ide.Run({ide.Project(cGoodFiles)}, [&] {
    IdeDriver::Press(Qt::Key_F7);
    EXPECT_TRUE(ide.files.Exists("out-rel/main.o"));
    IdeDriver::Press(Qt::Key_F7, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_FALSE(ide.files.Exists("out-rel/main.o"));
    EXPECT_TRUE(ide.files.Exists("out-rel/p.exe"));
  });
}

TEST_F(IdeBuild, Mode_ChosenInTheBar_BuildsIntoItsFolder) {
  ide.Run({ide.Project(cGoodFiles)}, [&] {
    theMainForm->editTabs.OpenFile(ide.files.Path("main.cpp"));
    theMainForm->buildMode.Focus();
    IdeDriver::Press(Qt::Key_Down);
    IdeDriver::Press(Qt::Key_F7);
    EXPECT_TRUE(ide.files.Exists("out-dbg/p.exe"));
    EXPECT_FALSE(ide.files.Exists("out-rel"));
  });
}

TEST_F(IdeBuild, Commands_WhileDebugging_AreRefused) {
  ide.Run({ide.Project(cGoodFiles)}, [&] {
    theDebugger.running = true;
    theMainForm->AddErrorRow({"main.cpp", 1, "error"});
    IdeDriver::Press(Qt::Key_F7);
    IdeDriver::Press(Qt::Key_F4);
    EXPECT_THAT(ide.dialogs.texts, ElementsAre("Information: Stop debugger first!",
                                               "Information: Stop debugger first!"));
    EXPECT_FALSE(ide.files.Exists("out-rel"));
  });
}

// Group: what is pressed during a build.

TEST_F(IdeBuild, SecondMake_DuringABuild_StartsNoOther) {
  ide.Run({ide.Project(cGoodFiles)}, [&] {
    int presses = 0;
    WhileBuilding([&] {
      ++presses;
      IdeDriver::Press(Qt::Key_F7);
      IdeDriver::Press(Qt::Key_F7, Qt::ShiftModifier);
    });
    theBuildActs.OnCommand(cMakeCommand);
    EXPECT_EQ(presses, 1);
    EXPECT_EQ(CountOf(Output(), "Build time [s]:"), 1);
    EXPECT_EQ(CountOf(Output(), "------ Compiling"), 2);
    EXPECT_TRUE(ide.files.Exists("out-rel/p.exe"));
  });
}

TEST_F(IdeBuild, Stop_DuringABuild_EndsItBetweenTwoFiles) {
  ide.Run({ide.Project(cGoodFiles)}, [&] {
    WhileBuilding([&] { test::ClickToolRow(theMainForm->toolBar, cStopRow); });
    theBuildActs.OnCommand(cMakeCommand);
    EXPECT_FALSE(ide.files.Exists("out-rel/p.exe"));
    EXPECT_FALSE(Builder::IsBuilding());
  });
}

TEST_F(IdeBuild, ProjectCommands_DuringABuild_AreRefused) {
  const std::string project = ide.Project(cGoodFiles);
  ide.Run({project}, [&] {
    WhileBuilding([&] {
      for (const int id :
           {cCloseProjectCommand, cOpenProjectCommand, cSaveProjectCommand, cRecentProjectsCommand})
        theFileActs.OnCommand(id);
      for (const int id : {cAddFileCommand, cRemoveFileCommand}) thePrjActs.OnCommand(id);
      theMainForm->projectTree.Focus();
      IdeDriver::Press(Qt::Key_Delete);
      mavro::ItemArgs args{&theMainForm->buildMode, 1, -1, -1, ""};
      theMainForm->buildMode.selectedIndex = cDebug;
      theMainForm->buildMode.onSelChanged.Fire(args);
    });
    theBuildActs.OnCommand(cMakeCommand);
    EXPECT_TRUE(theProject.isOpen);
    EXPECT_FALSE(theProject.modified);
    EXPECT_EQ(theProject.Files().size(), 2u);
    EXPECT_EQ(theMainForm->buildMode.selectedIndex, cRelease);
    EXPECT_TRUE(ide.files.Exists("out-rel/p.exe"));
    EXPECT_EQ(ide.dialogs.beeps, 8);
    EXPECT_THAT(ide.dialogs.questions, IsEmpty());
  });
}

TEST_F(IdeBuild, Close_DuringABuild_StopsItAndStaysUntilAsked) {
  ide.Run({ide.Project(cGoodFiles)}, [&] {
    WhileBuilding([&] {
      theMainForm->Close();
      EXPECT_EQ(theMainForm->state, mavro::cShown);
    });
    theBuildActs.OnCommand(cMakeCommand);
    EXPECT_TRUE(theProject.isOpen);
    EXPECT_FALSE(ide.files.Exists("out-rel/p.exe"));
    theMainForm->Close();
    EXPECT_EQ(theMainForm->state, mavro::cNoWindow);
  });
}

// Group: what tools print.

TEST_F(IdeBuild, Output_MuchOfIt_IsAllThereAndTheEndIsShown) {
  ide.Run({}, [&] {
    constexpr int cLines = 100000;
    const std::string line(80, 'x');
    QElapsedTimer clock;
    clock.start();
    for (int i = 0; i < cLines; ++i) theMainForm->AppendOutput(line + "\r\n");
    QCoreApplication::processEvents();
    EXPECT_EQ(Output().size(), cLines * (line.size() + 2));
    RecordProperty("milliseconds", static_cast<int>(clock.elapsed()));
  });
}

// The error page covers the output before its last lines could be painted.
TEST_F(IdeBuild, Output_AfterAFailedBuild_ShowsItsEnd) {
  ide.Run({ide.Project(cBadFiles)}, [&] {
    IdeDriver::Press(Qt::Key_F7);
    theMainForm->ShowPage(cOutputPage);
    const auto* area = qobject_cast<QAbstractScrollArea*>(test::WidgetOf(theMainForm->output));
    ASSERT_NE(area, nullptr);
    const QScrollBar& bar = *area->verticalScrollBar();
    EXPECT_TRUE(test::WaitFor([&] { return bar.maximum() > 0 && bar.value() == bar.maximum(); }))
        << bar.value() << " of " << bar.maximum();
  });
}

TEST_F(IdeBuild, ErrorRow_EndlessContinuations_AreCut) {
  ide.Run({}, [&] {
    theMainForm->AddErrorRow({"a.cpp", 1, "error"});
    for (int i = 0; i < 100000; ++i) theMainForm->AppendToLastErrorRow(std::string(80, ' '));
    EXPECT_THAT(Errors(), SizeIs(1));
    EXPECT_LT(Errors()[0].size(), 20000u);
  });
}

TEST_F(IdeBuild, AppendToLast_WithoutRows_DoesNothing) {
  ide.Run({}, [&] {
    theMainForm->AppendToLastErrorRow("text");
    EXPECT_EQ(theMainForm->ErrorRowCount(), 0);
    theMainForm->ShowErrorRow(0);
    theMainForm->GoToNextError();
    EXPECT_EQ(ide.dialogs.beeps, 1);
  });
}

}  // namespace
}  // namespace zendry
