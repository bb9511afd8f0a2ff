#include "build/BuildActs.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <csignal>
#include <set>

#include "BuildTest.h"
#include "CommandLine.h"
#include "base/Paths.h"

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

// Group: the command table.

TEST(BuildActs, Rows_AreTheMenuInOrder) {
  std::vector<std::string> rows;
  for (const mavro::Action* row : theBuildActs.Rows())
    rows.push_back(std::to_string(row->id) + " " + row->text + mavro::HotKeyText(row->hotkey));
  EXPECT_THAT(rows,
              ElementsAre("1400 &Compile File\tCtrl+F7", "1401 &Make\tF7", "1402 Rebuild\tShift+F7",
                          "1403 Switch Debug/Relase mode", "1404 Clear Output Files\tCtrl+Shift+F7",
                          "1406 Go to Next error\tF4", "1407 Go to Prev error\tShift+F4"));
}

TEST(BuildActs, Keys_AreUnique) {
  std::set<int> keys;
  for (const mavro::Action* row : theBuildActs.Rows()) {
    const bool isNew = keys.insert(row->hotkey).second;
    EXPECT_TRUE(isNew || row->hotkey == 0) << row->text;
  }
}

TEST(BuildActs, BeforeItIsBound_CommandsDoNothing) {
  BuildActs acts;
  for (int id = cCompileFileCommand; id <= cPreviousErrorCommand; ++id)
    EXPECT_NO_FATAL_FAILURE(acts.OnCommand(id)) << id;
  EXPECT_FALSE(Builder::IsBuilding());
}

TEST_F(BuildTest, EveryCommand_WhileTheDebuggerRuns_IsRefused) {
  build.Add("a.cpp", cMain);
  build.shell.debuggerRuns = true;
  for (int id = cCompileFileCommand; id <= cPreviousErrorCommand; ++id) build.acts.OnCommand(id);
  EXPECT_EQ(dialogs.texts, std::vector<std::string>(8, "Information: Stop debugger first!"));
  EXPECT_THAT(build.shell.events, IsEmpty());
  EXPECT_FALSE(build.builder.abortRequested);
  EXPECT_THAT(build.tools.Take(), IsEmpty());
}

TEST_F(BuildTest, EveryCommand_WithoutAProject_BuildsNothing) {
  build.project.Clear();
  for (int id : {cCompileFileCommand, cMakeCommand, cRebuildCommand, cClearOutputCommand})
    build.acts.OnCommand(id);
  EXPECT_THAT(build.shell.events, IsEmpty());
}

TEST_F(BuildTest, SwitchMode_TakesWhatTheSelectorShows) {
  build.shell.mode = cDebug;
  build.acts.OnCommand(cSwitchModeCommand);
  EXPECT_EQ(build.project.mode, cDebug);
}

TEST_F(BuildTest, NextAndPreviousError_GoToTheErrorList) {
  build.acts.OnCommand(cNextErrorCommand);
  build.acts.OnCommand(cPreviousErrorCommand);
  EXPECT_THAT(build.shell.events, ElementsAre("next error", "previous error"));
}

// Group: a build from the start to the summary.

TEST_F(BuildTest, Make_FreshProject_CompilesAndLinksByTheTablesLines) {
  build.Add("src/a.cpp", cMain);
  build.Add("b.c", "");
  build.Add("a.h", "");
  theIdeConfig.toolSets[0].flags = "-fset";
  build.project.linkLibs = "-lm";
  build.acts.OnCommand(cMakeCommand);
  const auto calls = build.tools.Take();
  const std::string flags = "-I" + Root() + "/mylib -I" + Root() + "/libs/basic";
  ASSERT_EQ(calls.size(), 3u);
  EXPECT_EQ(Arguments(calls[0]), "-c -O2 " + flags + " -fset src/a.cpp -o out-rel/a.o");
  EXPECT_EQ(Arguments(calls[1]), "-c -O2 " + flags + " -fset b.c -o out-rel/b.o");
  EXPECT_EQ(Arguments(calls[2]),
            "-o p.exe a.o b.o -L" + Root() + "/mylib -L" + Root() + "/libs -lm -s");
  EXPECT_EQ(calls[0][0], "g++");
  EXPECT_EQ(calls[1][0], "gcc");
  EXPECT_TRUE(build.files.Exists("out-rel/p.exe"));
}

