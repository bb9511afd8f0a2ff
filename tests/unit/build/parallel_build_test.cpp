#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdlib>
#include <fstream>
#include <regex>

#include "BuildTest.h"
#include "FewDescriptors.h"
#include "SpawnLimits.h"
#include "build/BuildActs.h"

// Several sources are compiled at once, and what is shown is what one after the other would have
// shown.

namespace zendry {
namespace {

using test::cMain;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::SizeIs;
using testing::UnorderedElementsAre;

std::string WithoutTimes(const std::string& output) {
  static const std::regex cTimes(R"(\[\d+\]|--> \d+\r)");
  return std::regex_replace(output, cTimes, "[T]");
}

struct ParallelBuild : test::BuildTest {
  ParallelBuild() : savedLimits(mavro::TheSpawnLimits()) {
    mavro::TheSpawnLimits() = {.closedOutput = 60, .kill = 60, .quiet = 20};
    theBuildSettings.jobs = 2;
  }
  ~ParallelBuild() override { mavro::TheSpawnLimits() = savedLimits; }

  void AddThree() {
    build.Add("a.cpp", cMain);
    build.Add("b.cpp", "");
    build.Add("c.cpp", "");
  }
  std::string Await(const std::string& name) const { return "await " + build.Path(name) + "\n"; }
  std::string Touch(const std::string& name) const { return "touch " + build.Path(name) + "\n"; }
  bool Build() { return build.builder.Build(Builder::Scope::cStale); }
  // Calls `act` once when all these files are there, while tools run.
  void WhenThere(const std::vector<std::string>& names, const std::function<void()>& act) {
    build.shell.onRunning = [this, names, act, done = false]() mutable {
      for (const std::string& name : names)
        if (!build.files.Exists(name)) return;
      if (!std::exchange(done, true)) act();
    };
  }

