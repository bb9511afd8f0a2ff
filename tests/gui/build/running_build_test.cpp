#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QElapsedTimer>
#include <QLabel>

#include "DarkPalette.h"
#include "IdeDriver.h"
#include "TestBuild.h"
#include "config/BuildSettings.h"

// The window while tools run: it answers, shows how far the build is, and can end it.

namespace zendry {
namespace {

using test::IdeDriver;
using testing::HasSubstr;
using testing::SizeIs;

// A project of three sources, compiled by tools that do what a test orders.
class RunningBuild : public testing::Test {
 protected:
  ~RunningBuild() override { theBuildSettings = {}; }

  void Run(const std::function<void()>& script) {
    ide.Run({ide.Project({{"a.cpp", ""}, {"b.cpp", ""}, {"c.cpp", ""}})}, [&] {
      for (ToolSet& set : theIdeConfig.toolSets) set.folder = install.Path("tools");
      theBuildSettings.jobs = 2;
      script();
    });
  }
  std::string Await(const std::string& name) const { return "await " + Path(name) + "\n"; }
  std::string Touch(const std::string& name) const { return "touch " + Path(name) + "\n"; }
  std::string Path(const std::string& name) const { return ide.files.Path(name); }
  bool Exists(const std::string& name) const { return ide.files.Exists(name); }
  static std::string Status() { return theMainForm->statusBar.PaneText(cTextPane); }
  static QString BarOfStatus() {
    return test::WidgetOf(theMainForm->statusBar)
        ->findChildren<QLabel*>()[0]
        ->accessibleDescription();
  }
  // Calls `act` from the message queue, once, when `condition` holds.
  static void When(const std::function<bool()>& condition, const std::function<void()>& act) {
    auto* poll = new QTimer;
    QObject::connect(poll, &QTimer::timeout, [poll, condition, act] {
      if (!condition()) return;
      poll->stop();
      poll->deleteLater();
      act();
    });
    poll->start(1);
  }
  static void Make() { theBuildActs.OnCommand(cMakeCommand); }
  static void PressStop() { test::ClickToolRow(theMainForm->toolBar, cStopRow); }

  test::TempFolder install;
  test::FakeTools tools{install.Path("tools")};
  IdeDriver ide;
};

TEST_F(RunningBuild, WindowAnswers_WhileACompilerHangs) {
  tools.Order("g++", "for a.cpp\n" + Await("go"));
  Run([&] {
    theMainForm->editTabs.OpenFile(Path("a.cpp"));
    // All others are done, and the text is typed into the editor, while the first source hangs.
    When([&] { return Exists("out-rel/c.o"); },
         [&] {
           EXPECT_TRUE(Builder::IsBuilding());
           IdeDriver::Press(Qt::Key_Return);
           EXPECT_EQ(theMainForm->editTabs.Active()->editor->GetText(), "\n");
           ide.files.Write("go", "");
         });
    Make();
    EXPECT_TRUE(Exists("out-rel/p.exe"));
    ide.dialogs.answers = {mavro::Answer::cNo};
  });
}

TEST_F(RunningBuild, Progress_IsInTheStatusLineAsTextAndBar) {
  tools.Order("g++", "for b.cpp\n" + Await("go"));
  Run([&] {
    When([&] { return Status() == "3 of 3, c.cpp" && BarOfStatus() == "33 %"; },
         [&] {
           test::Shot(*theMainForm, "ide-progress-light");
           ide.files.Write("go", "");
         });
    Make();
    EXPECT_EQ(BarOfStatus(), "");
    EXPECT_THAT(Status(), HasSubstr("Build succeeded"));
  });
}

TEST_F(RunningBuild, Progress_CanBeReadInTheDark) {
  const QPalette light = QApplication::palette();
  QApplication::setPalette(test::DarkPalette());
  tools.Order("g++", "for b.cpp\n" + Await("go"));
  Run([&] {
    When([&] { return Status() == "3 of 3, c.cpp" && BarOfStatus() == "33 %"; },
         [&] {
           test::Shot(*theMainForm, "ide-progress-dark");
           ide.files.Write("go", "");
         });
    Make();
  });
  QApplication::setPalette(light);
}

TEST_F(RunningBuild, SecondStop_EndsWhatRuns) {
  tools.Order("g++", "wait\n");
  Run([&] {
    When([&] { return Exists("out-rel/a.o") && Exists("out-rel/b.o"); },
         [&] {
           PressStop();
           EXPECT_THAT(Status(), HasSubstr("Stop again"));
           PressStop();
         });
    Make();
    EXPECT_FALSE(Exists("out-rel/a.o"));
    EXPECT_FALSE(Exists("out-rel/b.o"));
    EXPECT_EQ(Status(), "Build stopped  errors: 0  warnings: 0");
    EXPECT_EQ(theMainForm->errorList.RowCount(), 0);
    test::Shot(*theMainForm, "ide-stopped");
  });
}

TEST_F(RunningBuild, WindowClosedTwice_EndsWhatRunsAndCanThenBeClosed) {
  tools.Order("g++", "wait\n");
  Run([&] {
    When([&] { return Exists("out-rel/a.o"); },
         [&] {
           theMainForm->Close();
           theMainForm->Close();
           EXPECT_EQ(theMainForm->state, mavro::cShown);
         });
    Make();
    EXPECT_FALSE(Exists("out-rel/a.o"));
    theMainForm->Close();
    EXPECT_EQ(theMainForm->state, mavro::cNoWindow);
  });
}

// No letter of these words means an error; the compiler's status does.
TEST_F(RunningBuild, FailureInGerman_IsAnErrorWithItsRow) {
  tools.Order(
      "g++",
      "for b.cpp\n"
      "print b.cpp: In Funktion \u00bbint f()\u00ab:\n"
      "print b.cpp:1:18: Fehler: \u00bbx\u00ab wurde in diesem G\u00fcltigkeitsbereich nicht "
      "definiert\nexit 1\n");
  Run([&] {
    Make();
    EXPECT_EQ(Status(), "There ware errors!  errors: 1  warnings: 0");
    EXPECT_EQ(theMainForm->errorList.RowCount(), 1);
    EXPECT_FALSE(Exists("out-rel/p.exe"));
    test::Shot(*theMainForm, "ide-failed-german");
  });
}

// The window has its turn between two pieces of the output.
TEST_F(RunningBuild, TwentyMegabytes_LeaveTheWindowItsTurn) {
  constexpr int cLongestMs = 100;
  tools.Order("g++", "for a.cpp\nflood 250000\n");
  Run([&] {
    QElapsedTimer clock;
    qint64 longest = 0, turns = 0;
    QTimer turn;
    QObject::connect(&turn, &QTimer::timeout, [&] {
      if (turns++ > 0) longest = std::max(longest, clock.elapsed());
      clock.start();
    });
    turn.start(1);
    Make();
    turn.stop();
    std::printf("%d turns, the longest wait %d ms (to be below %d on an idle machine)\n",
                static_cast<int>(turns), static_cast<int>(longest), cLongestMs);
    EXPECT_GT(turns, 5);
  });
}

}  // namespace
}  // namespace zendry