TEST_F(BuildTest, Make_LogsEachStepWithItsLineAndTime) {
  const ProjectFile& file = build.Add("a.cpp", cMain);
  build.tools.Order("g++", "print hello\n");
  build.acts.OnCommand(cMakeCommand);
  EXPECT_THAT(Output(),
              testing::MatchesRegex("\r\n------ Compiling --> " + file.name + "\r\n" +
                                    "\r\n------ .*tools/g\\+\\+  -c .* -o out-rel/a\\.o --> \r\n" +
                                    "hello\r\n\\[[0-9]+\\]\r\n" +
                                    "\r\n------ Linking --> .*tools/g\\+\\+  -o p\\.exe .*\r\n" +
                                    "hello\r\n\\[[0-9]+\\]\r\n" +
                                    "\r\n------ Build time \\[s\\]: --> [0-9]+\r\n" +
                                    "\r\n------ Build succeeded  errors: 0  warnings: 0 --> \r\n"));
}

TEST_F(BuildTest, Make_PreparesTheWindowInOrder) {
  build.acts.OnCommand(cMakeCommand);
  EXPECT_THAT(build.shell.events, ElementsAre("clear output", "pump", "page output", "clear rows",
                                              "stop 1405", "remove mark", "save", "stop -1"));
  EXPECT_TRUE(build.files.Exists("out-rel"));
}

TEST_F(BuildTest, Make_Succeeds_SaysSoInTheStatusLineToo) {
  build.Add("a.cpp", cMain);
  build.acts.OnCommand(cMakeCommand);
  EXPECT_EQ(build.shell.status, "Build succeeded  errors: 0  warnings: 0");
}

TEST_F(BuildTest, Make_UnchangedBuild_PrintsTheSummaryWithoutAnyTool) {
  build.Add("a.cpp", cMain);
  build.Add("b.cpp", "");
  build.BuildAndAge();
  build.acts.OnCommand(cMakeCommand);
  build.acts.OnCommand(cMakeCommand);
  EXPECT_THAT(build.tools.Take(), IsEmpty());
  EXPECT_THAT(Output(), EndsWith("------ Build succeeded  errors: 0  warnings: 0 --> \r\n"));
}

TEST_F(BuildTest, Make_HeaderTwoDeepTouched_CompilesOnlyWhatIncludesIt) {
  build.Add("deep.h", "");
  build.Add("near.h", "#include \"deep.h\"\n");
  build.Add("a.cpp", "#include \"near.h\"\n");
  build.Add("b.cpp", "");
  build.Add("c.cpp", "#include \"deep.h\"\n");
  build.BuildAndAge();
  test::SetTime(build.Path("deep.h"), 9);
  build.builder.Build(Builder::Scope::cStale);
  EXPECT_THAT(build.tools.TakeNames(), ElementsAre("g++ a.cpp", "g++ c.cpp", "g++ p.exe"));
}

TEST_F(BuildTest, Make_TellsTheObserverWhatIsStaleAndWhy) {
  build.Add("a.h", "");
  build.Add("a.cpp", "#include \"a.h\"\n");
  build.BuildAndAge();
  test::SetTime(build.Path("a.h"), 7);
  std::vector<std::string> reasons;
  build.builder.SetStaleObserver([&reasons](const std::string& file, const std::string& reason) {
    reasons.push_back(file + ": " + reason.substr(0, reason.find(" by ")));
  });
  build.builder.Build(Builder::Scope::cStale);
  EXPECT_THAT(reasons, ElementsAre("a.cpp: a.h is newer than out-rel/a.o",
                                   "p.exe: out-rel/a.o is newer than out-rel/p.exe"));
}