  mavro::SpawnLimits savedLimits;
};

// Group: what is shown.

TEST_F(ParallelBuild, TwoJobs_RunAtTheSameTimeAndAreShownInTheirOrder) {
  AddThree();
  // The first source is done after the third.
  build.tools.Order("g++", "for a.cpp\n" + Await("out-rel/c.o") + "print of a\nfor b.cpp\n" +
                               "print of b\nfor c.cpp\nprint of c\n");
  EXPECT_TRUE(Build());
  const std::string output = Output();
  const std::vector<std::string> parts = {"Compiling --> " + build.Path("a.cpp"),
                                          "of a\r\n[",
                                          "Compiling --> " + build.Path("b.cpp"),
                                          "of b\r\n[",
                                          "Compiling --> " + build.Path("c.cpp"),
                                          "of c\r\n[",
                                          "Linking --> "};
  size_t at = 0;
  for (const std::string& part : parts) {
    const size_t found = output.find(part, at);
    ASSERT_NE(found, std::string::npos) << part << " in " << output;
    at = found;
  }
}

TEST_F(ParallelBuild, OneJob_StartsNothingBeforeTheFirstHasEnded) {
  theBuildSettings.jobs = 1;
  AddThree();
  build.tools.Order("g++", "for a.cpp\n" + Touch("a.runs") + "for b.cpp\n" + Touch("b.runs"));
  int looks = 0;
  build.shell.onPump = [&] {
    if (++looks == 2) {
      EXPECT_FALSE(build.files.Exists("b.runs"));
    }
  };
  EXPECT_TRUE(Build());
  EXPECT_TRUE(build.files.Exists("b.runs"));
}

// Warnings, notes that are held, continued lines, failures without a counted line, lines without
// newline: every number of jobs gives the same text, rows and counts.
TEST_F(ParallelBuild, AnyNumberOfJobs_GivesTheSameTranscript) {
  std::string outputs[3];
  std::vector<std::string> rows[3];
  for (int run = 0; run < 3; ++run) {
    test::TestBuild other;
    theBuildSettings.jobs = run == 0 ? 1 : run == 1 ? 2 : 8;
    for (char name = 'a'; name < 'm'; ++name) other.Add(std::string(1, name) + ".cpp", cMain);
    other.tools.Order("g++",
                      "for b.cpp\nprint h.h:3: note: one\nprint h.h:3: note: two\n"
                      "print b.cpp:4:1: warning: w\nprint   continued\n"
                      "for c.cpp\nprint h.h:3: note: three\nraw c.cpp:1: warning: no newline\n"
                      "for e.cpp\nflood 3000\nprint e.cpp:9: warning: late\n"
                      "for f.cpp\nprint gone\nexit 3\n"
                      "for g.cpp\nprint \nprint g.cpp:1: warning: after a blank line\n");
    EXPECT_FALSE(other.builder.Build(Builder::Scope::cStale));
    outputs[run] =
        std::regex_replace(WithoutTimes(other.shell.output),
                           std::regex(other.install.Path() + "|" + other.files.Path()), "");
    rows[run] = other.shell.rows;
    EXPECT_EQ(other.builder.warningCount, 4);
    EXPECT_EQ(other.builder.Errors(), 1);
  }
  EXPECT_EQ(outputs[0], outputs[1]);
  EXPECT_EQ(outputs[0], outputs[2]);
  EXPECT_EQ(rows[0], rows[1]);
  EXPECT_EQ(rows[0], rows[2]);
  EXPECT_THAT(rows[0], SizeIs(7));
}

TEST_F(ParallelBuild, ReasonsOfStaleness_AreToldInTheOrderOfTheFiles) {
  AddThree();
  build.tools.Order("g++", "for a.cpp\n" + Await("out-rel/b.o"));
  std::vector<std::string> files;
  build.builder.SetStaleObserver(
      [&](const std::string& file, const std::string&) { files.push_back(file); });
  EXPECT_TRUE(Build());
  EXPECT_THAT(files, ElementsAre("a.cpp", "b.cpp", "c.cpp", "p.exe"));
}

TEST_F(ParallelBuild, EachCompiler_HasItsOwnListOfReadFiles) {
  AddThree();
  for (const char* name : {"a", "b", "c"}) {
    build.files.Write(std::string(name) + ".inl", "");
    build.files.Write(std::string(name) + ".cpp.d",
                      "read: " + std::string(name) + ".cpp " + name + ".inl\n");
  }
  build.tools.Order("g++", "for a.cpp\n" + Await("out-rel/c.o"));
  build.BuildAndAge();
  for (const char* name : {"a", "b", "c"}) {
    test::SetTime(build.Path(std::string(name) + ".inl"), 9);
    EXPECT_TRUE(Build());
    EXPECT_THAT(build.tools.TakeNames(),
                ElementsAre("g++ " + std::string(name) + ".cpp", "g++ p.exe"));
  }
  for (const auto& entry : build.files.Names()) EXPECT_THAT(entry, Not(HasSubstr("zendry-read")));
}

TEST_F(ParallelBuild, Progress_NamesTheSourceAndCountsWhatIsDone) {
  build.Add("a.cpp", cMain);
  build.Add("b.cpp", "");
  build.BuildAndAge();
  build.Add("c.cpp", "");
  build.files.Write("a.cpp", "// changed\n");
  theBuildSettings.jobs = 1;
  build.shell.progress.clear();
  build.acts.OnCommand(cMakeCommand);
  EXPECT_THAT(build.shell.progress, ElementsAre("1 of 2, a.cpp (0/2)", "2 of 2, c.cpp (1/2)",
                                                "Linking p.exe (2/3)", " (0/0)"));
}

// Group: errors.

// Waiting for a file hands on what is printed: the error is in the pipe before the other ends.
TEST_F(ParallelBuild, FileWithErrors_RunningOnesAreFinishedAndShownAndNoneIsBegun) {
  AddThree();
  build.tools.Order("g++", "for a.cpp\nprint a.cpp:1: error: x\n" + Await("b.runs") +
                               Touch("a.said") + "for b.cpp\n" + Touch("b.runs") + Await("a.said") +
                               "print b.cpp:1: warning: still shown\n");
  EXPECT_FALSE(Build());
  EXPECT_THAT(build.shell.rows, ElementsAre("a.cpp:1: error: x", "b.cpp:1: warning: still shown"));
  EXPECT_THAT(build.tools.TakeNames(), UnorderedElementsAre("g++ a.cpp", "g++ b.cpp"));
}

TEST_F(ParallelBuild, LaterFileWithErrors_StopsTheBeginningOfOthersAtOnce) {
  AddThree();
  // The error of the second is printed while the first runs and can't be shown yet.
  build.tools.Order("g++", "for a.cpp\n" + Touch("a.runs") + Await("b.said") +
                               "for b.cpp\nprint b.cpp:1: error: x\n" + Await("a.runs") +
                               Touch("b.said") + "exit 1\n");
  EXPECT_FALSE(Build());
  EXPECT_THAT(build.tools.TakeNames(), UnorderedElementsAre("g++ a.cpp", "g++ b.cpp"));
  EXPECT_THAT(build.shell.rows, ElementsAre("b.cpp:1: error: x"));
}

TEST_F(ParallelBuild, MissingSource_IsRefusedInItsOrder) {
  build.Add("a.cpp", cMain);
  build.project.AddFile("gone.cpp");
  build.Add("c.cpp", "");
  build.tools.Order("g++", "print a.cpp:1: warning: w\n");
  EXPECT_FALSE(Build());
  EXPECT_THAT(build.shell.rows,
              ElementsAre("a.cpp:1: warning: w", "gone.cpp:0:  -> it can't be read"));
  EXPECT_THAT(build.tools.TakeNames(), ElementsAre("g++ a.cpp"));
}

TEST_F(ParallelBuild, MissingCompiler_IsReportedForEachFileInOrder) {
  build.Add("a.cpp", cMain);
  build.Add("b.c", "");
  build.Add("c.cpp", "");
  unlink((Root() + "/tools/g++").c_str());
  build.tools.Order("gcc", "print b.c:1: warning: w\n");
  EXPECT_FALSE(Build());
  EXPECT_THAT(build.shell.rows,
              ElementsAre("a.cpp:0:  -> g++ can't be started", "b.c:1: warning: w",
                          "c.cpp:0:  -> g++ can't be started"));
}

// Group: stop.

TEST_F(ParallelBuild, Stop_LetsTheRunningOnesEndAndBeginsNone) {
  AddThree();
  build.tools.Order("g++", "for a.cpp\n" + Touch("a.runs") + Await("go") + "for b.cpp\n" +
                               Touch("b.runs") + Await("go"));
  WhenThere({"a.runs", "b.runs"}, [this] {
    build.acts.OnCommand(cStopBuildCommand);
    build.files.Write("go", "");
  });
  EXPECT_TRUE(Build());
  build.builder.Summary();
  EXPECT_THAT(build.tools.TakeNames(), UnorderedElementsAre("g++ a.cpp", "g++ b.cpp"));
  EXPECT_TRUE(build.files.Exists("out-rel/a.o"));
  EXPECT_TRUE(build.files.Exists("out-rel/b.o"));
  EXPECT_EQ(build.shell.status, "Build stopped  errors: 0  warnings: 0");
}

TEST_F(ParallelBuild, SecondStop_EndsTheRunningOnesAndNoCutObjectStays) {
  AddThree();
  build.tools.Order("g++", "for a.cpp\nwait\nfor b.cpp\nstubborn\nwait\n");
  build.shell.onRunning = [this] {
    if (build.files.Exists("out-rel/a.o") && build.files.Exists("out-rel/b.o"))
      build.acts.OnCommand(cStopBuildCommand);
  };
  EXPECT_TRUE(Build());
  build.builder.Summary();
  for (const char* object : {"a.o", "b.o", "c.o"})
    EXPECT_FALSE(build.files.Exists(std::string("out-rel/") + object)) << object;
  EXPECT_THAT(build.shell.rows, IsEmpty());
  EXPECT_EQ(build.shell.status, "Build stopped  errors: 0  warnings: 0");
  EXPECT_THAT(Output(), HasSubstr("g++ was stopped, what it wrote is deleted\r\n"));
  build.shell.onRunning = nullptr;
  build.tools.Order("g++", "");
  build.tools.Take();
  EXPECT_TRUE(Build());
  EXPECT_THAT(build.tools.TakeNames(), SizeIs(4));
}

TEST_F(ParallelBuild, SecondStop_EndsTheLinkerAndDeletesTheProgram) {
  build.Add("a.cpp", cMain);
  build.tools.Order("g++", "when p.exe\nwait\n");
  build.shell.onRunning = [this] {
    if (build.files.Exists("out-rel/p.exe")) build.acts.OnCommand(cStopBuildCommand);
  };
  Build();
  EXPECT_FALSE(build.files.Exists("out-rel/p.exe"));
  EXPECT_FALSE(build.builder.HasSucceeded());
}

TEST_F(ParallelBuild, StopWhileTheLinkerRuns_LetsTheLastStepEnd) {
  build.Add("a.cpp", cMain);
  build.tools.Order("g++", "when p.exe\n" + Touch("runs") + Await("go"));
  WhenThere({"runs"}, [this] {
    build.acts.OnCommand(cStopBuildCommand);
    build.files.Write("go", "");
  });
  EXPECT_TRUE(Build());
  EXPECT_TRUE(build.files.Exists("out-rel/p.exe"));
  EXPECT_TRUE(build.builder.HasSucceeded());
}

// Group: compilers that misbehave with another at their side.

TEST_F(ParallelBuild, GrandchildThatHoldsTheOutput_DoesNotHoldTheBuildUp) {
  AddThree();
  build.tools.Order("g++", "for a.cpp\nprint before\ngrandchild\nfor b.cpp\nprint of b\n");
  EXPECT_TRUE(Build());
  EXPECT_THAT(Output(), HasSubstr("still holds its output"));
  EXPECT_THAT(Output(), HasSubstr("of b\r\n"));
}

TEST_F(ParallelBuild, CompilerThatIsKilled_EndsTheBuildAndTheOtherIsShown) {
  AddThree();
  build.tools.Order("g++", "for a.cpp\n" + Await("b.runs") + "kill 9\nfor b.cpp\n" +
                               Touch("b.runs") + "print of b\n");
  EXPECT_FALSE(Build());
  EXPECT_FALSE(build.files.Exists("out-rel/a.o"));
  EXPECT_TRUE(build.files.Exists("out-rel/b.o"));
  EXPECT_THAT(Output(), HasSubstr("of b\r\n"));
  EXPECT_THAT(build.shell.rows,
              ElementsAre("a.cpp:0:  -> g++ was ended by signal 9, what it wrote is deleted"));
}

// The resident memory of this process in kilobytes.
long ResidentMemory() {
  std::ifstream status("/proc/self/status");
  for (std::string line; std::getline(status, line);)
    if (line.starts_with("VmRSS:")) return std::atol(line.c_str() + 6);
  return 0;
}

// A shell that only counts what it gets.
struct CountingShell : test::RecordingShell {
  size_t bytes = 0;
  void AppendOutput(std::string_view text) override { bytes += text.size(); }
};

// A step that can't be shown yet has to wait with what it prints.
TEST_F(ParallelBuild, HundredMegabytesBehindAnother_AreAllShownAndNotKeptInMemory) {
  constexpr size_t cBytes = 100'000'000;
  [[maybe_unused]] constexpr long cMostKilobytes = 40'000;
  constexpr int cLooks = 20;
  AddThree();
  build.tools.Order("g++", "for a.cpp\n" + Await("go") + "for b.cpp\nflood 1250000\n");
  CountingShell shell;
  build.builder.Bind(build.project, shell);
  [[maybe_unused]] const long before = ResidentMemory();
  long most = 0;
  int looks = 0;
  shell.onRunning = [&] {
    most = std::max(most, ResidentMemory());
    if (++looks == cLooks) build.files.Write("go", "");
  };
  EXPECT_TRUE(Build());
  EXPECT_GT(shell.bytes, cBytes);
#ifndef __SANITIZE_ADDRESS__  // which keeps what is freed
  EXPECT_LT(most - before, cMostKilobytes);
#endif
}

TEST_F(ParallelBuild, NoDescriptorsForASecondCompiler_OneAfterTheOther) {
  AddThree();
  build.tools.Order("g++", "for a.cpp\n");
  EXPECT_TRUE(Build());  // what is opened once is open now
  theBuildSettings.jobs = 8;
  constexpr int cForOneCompiler = 10;
  const test::FewDescriptors few(cForOneCompiler);
  EXPECT_TRUE(build.builder.Build(Builder::Scope::cAll)) << Output();
  EXPECT_THAT(build.shell.rows, IsEmpty());
  EXPECT_THAT(dialogs.texts, IsEmpty());
}

TEST_F(ParallelBuild, ProjectClosedWhileToolsRun_EndsTheBuild) {
  AddThree();
  build.tools.Order("g++", "for a.cpp\n" + Touch("a.runs") + Await("go"));
  WhenThere({"a.runs"}, [this] {
    build.project.Clear();
    build.files.Write("go", "");
  });
  Build();
  EXPECT_THAT(build.tools.TakeNames(), Not(Contains("g++ p.exe")));
}

}  // namespace
}  // namespace zendry
