#include "build/Launchers.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

#include "BuildTest.h"
#include "ScopedVariable.h"

namespace zendry {
namespace {

using test::cMain;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

// A build whose compilers are started by a launcher that stands in for the real ones.
struct Launched : test::BuildTest {
  // Puts a launcher with these deeds before the compilers; without any, it launches.
  void Use(const std::string& name, const std::string& deeds = "launch\n") {
    const std::string path = Root() + "/tools/" + name;
    std::filesystem::create_symlink(FAKE_TOOL, path);
    build.tools.Order(name, deeds);
    theBuildSettings.launchers[0] = path;
  }
  bool Build() { return build.builder.Build(Builder::Scope::cStale); }
};

TEST_F(Launched, Name_IsTheUsersElseTheInstallations) {
  theIdeConfig.toolSets[1].launcher = "ccache";
  EXPECT_EQ(LauncherOf(theIdeConfig, {}, 0), "");
  EXPECT_EQ(LauncherOf(theIdeConfig, {}, 1), "ccache");
  BuildSettings settings;
  settings.launchers = {"distcc", "none", ""};
  EXPECT_EQ(LauncherOf(theIdeConfig, settings, 0), "distcc");
  EXPECT_EQ(LauncherOf(theIdeConfig, settings, 1), "");
  EXPECT_EQ(LauncherOf(theIdeConfig, settings, 7), "distcc") << "a number without a set";
  settings.launchers[0] = "@/tools/ccache";
  EXPECT_EQ(LauncherOf(theIdeConfig, settings, 0), Root() + "/tools/ccache");
}

TEST_F(Launched, State_IsSaidInWords) {
  const test::ScopedVariable path("PATH", Root() + "/tools");
  EXPECT_EQ(StateOfLauncher("").Words(), "no launcher");
  EXPECT_EQ(StateOfLauncher("ccache").Words(), "ccache: not found");
  Use("ccache");
  EXPECT_EQ(StateOfLauncher("ccache").Words(), "ccache: found (" + Root() + "/tools/ccache)");
  EXPECT_FALSE(StateOfLauncher(Root() + "/tools/distcc").IsFound());
  EXPECT_FALSE(StateOfLauncher(Root() + "/tools").IsFound()) << "a folder is no program";
}

TEST_F(Launched, Compiler_IsItsArgumentAndTheLinkerIsNot) {
  build.Add("a.cpp", cMain);
  Use("ccache");
  EXPECT_TRUE(Build()) << Output();
  const auto calls = build.tools.Take();
  ASSERT_EQ(calls.size(), 3u);
  EXPECT_EQ(calls[0][0], "ccache");
  EXPECT_EQ(calls[0][1], Root() + "/tools/g++");
  EXPECT_EQ(calls[1][0], "g++");
  EXPECT_THAT(test::Arguments(calls[1]),
              testing::EndsWith("a.cpp -o out-rel/a.o -MMD -MF out-rel/a.o.read -MT read"));
  EXPECT_EQ(calls[2][0], "g++");
}

// The environment that asks for the list of read files makes a cache give up.
TEST_F(Launched, ReadFiles_AreAskedForBySwitches) {
  build.Add("a.cpp", cMain);
  Use("ccache", "environment DEPENDENCIES_OUTPUT\nlaunch\n");
  const test::ScopedVariable users("DEPENDENCIES_OUTPUT", "mine");
  EXPECT_TRUE(Build());
  EXPECT_THAT(Output(), HasSubstr("DEPENDENCIES_OUTPUT is not set\r\n"));
}

TEST_F(Launched, AnotherLauncherOrNone_MakesNoObjectStale) {
  build.Add("a.cpp", cMain);
  build.BuildAndAge();
  Use("ccache");
  EXPECT_TRUE(Build());
  EXPECT_THAT(build.tools.Take(), IsEmpty());
  build.files.Write("a.cpp", "// changed\n");
  build.BuildAndAge();
  Use("distcc");
  EXPECT_TRUE(Build());
  theBuildSettings.launchers[0].clear();
  EXPECT_TRUE(Build());
  EXPECT_THAT(build.tools.Take(), IsEmpty());
}

TEST_F(Launched, MissingLauncher_IsOneRowAndTheBuildEnds) {
  build.Add("a.cpp", cMain);
  build.Add("b.cpp", "");
  theBuildSettings.launchers[0] = "no-such-launcher";
  EXPECT_FALSE(Build());
  EXPECT_THAT(build.shell.rows,
              ElementsAre("no-such-launcher:0:  -> the launcher before the compiler is not found"));
  EXPECT_THAT(build.tools.Take(), IsEmpty());
  EXPECT_THAT(dialogs.texts, IsEmpty());
}

TEST_F(Launched, FailingLauncher_HasARowThatNamesIt) {
  build.Add("a.cpp", cMain);
  Use("ccache", "print ccache: error: no room\nexit 1\n");
  EXPECT_FALSE(Build());
  EXPECT_THAT(build.shell.rows,
              ElementsAre("a.cpp:0:  -> ccache g++ ended with status 1: ccache: error: no room"));
}

TEST_F(Launched, HangingLauncher_EndsWithTheSecondStop) {
  build.Add("a.cpp", cMain);
  Use("ccache", "wait\n");
  build.shell.onRunning = [this] {
    if (build.files.Exists("out-rel/a.o")) build.acts.OnCommand(cStopBuildCommand);
  };
  Build();
  EXPECT_FALSE(build.files.Exists("out-rel/a.o"));
  EXPECT_FALSE(build.builder.HasSucceeded());
}

TEST_F(Launched, ServerLostInTheMiddle_CostsARepetitionHereAndIsSaidOnce) {
  for (const char* name : {"a.cpp", "b.cpp", "c.cpp"}) build.Add(name, cMain);
  Use("distcc", "for c.cpp\nlaunch\nfor -c\nexit 103\n");
  EXPECT_TRUE(Build()) << Output();
  EXPECT_THAT(build.tools.TakeNames(),
              ElementsAre("distcc a.cpp", "g++ a.cpp", "distcc b.cpp", "g++ b.cpp", "distcc c.cpp",
                          "g++ c.cpp", "g++ p.exe"));
  const std::string said =
      "ended with status 103: what it can't compile elsewhere is compiled here";
  const size_t first = Output().find(said);
  ASSERT_NE(first, std::string::npos);
  EXPECT_EQ(Output().find(said, first + 1), std::string::npos);
  EXPECT_THAT(build.shell.rows, IsEmpty());
}

TEST_F(Launched, StatusOfTheCompilerThroughDistcc_IsNoLostServer) {
  build.Add("a.cpp", cMain);
  Use("distcc", "print a.cpp:1: error: x\nexit 1\n");
  EXPECT_FALSE(Build());
  EXPECT_THAT(build.tools.TakeNames(), ElementsAre("distcc a.cpp"));
}

TEST_F(Launched, StatusAbove99OfAnotherLauncher_IsAFailure) {
  build.Add("a.cpp", cMain);
  Use("ccache", "exit 103\n");
  EXPECT_FALSE(Build());
  EXPECT_THAT(build.tools.TakeNames(), ElementsAre("ccache a.cpp"));
}

TEST_F(Launched, UsualJobs_AreTheProcessorsOrThePlacesOfDistcc) {
  EXPECT_EQ(UsualJobs(""), ProcessorCount());
  Use("distcc", "print 37\n");
  EXPECT_EQ(UsualJobs(theBuildSettings.launchers[0]), 37);
  build.tools.Order("distcc", "print no hosts\nexit 1\n");
  EXPECT_EQ(UsualJobs(theBuildSettings.launchers[0]), ProcessorCount());
  EXPECT_EQ(UsualJobs("/nowhere/distcc"), ProcessorCount());
}

}  // namespace
}  // namespace zendry