TEST_F(BuildTest, Make_ObjectNewerThanTheProgram_LinksOnly) {
  build.Add("a.cpp", cMain);
  build.BuildAndAge();
  test::SetTime(build.Path("out-rel/a.o"), 8);
  build.builder.Build(Builder::Scope::cStale);
  EXPECT_THAT(build.tools.TakeNames(), ElementsAre("g++ p.exe"));
}

TEST_F(BuildTest, Rebuild_RunsEveryTool) {
  build.Add("a.cpp", cMain);
  build.Add("b.c", "");
  build.BuildAndAge();
  build.acts.OnCommand(cRebuildCommand);
  EXPECT_THAT(build.tools.TakeNames(), ElementsAre("g++ a.cpp", "gcc b.c", "g++ p.exe"));
}

TEST_F(BuildTest, DebugMode_HasItsOwnFolderAndSwitches) {
  build.Add("a.cpp", cMain);
  build.project.SetMode(cDebug);
  build.builder.Build(Builder::Scope::cStale);
  const auto calls = build.tools.Take();
  EXPECT_THAT(Arguments(calls.at(0)), testing::StartsWith("-c -g "));
  EXPECT_THAT(Arguments(calls.at(0)), EndsWith(" -o out-dbg/a.o"));
  EXPECT_THAT(Arguments(calls.at(1)), EndsWith(" -g"));
}

TEST_F(BuildTest, OutName_ReplacesTheTarget) {
  build.Add("a.cpp", cMain);
  build.project.outName = "tool";
  build.BuildAndAge();
  test::SetTime(build.Path("out-rel/tool"), 3);
  EXPECT_TRUE(build.files.Exists("out-rel/tool"));
  build.builder.Build(Builder::Scope::cStale);
  EXPECT_THAT(build.tools.Take(), IsEmpty());
}

TEST_F(BuildTest, GccSetSeven_CompilesAndLinksWithSetZero) {
  build.Add("a.cpp", cMain);
  theIdeConfig.toolSets[0].flags = "-fzero";
  theIdeConfig.toolSets[1].folder = theIdeConfig.toolSets[2].folder = "/nowhere";
  build.project.current->gcc = 7;
  build.builder.Build(Builder::Scope::cStale);
  const auto calls = build.tools.Take();
  ASSERT_EQ(calls.size(), 2u);
  EXPECT_THAT(calls[0], Contains("-fzero"));
}

// The second one finds an object that is newer than itself.
TEST_F(BuildTest, MissingObject_IsStale) {
  build.Add("a.cpp", cMain);
  build.Add("b.cpp", "");
  build.BuildAndAge();
  unlink(build.Path("out-rel/b.o").c_str());
  build.builder.Build(Builder::Scope::cStale);
  EXPECT_THAT(build.tools.TakeNames(), ElementsAre("g++ b.cpp", "g++ p.exe"));
}

TEST_F(BuildTest, ProjectWithoutFiles_Succeeds) {
  EXPECT_TRUE(build.builder.Build(Builder::Scope::cStale));
  EXPECT_THAT(build.tools.Take(), IsEmpty());
}

// Group: errors and warnings.

TEST_F(BuildTest, CompileError_EndsTheBuildAndShowsTheFirstRow) {
  build.Add("a.cpp", cMain);
  build.Add("b.cpp", "");
  build.tools.Order("g++", "print a.cpp:3:1: error: bad\nexit 1\n");
  build.acts.OnCommand(cMakeCommand);
  EXPECT_THAT(build.tools.TakeNames(), ElementsAre("g++ a.cpp"));
  EXPECT_THAT(build.shell.rows, ElementsAre("a.cpp:3: error: bad"));
  EXPECT_THAT(dialogs.texts,
              ElementsAre("Information: There ware errors!  errors: 1  warnings: 0"));
  EXPECT_EQ(build.shell.events.back(), "error 0");
  EXPECT_THAT(Output(), Not(HasSubstr("Build time")));
}

