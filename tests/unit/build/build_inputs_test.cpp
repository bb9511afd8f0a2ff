#include "build/BuildInputs.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "BuildTest.h"
#include "build/ObjectNames.h"

// What a build watches besides the times of sources and listed headers.

namespace zendry {
namespace {

using test::BuildTest;
using test::cMain;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

// What was made in the output folder is as old as the fake times say; the records' times too.
struct RecordedBuild : BuildTest {
  std::vector<std::string> Rebuilt() {
    build.builder.Build(Builder::Scope::cStale);
    return build.tools.TakeNames();
  }
  void Link(const std::string& switches) { build.project.linkLibs = switches; }
};

TEST_F(RecordedBuild, UnchangedProject_RunsNothing) {
  build.Add("a.cpp", cMain);
  build.BuildAndAge();
  EXPECT_THAT(Rebuilt(), IsEmpty());
}

TEST_F(RecordedBuild, OtherSwitches_CompileAndLinkAgain) {
  build.Add("a.cpp", cMain);
  build.Add("b.c", "");
  build.BuildAndAge();
  build.project.current->comp += " -DX";
  EXPECT_THAT(Rebuilt(), ElementsAre("g++ a.cpp", "gcc b.c", "g++ p.exe"));
  build.project.current->link += " -static";
  EXPECT_THAT(Rebuilt(), ElementsAre("g++ p.exe"));
  EXPECT_THAT(Rebuilt(), IsEmpty());
}

TEST_F(RecordedBuild, SourceWithAnOlderTimeThanItHad_IsCompiled) {
  const std::string path = build.Path("a.cpp");
  build.Add("a.cpp", cMain);
  build.BuildAndAge();
  test::SetTime(path, 0);
  EXPECT_THAT(Rebuilt(), Contains("g++ a.cpp"));
}

TEST_F(RecordedBuild, HeaderThatOnlyTheCompilerKnows_MakesItsSourceStale) {
  build.Add("a.cpp", cMain);
  build.Add("b.cpp", "");
  build.files.Write("gen/x.inl", "");
  build.tools.Order("g++", "when a.cpp\nread gen/x.inl\n");
  build.BuildAndAge();
  EXPECT_THAT(Rebuilt(), IsEmpty());
  test::SetTime(build.Path("gen/x.inl"), 9);
  EXPECT_THAT(Rebuilt(), ElementsAre("g++ a.cpp", "g++ p.exe"));
  EXPECT_FALSE(build.files.Exists("out-rel/.zendry-read"));
}

TEST_F(RecordedBuild, ListOfAFailedOrKilledCompile_IsNotTheNextOnes) {
  build.Add("a.cpp", cMain);
  build.Add("b.cpp", "");
  build.files.Write("a.h", "");
  build.tools.Order("g++", "read a.h\nprint a.cpp:1: error: x\nexit 1\n");
  build.builder.Build(Builder::Scope::cStale);
  EXPECT_FALSE(build.files.Exists("out-rel/.zendry-read"));
  build.files.Write("out-rel/.zendry-read", "read: a.h\n");
  build.tools.Order("g++", "");
  build.BuildAndAge();
  test::SetTime(build.Path("a.h"), 9);
  EXPECT_THAT(Rebuilt(), IsEmpty());
}

TEST_F(RecordedBuild, HeaderOutsideTheProject_IsNotWatched) {
  test::TempFolder outside;
  const std::string header = outside.Write("x.h", "");
  build.Add("a.cpp", cMain);
  build.tools.Order("g++", "when a.cpp\nread " + header + "\n");
  build.BuildAndAge();
  test::SetTime(header, 9);
  EXPECT_THAT(Rebuilt(), IsEmpty());
}

TEST_F(RecordedBuild, HeaderOutsideTheFolderButListed_IsWatched) {
  test::TempFolder outside;
  const std::string header = outside.Write("x.inl", "");
  build.project.AddFile(header);
  build.Add("a.cpp", cMain);
  build.tools.Order("g++", "when a.cpp\nread " + header + "\n");
  build.BuildAndAge();
  test::AgeRecords(build.Path("out-rel"));
  test::SetTime(header, 9);
  EXPECT_THAT(Rebuilt(), Contains("g++ a.cpp"));
}

TEST_F(RecordedBuild, SourceTakenOut_LinksAgain) {
  build.Add("a.cpp", cMain);
  const int id = build.Add("b.cpp", "").id;
  build.BuildAndAge();
  build.project.RemoveFile(id);
  EXPECT_THAT(Rebuilt(), ElementsAre("g++ p.exe"));
}

TEST_F(RecordedBuild, LibraryOfANamedFolder_LinksAgain) {
  build.Add("a.cpp", cMain);
  build.files.Write("lib/libx.a", "");
  Link("-L../lib -lx -lelsewhere");
  build.BuildAndAge();
  EXPECT_THAT(Rebuilt(), IsEmpty());
  test::SetTime(build.Path("lib/libx.a"), 9);
  EXPECT_THAT(Rebuilt(), ElementsAre("g++ p.exe"));
}

TEST_F(RecordedBuild, FileOfAResourceScript_CompilesItAgain) {
  build.Add("a.cpp", cMain);
  build.files.Write("art/p.ico", "");
  build.files.Write("p.rc", "1 ICON \"art/p.ico\"\n");
  build.project.AddFile("p.rc");
  theIdeConfig.windres = "windres";
  build.BuildAndAge();
  EXPECT_THAT(Rebuilt(), IsEmpty());
  test::SetTime(build.Path("art/p.ico"), 9);
  EXPECT_THAT(Rebuilt(), ElementsAre("windres p.rc", "g++ p.exe"));
}

TEST_F(RecordedBuild, TwoProjectsInOneFolder_DoNotShareStaleObjects) {
  build.Add("a.cpp", cMain);
  build.BuildAndAge();
  test::RecordingShell shell;
  Project other;
  other.SetShell(&shell);
  other.Init(build.Path("other.zpj"), cConsole);
  other.AddFile("a.cpp");
  other.current->comp = "-DOTHER";
  Builder second;
  second.Bind(other, shell);
  second.Build(Builder::Scope::cStale);
  EXPECT_THAT(build.tools.TakeNames(), ElementsAre("g++ a.cpp", "g++ other.exe"));
  EXPECT_THAT(Rebuilt(), ElementsAre("g++ a.cpp", "g++ p.exe"));
}

TEST_F(RecordedBuild, RecordsThatAreGone_CompileEverythingOnce) {
  build.Add("a.cpp", cMain);
  build.BuildAndAge();
  unlink(build.Path("out-rel/.zendry-build").c_str());
  EXPECT_THAT(Rebuilt(), ElementsAre("g++ a.cpp", "g++ p.exe"));
  EXPECT_THAT(Rebuilt(), IsEmpty());
}

TEST_F(RecordedBuild, FailedRun_LeavesNoRecord) {
  build.Add("a.cpp", cMain);
  build.BuildAndAge();
  build.tools.Order("g++", "when p.exe\nexit 1\n");
  build.project.current->link += " -static";
  EXPECT_THAT(Rebuilt(), ElementsAre("g++ p.exe"));
  build.tools.Order("g++", "");
  build.project.current->link = "-s";
  EXPECT_THAT(Rebuilt(), ElementsAre("g++ p.exe"));
}

TEST(Archives, AreWrittenAnew) {
  test::TestBuild build("libp.zpj", cStaticLib);
  build.Add("a.cpp", "");
  build.BuildAndAge();
  build.files.Write("out-rel/libp.a", "old members");
  build.tools.Order("ar", "mute\n");
  build.Add("b.cpp", "");
  build.builder.Build(Builder::Scope::cStale);
  EXPECT_FALSE(build.files.Exists("out-rel/libp.a"));
}

// Group: names of objects.

TEST_F(BuildTest, SourcesOfOneBaseName_HaveObjectsOfTheirOwn) {
  for (const char* name : {"x.c", "b/x.c", "a/b/x.cpp", "b-x.c", "y.c"}) build.Add(name, "");
  const ObjectNames names(build.project, "out-rel");
  std::vector<std::string> objects;
  for (const auto& file : build.project.Files()) objects.push_back(names.Of(*file));
  EXPECT_THAT(objects, ElementsAre("out-rel/x.o", "out-rel/b-x.o", "out-rel/a-b-x.o",
                                   "out-rel/2-b-x.o", "out-rel/y.o"));
}

TEST_F(BuildTest, HeadersAndTexts_TakeNoObjectsName) {
  for (const char* name : {"x.h", "x.txt", "x.c"}) build.Add(name, "");
  EXPECT_EQ(ObjectNames(build.project, "out-rel").Of(*build.project.Files()[2]), "out-rel/x.o");
}

TEST_F(BuildTest, SourcesOfOneBaseName_AreAllLinked) {
  build.Add("a/x.c", "");
  build.Add("b/x.c", "");
  build.builder.Build(Builder::Scope::cStale);
  const auto calls = build.tools.Take();
  ASSERT_EQ(calls.size(), 3u);
  EXPECT_THAT(test::Arguments(calls[2]), HasSubstr("x.o b-x.o"));
}

// Group: what lines and scripts name.

TEST(LinkInputs, AreObjectsAndLibrariesOfNamedFolders) {
  const test::TempFolder files;
  files.Write("lib/libx.so", "");
  files.Write("lib/libx.a", "");
  files.Write("lib/liby.a", "");
  files.Write("two/liby.a", "");
  const std::string lib = files.Path("lib"), two = files.Path("two");
  EXPECT_THAT(
      LinkInputs("g++ -o p.exe a.o -L" + lib + " -L " + two + " -lx -l y -l:liby.a -lm -s", "out"),
      ElementsAre("out/a.o", lib + "/libx.so", lib + "/liby.a", lib + "/liby.a"));
  EXPECT_THAT(LinkInputs("", "out"), IsEmpty());
  EXPECT_THAT(LinkInputs("g++ -o", "out"), IsEmpty());
  EXPECT_THAT(LinkInputs("g++ -l", "out"), IsEmpty());
}

}  // namespace
}  // namespace zendry
