#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include "BuildTest.h"
#include "ScopedVariable.h"
#include "build/BuildActs.h"
#include "build/ToolEnvironment.h"

// Runs of tools that fail without a line that counts as an error: the build still fails, once for
// each of them, and the list has a row for it.

namespace zendry {
namespace {

using test::BuildTest;
using test::cMain;
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

TEST_F(BuildTest, MissingTool_GivesTheRunnersMessageAndTheOtherSourcesAreCompiled) {
  build.Add("a.cpp", cMain);
  build.Add("b.c", "");
  unlink((Root() + "/tools/g++").c_str());
  build.acts.OnCommand(cMakeCommand);
  ASSERT_EQ(dialogs.texts.size(), 2u);
  EXPECT_THAT(dialogs.texts[0], testing::StartsWith("Compiler error: Error run: " + Root()));
  EXPECT_EQ(dialogs.texts[1], "Information: There ware errors!  errors: 1  warnings: 0");
  EXPECT_THAT(build.tools.TakeNames(), ElementsAre("gcc b.c"));
  EXPECT_THAT(build.shell.rows, ElementsAre("a.cpp:0:  -> g++ can't be started"));
  EXPECT_EQ(build.builder.errorCount, 0);
  EXPECT_EQ(build.shell.status, "There ware errors!  errors: 1  warnings: 0");
}

TEST_F(BuildTest, FailedToolWithoutARow_GetsOneWithItsLastLine) {
  build.Add("a.cpp", cMain);
  build.tools.Order("g++", "print first\nprint g++: error: unrecognized option\nprint  \nexit 4\n");
  EXPECT_FALSE(build.builder.Build(Builder::Scope::cStale));
  EXPECT_THAT(build.shell.rows,
              ElementsAre("a.cpp:0:  -> g++ ended with status 4: g++: error: unrecognized option"));
  EXPECT_EQ(build.builder.errorCount, 0);
  EXPECT_EQ(build.builder.Errors(), 1);
  EXPECT_THAT(Output(), HasSubstr("g++ ended with status 4\r\n"));
}

TEST_F(BuildTest, FailedToolThatPrintsNothing_GetsARowWithoutALine) {
  build.Add("a.cpp", cMain);
  build.tools.Order("g++", "exit 1\n");
  build.builder.Build(Builder::Scope::cStale);
  EXPECT_THAT(build.shell.rows, ElementsAre("a.cpp:0:  -> g++ ended with status 1"));
}

TEST_F(BuildTest, FailedToolWithARow_CountsOnceAndGetsNoOther) {
  build.Add("a.cpp", cMain);
  build.tools.Order("g++",
                    "print a.cpp:1:10: fatal error: x.h: No such file\n"
                    "print compilation terminated.\nexit 1\n");
  build.acts.OnCommand(cMakeCommand);
  EXPECT_THAT(build.shell.rows, ElementsAre("a.cpp:1: fatal error: x.h: No such file"));
  EXPECT_THAT(dialogs.texts,
              ElementsAre("Information: There ware errors!  errors: 1  warnings: 0"));
}

TEST_F(BuildTest, FailedToolWithACountedError_IsNotCountedAgain) {
  build.Add("a.cpp", cMain);
  build.tools.Order("g++", "print a.cpp:1: error: x\nexit 1\n");
  build.builder.Build(Builder::Scope::cStale);
  EXPECT_EQ(build.builder.Errors(), 1);
  EXPECT_THAT(build.shell.rows, ElementsAre("a.cpp:1: error: x"));
}

TEST_F(BuildTest, ErrorsInAnotherLanguage_FailTheBuild) {
  for (const char* word : {"Fehler", "\xd0\xbe\xd1\x88\xd0\xb8\xd0\xb1\xd0\xba\xd0\xb0",
                           "\xe3\x82\xa8\xe3\x83\xa9\xe3\x83\xbc"}) {
    test::TestBuild other;
    other.Add("a.cpp", cMain);
    other.tools.Order("g++", std::string("print a.cpp:1:1: ") + word + ": x\nexit 1\n");
    EXPECT_FALSE(other.builder.Build(Builder::Scope::cStale));
    EXPECT_EQ(other.builder.Errors(), 1) << word;
    EXPECT_EQ(other.shell.rows.size(), 1u) << word;
  }
}

TEST_F(BuildTest, TwoFailedTools_CountTwo) {
  build.Add("a.cpp", cMain);
  build.Add("b.cpp", "");
  build.tools.Order("g++", "exit 1\n");
  build.builder.Build(Builder::Scope::cStale);
  EXPECT_EQ(build.builder.Errors(), 2);
  EXPECT_THAT(build.tools.TakeNames(), ElementsAre("g++ a.cpp", "g++ b.cpp"));
}

TEST_F(BuildTest, AfterAFailedCompile_NothingIsLinked) {
  build.Add("a.cpp", cMain);
  build.BuildAndAge();
  build.tools.Order("g++", "when a.cpp\nexit 1\n");
  build.files.Write("a.cpp", "// changed\n");
  EXPECT_FALSE(build.builder.Build(Builder::Scope::cStale));
  EXPECT_THAT(build.tools.TakeNames(), ElementsAre("g++ a.cpp"));
}

TEST_F(BuildTest, LinkerCannotFindALibraryAndFails_IsCounted) {
  build.Add("a.cpp", cMain);
  build.tools.Order("g++", "when p.exe\nprint ld: cannot find -lx\nexit 1\nmute\n");
  build.acts.OnCommand(cMakeCommand);
  EXPECT_THAT(build.shell.rows, ElementsAre("LINKER:0: ld: cannot find -lx"));
  EXPECT_EQ(build.shell.status, "There ware errors!  errors: 1  warnings: 0");
}

TEST_F(BuildTest, LinkerFailsWithoutALine_ItsRowNamesTheProduct) {
  build.Add("a.cpp", cMain);
  build.tools.Order("g++", "when p.exe\nexit 1\n");
  EXPECT_FALSE(build.builder.Build(Builder::Scope::cStale));
  EXPECT_THAT(build.shell.rows, ElementsAre("p.exe:0:  -> g++ ended with status 1"));
}

TEST(FailedTools, Archiver_ItsRowNamesTheLibrary) {
  test::TestBuild build("libp.zpj", cStaticLib);
  build.Add("a.cpp", "");
  build.tools.Order("ar", "print ar: a.o: No such file\nexit 1\n");
  EXPECT_FALSE(build.builder.Build(Builder::Scope::cStale));
  EXPECT_THAT(build.shell.rows,
              ElementsAre("libp.a:0:  -> ar ended with status 1: ar: a.o: No such file"));
  EXPECT_EQ(build.builder.Errors(), 1);
}

TEST_F(BuildTest, ResourceCompilerFails_ItsRowNamesTheScriptAndNothingIsLinked) {
  build.Add("a.cpp", cMain);
  build.files.Write("p.rc", "x\n");
  build.project.AddFile("p.rc");
  theIdeConfig.windres = "windres";
  build.tools.Order("windres", "print windres: p.rc:1: syntax error\nexit 1\n");
  EXPECT_FALSE(build.builder.Build(Builder::Scope::cStale));
  EXPECT_THAT(
      build.shell.rows,
      ElementsAre("p.rc:0:  -> windres ended with status 1: windres: p.rc:1: syntax error"));
  EXPECT_THAT(build.tools.TakeNames(), ElementsAre("g++ a.cpp", "windres p.rc"));
}

TEST_F(BuildTest, KilledCompilerWithACountedError_KeepsItsRow) {
  build.Add("a.cpp", cMain);
  build.tools.Order("g++", "print a.cpp:1: error: x\nkill 9\n");
  EXPECT_FALSE(build.builder.Build(Builder::Scope::cStale));
  EXPECT_EQ(build.shell.rows.size(), 2u);
}

// Group: the row that is shown first.

TEST_F(BuildTest, FirstRowShown_IsTheFirstError) {
  build.Add("a.cpp", cMain);
  build.tools.Order("g++",
                    "print a.cpp:1: warning: w\nprint a.cpp:2: note: n\nprint a.cpp:3: error: "
                    "e\nprint a.cpp:4: error: f\nexit 1\n");
  build.acts.OnCommand(cMakeCommand);
  EXPECT_EQ(build.shell.events.back(), "error 2");
}

TEST_F(BuildTest, FirstRowShown_WithoutACountedError_IsTheFailedRunsFirstThatIsNoWarning) {
  build.Add("a.cpp", cMain);
  build.tools.Order("g++", "print a.cpp:1: warning: w\nprint a.cpp:3: fatal error: e\nexit 1\n");
  build.acts.OnCommand(cMakeCommand);
  EXPECT_EQ(build.shell.events.back(), "error 1");
}

TEST_F(BuildTest, FirstRowShown_RunThatWarnedBeforeItFailed_IsItsOwn) {
  build.Add("a.c", "");
  build.Add("b.cpp", cMain);
  build.tools.Order("gcc", "print a.c:1: warning: w\n");
  build.tools.Order("g++", "exit 1\n");
  build.acts.OnCommand(cMakeCommand);
  EXPECT_THAT(build.shell.rows,
              ElementsAre("a.c:1: warning: w", "b.cpp:0:  -> g++ ended with status 1"));
  EXPECT_EQ(build.shell.events.back(), "error 1");
}

// Group: names and places.

TEST_F(BuildTest, SourcesWithAColonOrBlanksInFront_HaveTheirRows) {
  for (const char* name : {"a:b.cpp", "  c.cpp"}) {
    test::TestBuild other;
    other.Add(name, cMain);
    other.tools.Order("g++", std::string("print ") + name + ":3:1: error: x\nexit 1\n");
    other.builder.Build(Builder::Scope::cStale);
    EXPECT_THAT(other.shell.rows, ElementsAre(std::string(name) + ":3: error: x"));
  }
}

TEST_F(BuildTest, LinkerLineWithAKnownSource_LeadsThere) {
  build.Add("a.cpp", cMain);
  const std::string line = "/usr/bin/ld: " + build.Path("a.cpp") + ":7: undefined reference to `f'";
  build.tools.Order("g++", "when p.exe\nprint " + line + "\nexit 1\n");
  build.builder.Build(Builder::Scope::cStale);
  EXPECT_THAT(build.shell.rows, ElementsAre("a.cpp:7: LINKER:  " + build.Path("a.cpp") +
                                            ":7: undefined reference to `f'"));
}

// Both ways in which the linker names a source without debug information.
TEST_F(BuildTest, LinkerLineWithASourceAndAnOffset_LeadsToTheSource) {
  build.Add("a.cpp", cMain);
  build.tools.Order("g++",
                    "when p.exe\n"
                    "print /usr/bin/ld: a.cpp:(.text+0x5): undefined reference to `f'\n"
                    "print a.cpp:(.text+0x9): undefined reference to `g'\n"
                    "print gone.cpp:(.text+0x9): undefined reference to `h'\nexit 1\n");
  build.builder.Build(Builder::Scope::cStale);
  EXPECT_THAT(build.shell.rows,
              ElementsAre("a.cpp:0: LINKER:  a.cpp:(.text+0x5): undefined reference to `f'",
                          "a.cpp:0: LINKER: (.text+0x9): undefined reference to `g'",
                          "(.text+0x9):0: LINKER: (.text+0x9): undefined reference to `h'"));
}

TEST_F(BuildTest, NoteLeftAtTheEndOfARun_ExtendsTheLastRow) {
  build.Add("a.cpp", cMain);
  build.tools.Order("g++", "print a.cpp:1: error: x\nprint a.cpp:1: note: y\nexit 1\n");
  build.builder.Build(Builder::Scope::cStale);
  EXPECT_THAT(build.shell.rows, ElementsAre("a.cpp:1: error: x note: y"));
}

// Group: what a build leaves out, and what it must not write.

TEST_F(BuildTest, ProjectWhoseFilesNobodyCompiles_SaysThatNothingWasBuilt) {
  build.Add("notes.txt", "");
  build.Add("b.asm", "");
  build.builder.Make(Builder::Scope::cStale);
  EXPECT_TRUE(build.tools.TakeNames().empty());
  EXPECT_EQ(build.shell.status, "Nothing built: no file of the project is compiled");
  EXPECT_THAT(Output(), AllOf(HasSubstr(build.shell.status), Not(HasSubstr("Build succeeded"))));
  build.Add("a.cpp", cMain);
  build.builder.Make(Builder::Scope::cStale);
  EXPECT_THAT(Output(), HasSubstr("Build succeeded"));
}

TEST_F(BuildTest, FilesThatNobodyCompiles_AreNamedInOneLine) {
  build.Add("a.cpp", cMain);
  build.Add("a.h", "");
  build.Add("notes.txt", "");
  build.Add("b.asm", "");
  build.builder.Build(Builder::Scope::cStale);
  EXPECT_THAT(Output(), HasSubstr("------ Not compiled --> notes.txt, b.asm\r\n"));
}

TEST(FailedTools, ProjectThatIsOnlyCompiled_SaysSo) {
  for (const int type : {cDynamicLib, cOther}) {
    test::TestBuild build("p.zpj", type);
    build.Add("a.cpp", cMain);
    EXPECT_TRUE(build.builder.Build(Builder::Scope::cStale));
    EXPECT_THAT(build.shell.output, HasSubstr("------ Not linked --> "));
  }
  test::TestBuild console;
  console.Add("a.cpp", cMain);
  console.builder.Build(Builder::Scope::cStale);
  EXPECT_THAT(console.shell.output,
              AllOf(Not(HasSubstr("Not linked")), Not(HasSubstr("Not compiled"))));
}

TEST_F(BuildTest, OutputThatIsTheProjectItsSessionOrItsScript_IsRefused) {
  build.Add("a.cpp", cMain);
  for (const char* name : {"p.zpj", "p.zend", "p.rc"}) {
    for (const char* file : {"p.zpj", "p.zend", "p.rc"}) build.files.Write(file, "mine");
    build.project.outName = std::string("../") + name;
    build.project.resourceFile = "p.rc";
    EXPECT_FALSE(build.builder.Build(Builder::Scope::cAll));
    EXPECT_THAT(build.shell.rows,
                ElementsAre("../" + std::string(name) +
                            ":0:  -> the output would overwrite a file of the project"));
    EXPECT_EQ(build.files.Read(name), "mine");
  }
}

TEST_F(BuildTest, OutputThatIsALinkToTheProject_IsRefused) {
  build.Add("a.cpp", cMain);
  build.files.Write("p.zpj", "mine");
  build.files.Folder("out-rel");
  std::filesystem::create_symlink("../p.zpj", build.Path("out-rel/p.exe"));
  EXPECT_FALSE(build.builder.Build(Builder::Scope::cAll));
  EXPECT_EQ(build.files.Read("p.zpj"), "mine");
}

// Group: the environment.

TEST(CompilerEnvironment, VariablesThatNameFolders_AreTakenAway) {
  setenv("LIBRARY_PATH", "/x", 1);
  setenv("C_INCLUDE_PATH", "", 1);
  ClearCompilerEnvironment();
  for (const char* name : {"LIBRARY_PATH", "CPLUS_INCLUDE_PATH", "C_INCLUDE_PATH"})
    EXPECT_EQ(getenv(name), nullptr);
}

TEST(ToolEnvironment, MessagesAreEnglishAndLettersTheUsers) {
  EXPECT_THAT(ToolEnvironment(nullptr), ElementsAre("LC_MESSAGES=C", "LANGUAGE", "LC_ALL"));
  EXPECT_THAT(ToolEnvironment(""), ElementsAre("LC_MESSAGES=C", "LANGUAGE", "LC_ALL"));
  EXPECT_THAT(ToolEnvironment("de_DE.UTF-8"),
              ElementsAre("LC_MESSAGES=C", "LANGUAGE", "LC_ALL", "LC_CTYPE=de_DE.UTF-8"));
}

TEST_F(BuildTest, Tools_GetThatEnvironment) {
  build.Add("a.cpp", cMain);
  const test::ScopedVariable all("LC_ALL", "de_DE.UTF-8"), language("LANGUAGE", "de");
  build.tools.Order("g++",
                    "when a.cpp\nenvironment LC_ALL\nenvironment LC_MESSAGES\nenvironment "
                    "LC_CTYPE\nenvironment LANGUAGE\n");
  build.builder.Build(Builder::Scope::cStale);
  EXPECT_THAT(Output(), HasSubstr("LC_ALL is not set\r\nLC_MESSAGES=C\r\nLC_CTYPE=de_DE.UTF-8\r\n"
                                  "LANGUAGE is not set\r\n"));
}

}  // namespace
}  // namespace zendry