TEST_F(BuildTest, Warnings_AreCountedAndDoNotEndTheBuild) {
  build.Add("a.cpp", cMain);
  build.tools.Order("g++", "print a.cpp:3:7: warning: odd\nprint   more\nexit 0\n");
  build.acts.OnCommand(cMakeCommand);
  EXPECT_THAT(build.shell.rows.at(0), "a.cpp:3: warning: odd  more");
  EXPECT_EQ(build.shell.columns.at(0), 7);
  EXPECT_THAT(Output(), HasSubstr("Build succeeded  errors: 0  warnings: 1"));
}

TEST_F(BuildTest, RowsOfFilesInTheProjectsFolder_AreRelative) {
  build.Add("a.cpp", cMain);
  build.tools.Order("g++", "print " + build.Path("inc/a.h") + ":3:1: warning: odd\n");
  build.builder.Build(Builder::Scope::cStale);
  EXPECT_EQ(build.shell.rows.at(0), "inc/a.h:3: warning: odd");
}

TEST_F(BuildTest, EachBuild_StartsWithFreshCountsAndNoPendingNote) {
  build.Add("a.cpp", cMain);
  build.tools.Order("g++", "print a.cpp:3: error: x\nprint a.cpp:3: note: left over\n");
  build.builder.Build(Builder::Scope::cStale);
  build.tools.Order("g++", "print a.cpp:4: error: y\n");
  build.builder.Build(Builder::Scope::cAll);
  EXPECT_THAT(build.shell.rows, ElementsAre("a.cpp:4: error: y"));
  EXPECT_EQ(build.builder.errorCount, 1);
}

TEST_F(BuildTest, LinkerCannotFindALibraryAndEndsWithZero_Succeeds) {
  build.Add("a.cpp", cMain);
  build.tools.Order("g++", "when p.exe\nprint ld: cannot find -lx\n");
  build.acts.OnCommand(cMakeCommand);
  EXPECT_THAT(build.shell.rows, ElementsAre("LINKER:0: ld: cannot find -lx"));
  EXPECT_THAT(Output(), HasSubstr("Build succeeded  errors: 0"));
}

TEST_F(BuildTest, UndefinedReference_IsCounted) {
  build.Add("a.cpp", cMain);
  build.tools.Order("g++", "when p.exe\nprint ld: a.o: undefined reference to `f'\nexit 1\n");
  EXPECT_FALSE(build.builder.Build(Builder::Scope::cStale));
  EXPECT_THAT(build.shell.rows, ElementsAre(" a.o:0: LINKER:  a.o: undefined reference to `f'"));
}

TEST_F(BuildTest, Link_ShowsTheErrorPage) {
  build.Add("a.cpp", cMain);
  build.builder.Build(Builder::Scope::cStale);
  EXPECT_THAT(build.shell.events, Contains("page error"));
}

// Group: compile one file.

TEST_F(BuildTest, CompileFile_OfTheActiveTab_IsForced) {
  build.Add("a.cpp", cMain);
  build.Add("b.cpp", "");
  build.BuildAndAge();
  build.shell.activeFile = build.Path("b.cpp");
  build.acts.OnCommand(cCompileFileCommand);
  EXPECT_THAT(build.tools.TakeNames(), ElementsAre("g++ b.cpp"));
  EXPECT_THAT(Output(), HasSubstr("Build succeeded"));
}

TEST_F(BuildTest, CompileFile_TabOutsideTheProject_SaysThatNothingIsCompiled) {
  build.shell.activeFile = build.files.Write("outside.cpp", cMain);
  build.acts.OnCommand(cCompileFileCommand);
  EXPECT_THAT(build.tools.Take(), IsEmpty());
  EXPECT_EQ(build.shell.status, "Nothing compiled: outside.cpp is not in the project");
  EXPECT_THAT(Output(), AllOf(HasSubstr(build.shell.status), Not(HasSubstr("Build succeeded"))));
}

TEST_F(BuildTest, CompileFile_WithoutATab_SaysThatNothingIsCompiled) {
  build.acts.OnCommand(cCompileFileCommand);
  EXPECT_EQ(build.shell.status, "Nothing compiled: no file is open");
}

