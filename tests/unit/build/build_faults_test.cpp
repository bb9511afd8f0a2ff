#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <csignal>

#include "BuildTest.h"
#include "Privileges.h"
#include "build/BuildActs.h"

// Builds that are stopped, whose tools fail, and that are refused before any tool runs.

namespace zendry {
namespace {

using test::Arguments;
using test::BuildTest;
using test::cMain;
using testing::Contains;
using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

// Group: stopping, and what else arrives between two files.

TEST_F(BuildTest, StopBetweenFiles_EndsTheBuildWithTheResultSoFar) {
  for (const char* name : {"a.cpp", "b.cpp", "c.cpp"}) build.Add(name, "");
  int pumps = 0;
  build.shell.onPump = [this, &pumps] {
    constexpr int cAfterSecondFile = 3;  // the first one comes with the preparation
    if (++pumps == cAfterSecondFile) build.acts.OnCommand(cStopBuildCommand);
  };
  EXPECT_TRUE(build.builder.Build(Builder::Scope::cStale));
  EXPECT_THAT(build.tools.TakeNames(), ElementsAre("g++ a.cpp", "g++ b.cpp"));
  build.builder.Summary();
  EXPECT_EQ(build.shell.status, "Build stopped  errors: 0  warnings: 0");
  EXPECT_THAT(Output(), HasSubstr("------ Build stopped  errors: 0  warnings: 0 --> \r\n"));
  EXPECT_FALSE(build.builder.HasSucceeded());
}

TEST_F(BuildTest, Stop_IsForgottenByTheNextBuild) {
  build.Add("a.cpp", cMain);
  build.acts.OnCommand(cStopBuildCommand);
  build.builder.Build(Builder::Scope::cStale);
  EXPECT_THAT(build.tools.TakeNames(), ElementsAre("g++ a.cpp", "g++ p.exe"));
}

TEST_F(BuildTest, BuildCommandsBetweenFiles_ArePassedOver) {
  build.Add("a.cpp", cMain);
  build.Add("b.cpp", "");
  build.shell.mode = cDebug;
  build.shell.onPump = [this] {
    EXPECT_TRUE(build.builder.IsBuilding());
    for (int id : {cMakeCommand, cRebuildCommand, cCompileFileCommand, cClearOutputCommand,
                   cSwitchModeCommand})
      build.acts.OnCommand(id);
  };
  EXPECT_TRUE(build.builder.Build(Builder::Scope::cStale));
  EXPECT_THAT(build.tools.TakeNames(), ElementsAre("g++ a.cpp", "g++ b.cpp", "g++ p.exe"));
  EXPECT_EQ(build.project.mode, cRelease);
  EXPECT_FALSE(build.builder.IsBuilding());
}

TEST_F(BuildTest, ProjectClosedBetweenFiles_EndsTheBuild) {
  build.Add("a.cpp", cMain);
  build.Add("b.cpp", "");
  int pumps = 0;
  build.shell.onPump = [this, &pumps] {
    if (++pumps == 2) build.project.Clear();
  };
  build.builder.Build(Builder::Scope::cStale);
  EXPECT_THAT(build.tools.TakeNames(), ElementsAre("g++ a.cpp"));
}

TEST_F(BuildTest, FileRemovedBetweenFiles_IsNotBuilt) {
  build.Add("a.cpp", cMain);
  const int id = build.Add("b.cpp", "").id;
  build.Add("c.cpp", "");
  int pumps = 0;
  build.shell.onPump = [this, &pumps, id] {
    if (++pumps == 2) build.project.RemoveFile(id);
  };
  build.builder.Build(Builder::Scope::cStale);
  EXPECT_THAT(build.tools.TakeNames(), ElementsAre("g++ a.cpp", "g++ c.cpp", "g++ p.exe"));
}

// Group: tools that fail, and the files that they leave.

TEST_F(BuildTest, KilledCompiler_ItsObjectIsDeletedAndTheBuildEnds) {
  build.Add("a.cpp", cMain);
  build.tools.Order("g++", "kill 9\n");
  EXPECT_FALSE(build.builder.Build(Builder::Scope::cStale));
  EXPECT_FALSE(build.files.Exists("out-rel/a.o"));
  EXPECT_THAT(build.shell.rows, ElementsAre("a.cpp:0:  -> g++ was ended by signal 9, what it "
                                            "wrote is deleted"));
  build.tools.Order("g++", "");
  build.tools.Take();
  EXPECT_TRUE(build.builder.Build(Builder::Scope::cStale));
  EXPECT_THAT(build.tools.TakeNames(), ElementsAre("g++ a.cpp", "g++ p.exe"));
}

TEST_F(BuildTest, FailedCompiler_ItsObjectIsDeleted) {
  build.Add("a.cpp", cMain);
  build.tools.Order("g++", "print a.cpp:1: error: x\nexit 1\n");
  build.builder.Build(Builder::Scope::cStale);
  EXPECT_FALSE(build.files.Exists("out-rel/a.o"));
}

TEST_F(BuildTest, KilledLinker_TheProgramIsDeleted) {
  build.Add("a.cpp", cMain);
  build.tools.Order("g++", "when p.exe\nkill 15\n");
  EXPECT_FALSE(build.builder.Build(Builder::Scope::cStale));
  EXPECT_FALSE(build.files.Exists("out-rel/p.exe"));
  EXPECT_TRUE(build.files.Exists("out-rel/a.o"));
}

TEST(BuildFaults, KilledArchiver_TheArchiveIsDeleted) {
  test::TestBuild build("libp.zpj", cStaticLib);
  build.Add("a.cpp", "");
  build.tools.Order("ar", "kill 9\n");
  EXPECT_FALSE(build.builder.Build(Builder::Scope::cStale));
  EXPECT_FALSE(build.files.Exists("out-rel/libp.a"));
}

// Group: what is refused before any tool runs.

TEST_F(BuildTest, MissingSourceWithoutObject_IsRefused) {
  build.project.AddFile("gone.cpp");
  EXPECT_FALSE(build.builder.Build(Builder::Scope::cStale));
  EXPECT_THAT(build.shell.rows, ElementsAre("gone.cpp:0:  -> it can't be read"));
  EXPECT_THAT(build.tools.Take(), IsEmpty());
  EXPECT_EQ(build.builder.errorCount, 1);
}

TEST_F(BuildTest, FolderNamedAsASource_IsRefused) {
  build.files.Folder("dir.cpp");
  build.project.AddFile("dir.cpp");
  EXPECT_FALSE(build.builder.Build(Builder::Scope::cAll));
  EXPECT_THAT(build.tools.Take(), IsEmpty());
}

TEST_F(BuildTest, MissingSourceWithObject_IsLinkedAsBefore) {
  build.Add("a.cpp", cMain);
  build.BuildAndAge();
  unlink(build.Path("a.cpp").c_str());
  EXPECT_TRUE(build.builder.Build(Builder::Scope::cStale));
  EXPECT_THAT(build.shell.rows, IsEmpty());
}

TEST_F(BuildTest, MissingResource_IsRefused) {
  build.Add("a.cpp", cMain);
  build.project.AddFile("gone.rc");
  EXPECT_FALSE(build.builder.Build(Builder::Scope::cStale));
  EXPECT_THAT(build.shell.rows, ElementsAre("gone.rc:0:  -> it can't be read"));
}

TEST_F(BuildTest, FileInPlaceOfTheOutputFolder_IsRefused) {
  build.Add("a.cpp", cMain);
  build.files.Write("out-rel", "mine");
  EXPECT_FALSE(build.builder.Build(Builder::Scope::cStale));
  EXPECT_THAT(build.shell.rows, ElementsAre("out-rel:0:  -> it can't be made: File exists"));
  EXPECT_EQ(build.files.Read("out-rel"), "mine");
  EXPECT_THAT(build.tools.Take(), IsEmpty());
}

TEST_F(BuildTest, OutputFolderWithoutWriteRight_IsRefusedOnlyWhenSomethingMustBeWritten) {
  build.Add("a.cpp", cMain);
  build.BuildAndAge();
  ASSERT_EQ(chmod(build.files.Path().c_str(), 0755), 0);
  ASSERT_EQ(chmod(build.install.Path().c_str(), 0755), 0);
  ASSERT_EQ(chmod(build.Path("out-rel").c_str(), 0555), 0);
  const test::WithoutRights user;
  EXPECT_TRUE(build.builder.Build(Builder::Scope::cStale));
  EXPECT_FALSE(build.builder.Build(Builder::Scope::cAll));
  EXPECT_THAT(build.shell.rows,
              ElementsAre("out-rel:0:  -> it can't be written: Permission denied"));
  EXPECT_THAT(build.tools.Take(), IsEmpty());
}

TEST_F(BuildTest, FileInPlaceOfTheOutputFolder_OneFileIsNotCompiledEither) {
  build.Add("a.cpp", cMain);
  build.files.Write("out-rel", "mine");
  build.shell.activeFile = build.Path("a.cpp");
  build.builder.CompileCurrent();
  EXPECT_THAT(build.shell.rows, ElementsAre("out-rel:0:  -> it can't be made: File exists"));
  EXPECT_THAT(build.tools.Take(), IsEmpty());
}

TEST_F(BuildTest, MissingProjectFolder_IsRefused) {
  build.project.SetFileName(build.Path("gone/p.zpj"));
  EXPECT_FALSE(build.builder.Build(Builder::Scope::cStale));
  EXPECT_THAT(build.shell.rows,
              ElementsAre("out-rel:0:  -> it can't be made: No such file or directory"));
}

TEST_F(BuildTest, OutputThatIsASourceOfTheProject_IsRefused) {
  build.Add("a.cpp", cMain);
  build.project.outName = "../a.cpp";
  EXPECT_FALSE(build.builder.Build(Builder::Scope::cStale));
  EXPECT_EQ(build.files.Read("a.cpp"), cMain);
  EXPECT_THAT(build.shell.rows,
              ElementsAre("../a.cpp:0:  -> the output would overwrite a file of the project"));
}

TEST_F(BuildTest, NulInASwitch_IsRefused) {
  build.Add("a.cpp", cMain);
  build.project.current->comp = std::string("-O2\0-x", 6);
  EXPECT_FALSE(build.builder.Build(Builder::Scope::cStale));
  EXPECT_THAT(build.tools.Take(), IsEmpty());
  EXPECT_THAT(build.shell.rows, ElementsAre("g++:0:  -> its command line holds a NUL byte"));
}

}  // namespace
}  // namespace zendry