TEST_F(BuildTest, CompileFile_Header_IsARowThatIsNotCounted) {
  build.Add("a.h", "");
  build.shell.activeFile = build.Path("a.h");
  build.acts.OnCommand(cCompileFileCommand);
  EXPECT_THAT(build.shell.rows, ElementsAre("a.h:0:  -> unsupported source file"));
  EXPECT_EQ(build.builder.errorCount, 0);
  EXPECT_EQ(build.shell.status, "Nothing compiled: a.h is neither C nor C++");
  EXPECT_EQ(build.shell.events.back(), "page error");
}

// Group: kinds of projects.

TEST(BuildKinds, StaticLib_ArchivesInsideTheOutputFolder) {
  test::TestBuild build("libp.zpj", cStaticLib);
  build.Add("a.cpp", "");
  build.Add("b.c", "");
  EXPECT_TRUE(build.builder.Build(Builder::Scope::cStale));
  const auto calls = build.tools.Take();
  ASSERT_EQ(calls.size(), 3u);
  EXPECT_THAT(calls[2], ElementsAre("ar", "-r", "libp.a", "a.o", "b.o"));
  EXPECT_TRUE(build.files.Exists("out-rel/libp.a"));
  EXPECT_EQ(std::filesystem::current_path(), build.files.Path());
  EXPECT_THAT(build.shell.output, HasSubstr("------ Creating static lib --> "));
}

TEST(BuildKinds, StaticLib_AnyRow_MakesTheBuildFail) {
  test::TestBuild build("libp.zpj", cStaticLib);
  build.Add("a.cpp", "");
  build.tools.Order("ar", "print ar: an error\n");
  EXPECT_FALSE(build.builder.Build(Builder::Scope::cStale));
  EXPECT_THAT(build.shell.rows, ElementsAre("AR: :0: ar: an error"));
  EXPECT_EQ(build.builder.errorCount, 0);
  EXPECT_EQ(build.shell.events.back(), "page error");
}

TEST(BuildKinds, DynamicLibAndOther_CompileAndStop) {
  for (int type : {cDynamicLib, cOther}) {
    test::TestBuild build("p.zpj", type);
    build.Add("a.cpp", "");
    EXPECT_TRUE(build.builder.Build(Builder::Scope::cStale));
    EXPECT_THAT(build.tools.TakeNames(), ElementsAre("g++ a.cpp"));
  }
}

TEST(BuildKinds, FormProject_CompilesTheFrameworksResource) {
  test::TestBuild build("p.zpj", cFormApplication);
  build.install.Write("libs/mavro/mavro.rc", "");
  build.Add("a.cpp", cMain);
  EXPECT_TRUE(build.builder.Build(Builder::Scope::cStale));
  const auto calls = build.tools.Take();
  ASSERT_EQ(calls.size(), 3u);
  const std::string root = build.install.Path();
  EXPECT_EQ(Arguments(calls[1]), "-i " + root +
                                     "/libs/mavro/mavro.rc -o out-rel/mavro.res -D "
                                     "_WIN32_WINNT=0x0501 -O coff -I " +
                                     root + "/libs/mavro");
  EXPECT_THAT(Arguments(calls[2]), HasSubstr("-o p.exe a.o mavro.res "));
}

TEST(BuildKinds, FormProjectWithItsOwnResource_DoesNotCompileTheFrameworks) {
  test::TestBuild build("p.zpj", cFormApplication);
  build.install.Write("libs/mavro/mavro.rc", "");
  build.Add("a.cpp", cMain);
  build.files.Write("res/p.rc", "");
  build.project.AddFile("res/p.rc");
  EXPECT_TRUE(build.builder.Build(Builder::Scope::cStale));
  const auto calls = build.tools.Take();
  ASSERT_EQ(calls.size(), 3u);
  EXPECT_THAT(Arguments(calls[1]), testing::StartsWith("-i res/p.rc -o out-rel/p.res "));
  EXPECT_THAT(Arguments(calls[2]), HasSubstr("-o p.exe a.o p.res "));
  EXPECT_THAT(Arguments(calls[2]), Not(HasSubstr("mavro.res")));
}

TEST(BuildKinds, NoResourceCompiler_ResourcesArePassedOver) {
  test::TestBuild build("p.zpj", cFormApplication);
  theIdeConfig.windres.clear();
  build.Add("a.cpp", cMain);
  build.files.Write("p.rc", "");
  build.project.AddFile("p.rc");
  EXPECT_TRUE(build.builder.Build(Builder::Scope::cStale));
  EXPECT_THAT(build.tools.TakeNames(), ElementsAre("g++ a.cpp", "g++ p.exe"));
}

TEST(BuildKinds, ResourceUpToDate_IsNotCompiledAgain) {
  test::TestBuild build;
  build.Add("a.cpp", cMain);
  build.files.Write("p.rc", "");
  build.project.AddFile("p.rc");
  build.BuildAndAge();
  build.builder.Build(Builder::Scope::cStale);
  EXPECT_THAT(build.tools.Take(), IsEmpty());
  test::SetTime(build.Path("p.rc"), 9);
  build.builder.Build(Builder::Scope::cStale);
  EXPECT_THAT(build.tools.TakeNames(), ElementsAre("windres p.rc", "g++ p.exe"));
}

TEST(BuildKinds, SingleFile_IsBuiltInOneStepWithoutLibraries) {
  test::TestBuild build;
  const std::string path = build.files.Write("one.c", cMain);
  build.project.OpenSingleFile(path);
  build.Add("two.c", "");
  EXPECT_TRUE(build.builder.Build(Builder::Scope::cStale));
  const auto calls = build.tools.Take();
  const std::string root = build.install.Path();
  ASSERT_EQ(calls.size(), 1u);
  EXPECT_EQ(calls[0][0], "gcc");
  EXPECT_EQ(Arguments(calls[0]),
            "-O2 -I" + root + "/mylib -I" + root + "/libs/basic -s one.c -o out-rel/one.exe");
  EXPECT_THAT(build.shell.output, HasSubstr("------ Building --> "));
}

TEST(BuildKinds, SingleFile_HasNoObjectAndIsAlwaysStale) {
  test::TestBuild build;
  build.project.OpenSingleFile(build.files.Write("one.cpp", cMain));
  build.builder.Build(Builder::Scope::cStale);
  build.builder.Build(Builder::Scope::cStale);
  EXPECT_EQ(build.tools.Take().size(), 2u);
}

TEST(BuildKinds, SingleFileInDebugMode_IsNotStripped) {
  test::TestBuild build;
  build.project.OpenSingleFile(build.files.Write("one.cpp", cMain));
  build.project.SetMode(cDebug);
  build.builder.Build(Builder::Scope::cStale);
  EXPECT_THAT(build.tools.Take().at(0), Not(Contains("-s")));
}

TEST(BuildKinds, SourceInFrontWithoutAProject_IsBuiltAlone) {
  test::TestBuild build;
  build.project.Clear();
  build.shell.activeFile = build.files.Write("one.cpp", cMain);
  build.acts.OnCommand(cMakeCommand);
  EXPECT_THAT(build.tools.TakeNames(), ElementsAre("g++ one.cpp"));
  EXPECT_EQ(build.shell.status, "Build succeeded  errors: 0  warnings: 0");
  EXPECT_TRUE(build.project.implicit);

  build.shell.activeFile = build.files.Write("sub/two.c", cMain);
  build.acts.OnCommand(cRebuildCommand);
  EXPECT_THAT(build.tools.TakeNames(), ElementsAre("gcc two.c"));
  EXPECT_TRUE(build.files.Exists("sub/out-rel/two.exe"));

  build.shell.activeFile = build.files.Write("sub/two.h", "");
  build.acts.OnCommand(cMakeCommand);
  EXPECT_THAT(build.tools.TakeNames(), ElementsAre("gcc two.c"));
}

TEST(BuildKinds, TextInFrontWithoutAProject_BuildsNothing) {
  test::TestBuild build;
  build.project.Clear();
  for (const char* path : {"", "/x/notes.txt", "/x/a.h"}) {
    build.shell.activeFile = path;
    build.acts.OnCommand(cMakeCommand);
  }
  EXPECT_FALSE(build.project.isOpen);
  EXPECT_THAT(build.tools.Take(), IsEmpty());
}

TEST_F(BuildTest, SourceInFrontBesideAProject_IsNotBuiltAlone) {
  build.Add("a.cpp", cMain);
  build.shell.activeFile = build.files.Write("other/b.cpp", cMain);
  build.acts.OnCommand(cMakeCommand);
  EXPECT_THAT(build.tools.TakeNames(), ElementsAre("g++ a.cpp", "g++ p.exe"));
}

TEST(BuildKinds, SingleFileThatDoesNotLink_HasRowsOfTheSource) {
  test::TestBuild build;
  build.project.OpenSingleFile(build.files.Write("one.c", cMain));
  build.tools.Order("gcc",
                    "print /usr/bin/ld: /tmp/cc1.o: in function `main':\n"
                    "print one.c:(.text+0x9): undefined reference to `f'\n"
                    "print collect2: error: ld returned 1 exit status\nexit 1\n");
  EXPECT_FALSE(build.builder.Build(Builder::Scope::cStale));
  EXPECT_EQ(build.builder.Errors(), 1);
  ASSERT_EQ(build.shell.rows.size(), 3u);
  EXPECT_EQ(build.shell.rows[1], "one.c:0: LINKER: (.text+0x9): undefined reference to `f'");
}

TEST(BuildKinds, ImplicitProjectWithoutFiles_DoesNothing) {
  test::TestBuild build;
  build.project.implicit = true;
  EXPECT_TRUE(build.builder.Build(Builder::Scope::cStale));
  EXPECT_THAT(build.tools.Take(), IsEmpty());
}

// Group: clearing.

TEST_F(BuildTest, ClearOutput_DeletesObjectsAndResourcesOnly) {
  build.Add("a.cpp", cMain);
  build.builder.Build(Builder::Scope::cStale);
  for (const char* name : {"out-rel/p.res", "out-rel/keep.txt", "out-rel/b.obj", "out-dbg/a.o"})
    build.files.Write(name, "");
  build.files.Folder("out-rel/dir.o");
  build.acts.OnCommand(cClearOutputCommand);
  for (const char* gone : {"out-rel/a.o", "out-rel/p.res"})
    EXPECT_FALSE(build.files.Exists(gone)) << gone;
  for (const char* kept : {"out-rel/p.exe", "out-rel/keep.txt", "out-rel/b.obj", "out-rel/dir.o",
                           "out-dbg/a.o", "a.cpp"})
    EXPECT_TRUE(build.files.Exists(kept)) << kept;
}

TEST_F(BuildTest, ClearOutput_LeavesTheEditorsMark) {
  build.acts.OnCommand(cClearOutputCommand);
  EXPECT_THAT(build.shell.events, ElementsAre("clear output", "pump", "page output", "clear rows",
                                              "stop 1405", "stop -1"));
}

TEST_F(BuildTest, ClearOutput_ThenMake_BuildsAll) {
  build.Add("a.cpp", cMain);
  build.BuildAndAge();
  build.acts.OnCommand(cClearOutputCommand);
  build.builder.Build(Builder::Scope::cStale);
  EXPECT_THAT(build.tools.TakeNames(), ElementsAre("g++ a.cpp", "g++ p.exe"));
}

// Group: names that splitters, shells and tools stumble over.

const char* const cEvilStems[] = {
    "a b",      "a  b",  " a",     "a ",         "a\tb",
    "a\"b",     "\"",    "\"\"",   "a\"\"b",     "a'b",
    "'",        "$HOME", "a$(x)b", "${x}",       "`x`",
    "a`b",      "a;b",   ";",      "a&b",        "&&",
    "a|b",      "a<b",   "a>b",    "a#b",        "#",
    "a:b",      ":",     "a@b",    "@",          "@list",
    "a%b",      "%s%n",  "%1",     "-o",         "-",
    "--help",   "-Wl,x", "a\nb",   "\n",         "a\rb",
    "a*b",      "?",     "[a]",    "{a,b}",      "(a)",
    "~",        "!a",    "^a",     "a=b",        "a,b",
    "+a",       "a..b",  "..a",    "\x01\x1b[m", "\xc3\xa4\xe2\x82\xac",
    "\xff\xfe", "\xc3",  "a\x7f",  "%{x}",       "a \"b\" -o c"};

class EvilNames : public testing::TestWithParam<const char*> {};

std::string Bare(const std::string& name) {
  return name.starts_with("./") ? name.substr(2) : name;
}

TEST_P(EvilNames, NoArgumentIsCutOrTakenForAnOption) {
  const std::string stem = GetParam();
  test::ScriptedDialogs dialogs;
  test::TestBuild build;
  build.Add(stem + ".cpp", cMain);
  build.project.outName = stem + ".exe";
  ASSERT_TRUE(build.builder.Build(Builder::Scope::cStale))
      << testing::PrintToString(build.shell.rows);
  const auto calls = build.tools.Take();
  ASSERT_EQ(calls.size(), 2u);
  const auto& compile = calls[0];
  ASSERT_EQ(compile.size(), 8u);
  EXPECT_EQ(Bare(compile[5]), stem + ".cpp");
  EXPECT_EQ(compile[7], "out-rel/" + stem + ".o");
  const auto& link = calls[1];
  ASSERT_EQ(link.size(), 7u);
  EXPECT_EQ(Bare(link[2]), stem + ".exe");
  EXPECT_EQ(Bare(link[3]), stem + ".o");
  for (const std::string& name : {compile[5], link[2], link[3]})
    EXPECT_FALSE(name.starts_with('-') || name.starts_with('@')) << name;
  EXPECT_TRUE(build.files.Exists("out-rel/" + stem + ".exe"));
}

TEST_P(EvilNames, ArchivesTakeThemToo) {
  const std::string stem = GetParam();
  test::TestBuild build(stem + ".zpj", cStaticLib);
  build.Add(stem + ".c", "");
  ASSERT_TRUE(build.builder.Build(Builder::Scope::cStale))
      << testing::PrintToString(build.shell.rows);
  const auto calls = build.tools.Take();
  ASSERT_EQ(calls.size(), 2u);
  ASSERT_EQ(calls[1].size(), 4u);
  EXPECT_EQ(Bare(calls[1][2]), stem + ".a");
  EXPECT_EQ(Bare(calls[1][3]), stem + ".o");
}

INSTANTIATE_TEST_SUITE_P(Table, EvilNames, testing::ValuesIn(cEvilStems),
                         [](const auto& info) { return "name" + std::to_string(info.index); });

TEST(BuildNames, Backslash_IsAFolderSeparatorOfProjects) {
  test::TestBuild build;
  build.Add("src/a.cpp", cMain);
  build.project.AddFile("src\\b.cpp");
  EXPECT_FALSE(build.builder.Build(Builder::Scope::cStale));
  EXPECT_THAT(build.shell.rows, ElementsAre("src/b.cpp:0:  -> it can't be read"));
}

TEST(BuildNames, InstallationInAFolderWithBlanks_Works) {
  test::TestBuild build;
  const std::string root = build.install.Folder("my zendry");
  const test::FakeTools tools(root + "/tools");
  theIdeConfig.appDir = root + "/bin/";
  build.Add("a.cpp", cMain);
  ASSERT_TRUE(build.builder.Build(Builder::Scope::cStale));
  const auto calls = tools.Take();
  ASSERT_EQ(calls.size(), 2u);
  EXPECT_THAT(calls[0], Contains("-I" + root + "/libs/basic"));
  EXPECT_THAT(calls[1], Contains("-L" + root + "/libs"));
}

}  // namespace
}  // namespace zendry
