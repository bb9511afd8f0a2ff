#include "build/CommandLines.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "CommandLine.h"
#include "ScopedVariable.h"
#include "TempFolder.h"
#include "config/IdeConfig.h"
#include "project/Project.h"

namespace zendry {
namespace {

struct ConfigScope {
  ConfigScope() : saved(theIdeConfig) {
    theIdeConfig = {};
    theIdeConfig.appDir = "/opt/zendry/bin/";
  }
  ~ConfigScope() { theIdeConfig = saved; }
  IdeConfig saved;
};

TEST(ExpandMacros, At_IsTheRootWithoutSlash) {
  EXPECT_EQ(ExpandMacros("-I@/libs -L@/x@", "/opt/z"), "-I/opt/z/libs -L/opt/z/x/opt/z");
  EXPECT_EQ(ExpandMacros("", "/opt/z"), "");
  EXPECT_EQ(ExpandMacros("-I@/libs", ""), "-I/libs");
}

TEST(ExpandMacros, Backquotes_GiveTheirTextUnchanged) {
  EXPECT_EQ(ExpandMacros("a `x @ y` b@", "/r"), "a x @ y b/r");
  EXPECT_EQ(ExpandMacros("``", "/r"), "");
}

TEST(ExpandMacros, NewlineAtTheEndOfAQuotedResult_BecomesABlank) {
  EXPECT_EQ(ExpandMacros("a`-lx\n`b", "/r"), "a-lx b");
  EXPECT_EQ(ExpandMacros("a`-lx\n\n`b", "/r"), "a-lx\n b");
}

TEST(ExpandMacros, LoneBackquote_IsDropped) {
  EXPECT_EQ(ExpandMacros("a`b", "/r"), "ab");
  EXPECT_EQ(ExpandMacros("a`b`c`@", "/r"), "abc/r");
}

TEST(ExpandMacros, Hook_GetsTheTextAndGivesTheResult) {
  const MacroHook hook = [](std::string_view text) { return "<" + std::string(text) + ">\n"; };
  EXPECT_EQ(ExpandMacros("a`b c`d", "/r", hook), "a<b c> d");
}

TEST(ExpandMacros, QuotedParts_FollowEachOther) {
  const MacroHook hook = [](std::string_view text) { return "<" + std::string(text) + ">"; };
  EXPECT_EQ(ExpandMacros("`a`b`c`", "/r", hook), "<a>b<c>");
}

TEST(ExpandMacros, RootWithBlanks_KnowsWhetherItStandsInQuotes) {
  const std::pair<const char*, const char*> rows[] = {
      {"@", "\"/a b\""},
      {"x@/y", "x\"/a b\"/y"},
      {"xy@", "xy\"/a b\""},
      {"\"@\"", "\"/a b\""},
      {"\"x@\"y@", "\"x/a b\"y\"/a b\""},
      {"\\\"@", "\\\"\"/a b\""},
      {"\\\\\"@\"", "\\\\\"/a b\""},
      {"\\x\"@\"", "\\x\"/a b\""},
  };
  for (const auto& [text, expanded] : rows) EXPECT_EQ(ExpandMacros(text, "/a b"), expanded) << text;
}

TEST(ExpandMacros, RootWithBlanks_StaysOneArgument) {
  EXPECT_EQ(mavro::SplitCommandLine(ExpandMacros("-I@/libs -x", "/my dir")),
            (std::vector<std::string>{"-I/my dir/libs", "-x"}));
  EXPECT_EQ(mavro::SplitCommandLine(ExpandMacros("\"-I@/li bs\" -x", "/my \"dir")),
            (std::vector<std::string>{"-I/my \"dir/li bs", "-x"}));
}

TEST(ExpandResourcePath, ReplacesEachAtAndNothingElse) {
  EXPECT_EQ(ExpandResourcePath("@/a`b`@", "/r"), "/r/a`b`/r");
}

TEST(MacroRoot, IsTheParentOfTheProgramsFolder) {
  EXPECT_EQ(MacroRoot("/opt/zendry/bin/"), "/opt/zendry");
  EXPECT_EQ(MacroRoot("/bin/"), "");
}

TEST(ObjectPath, BaseNameWithChangedExtensionInTheOutputFolder) {
  EXPECT_EQ(ObjectPath("out-rel", "src/a.cpp", "o"), "out-rel/a.o");
  EXPECT_EQ(ObjectPath("out-dbg", "/p/src/a.b.c", "exe"), "out-dbg/a.b.exe");
  EXPECT_EQ(ObjectPath("out-rel", "noextension", "o"), "out-rel/noextension");
  EXPECT_EQ(ObjectPath("out-rel", "", "o"), "out-rel/Noname");
}

TEST(ToolPath, EmptyFolder_IsTheToolAlone) {
  const ConfigScope scope;
  EXPECT_EQ(ToolPath(theIdeConfig, 0, "g++"), "g++");
}

TEST(ToolPath, AtStandsForTheInstallRoot) {
  const ConfigScope scope;
  theIdeConfig.toolSets[1].folder = "@/tools";
  theIdeConfig.toolSets[2].folder = "/usr/bin";
  EXPECT_EQ(ToolPath(theIdeConfig, 1, "ar"), "/opt/zendry/tools/ar");
  EXPECT_EQ(ToolPath(theIdeConfig, 2, "ar"), "/usr/bin/ar");
}

TEST(ResourceToolPath, SetWithAFolder_IsTheToolOfThatFolder) {
  const ConfigScope scope;
  theIdeConfig.toolSets[0].folder = "@/tools";
  theIdeConfig.toolSets[1].folder = "/opt/other";
  EXPECT_EQ(ResourceToolPath(theIdeConfig, 1), "/opt/other/windres");
}

TEST(ResourceToolPath, SetOfThePath_TakesTheToolThereOrElseThatOfTheFirstSet) {
  const ConfigScope scope;
  theIdeConfig.toolSets[0].folder = "@/tools";
  test::TempFolder folder;
  const test::ScopedVariable path("PATH", "/nowhere::" + folder.Path());
  EXPECT_EQ(ResourceToolPath(theIdeConfig, 1), "/opt/zendry/tools/windres");
  std::filesystem::permissions(folder.Write("windres", ""), std::filesystem::perms::owner_all);
  EXPECT_EQ(ResourceToolPath(theIdeConfig, 1), "windres");
}

TEST(CompilerSet, NumbersOfNoSet_AreSetZero) {
  EXPECT_EQ(CompilerSet(2), 2);
  EXPECT_EQ(CompilerSet(3), 0);
  EXPECT_EQ(CompilerSet(7), 0);
  EXPECT_EQ(CompilerSet(-1), 0);
  EXPECT_EQ(CompilerSet(INT32_MIN), 0);
}

TEST(FileArgument, OrdinaryNames_StandAsTheyAre) {
  for (const char* name : {"a.cpp", "src/a.cpp", "/p/a.cpp", "../a-b@c.cpp", "a$b`c;d&e#f%g.cpp"})
    EXPECT_EQ(FileArgument(name), name);
}

TEST(FileArgument, NamesOfOptionsAndLists_GetAFolderInFront) {
  EXPECT_EQ(FileArgument("-o.cpp"), "./-o.cpp");
  EXPECT_EQ(FileArgument("@list.c"), "./@list.c");
}

TEST(FileArgument, EvilNames_ArriveAsOneArgument) {
  for (const std::string name : {"a b", "a\tb", "a\"b", "a\\\"b", "a b\\", "\\\\\"", "a\nb", "-a b",
                                 "@\"", " ", "\"\"", "\xff \xfe", "%1 $x"}) {
    const auto arguments = mavro::SplitCommandLine("g++  " + FileArgument(name) + " -o x");
    ASSERT_EQ(arguments.size(), 4u) << name;
    EXPECT_TRUE(arguments[1] == name || arguments[1] == "./" + name) << name;
  }
}

// One row of the table each, byte for byte.

TEST(CompileLine, Text) {
  EXPECT_EQ(CompileLine({.tool = "/t/g++",
                         .options = "-O2 -Wall",
                         .includeFlags = "-I/r/mylib -I/r/libs/basic ",
                         .setFlags = "-fset",
                         .source = "src/a.cpp",
                         .object = "out-rel/a.o"}),
            "/t/g++  -c -O2 -Wall -I/r/mylib -I/r/libs/basic  -fset  src/a.cpp -o out-rel/a.o");
}

TEST(CompileLine, NoOutputFolder_NoOutputOption) {
  EXPECT_EQ(CompileLine({"g++", "-g", "-I. ", "", "a.cpp", ""}), "g++  -c -g -I.    a.cpp");
}

TEST(SingleFileLine, Text) {
  EXPECT_EQ(SingleFileLine({.tool = "gcc",
                            .options = "-O2",
                            .includeFlags = "-I/r ",
                            .strip = true,
                            .source = "a.c",
                            .program = "out-rel/a.exe"}),
            "gcc -O2 -I/r  -s   a.c -o out-rel/a.exe");
  EXPECT_EQ(SingleFileLine({"gcc", "-g", "-I/r ", false, "a.c", "out-dbg/a.exe"}),
            "gcc -g -I/r   a.c -o out-dbg/a.exe");
}

TEST(ResourceLine, Text) {
  EXPECT_EQ(ResourceLine({.tool = "windres",
                          .script = "p.rc",
                          .object = "out-rel/p.res",
                          .options = "-D _WIN32_WINNT=0x0501 -O coff",
                          .setFlags = "-fset",
                          .frameworkFlags = " -I /r/libs/mavro"}),
            "windres  -i p.rc -o out-rel/p.res -D _WIN32_WINNT=0x0501 -O coff -fset -I "
            "/r/libs/mavro");
}

TEST(LinkLine, Text) {
  EXPECT_EQ(LinkLine({.tool = "/t/g++",
                      .output = "p.exe",
                      .objects = " a.o b.o",
                      .libFlags = "-L/r/mylib -L/r/libs  ",
                      .options = "-s"}),
            "/t/g++  -o p.exe  a.o b.o -L/r/mylib -L/r/libs   -s");
}

TEST(ArchiveLine, Text) {
  EXPECT_EQ(ArchiveLine({.tool = "/t/ar", .target = "libp.a", .objects = " a.o b.o"}),
            "/t/ar -r libp.a  a.o b.o");
}

TEST(CommandLines, ToolInAFolderWithBlanks_IsOneArgument) {
  EXPECT_EQ(mavro::SplitCommandLine(ArchiveLine({"/my tools/ar", "p.a", " a.o"}))[0],
            "/my tools/ar");
}

struct FlagsTest : testing::Test {
  ConfigScope scope;
  Project project;
  FlagsTest() {
    project.includePath = "-I@/mylib";
    project.linkerPath = "-L@/mylib";
    project.linkLibs = "-lm @x";
    theIdeConfig.libSets["mavro"] = {false, "-I@/libs/mavro/include", "-L@/libs/mavro -lmavro"};
    theIdeConfig.libSets["`set`"] = {false, "-Iset", "-lset"};
    theIdeConfig.libSets[""] = {false, "-Inameless", "-lnameless"};
  }
};

TEST_F(FlagsTest, ComposeFlags_WithoutLibrarySet) {
  const ProjectFlags flags = ComposeFlags(project, theIdeConfig);
  EXPECT_EQ(flags.include, "-I/opt/zendry/mylib -I/opt/zendry/libs/basic ");
  EXPECT_EQ(flags.link, "-L/opt/zendry/mylib -L/opt/zendry/libs -lm @x ");
}

TEST_F(FlagsTest, ComposeFlags_FormProjectWithoutASet_TakesTheFramework) {
  project.type = cFormApplication;
  const ProjectFlags flags = ComposeFlags(project, theIdeConfig);
  EXPECT_EQ(flags.include,
            "-I/opt/zendry/mylib -I/opt/zendry/libs/basic -I/opt/zendry/libs/mavro/include");
  EXPECT_EQ(flags.link,
            "-L/opt/zendry/mylib -L/opt/zendry/libs -lm @x -L/opt/zendry/libs/mavro -lmavro");
}

TEST_F(FlagsTest, ComposeFlags_FirstUseOfASet_ExpandsItInPlace) {
  project.libSet = "mavro";
  ComposeFlags(project, theIdeConfig);
  EXPECT_TRUE(theIdeConfig.libSets["mavro"].expanded);
  EXPECT_EQ(theIdeConfig.libSets["mavro"].include, "-I/opt/zendry/libs/mavro/include");
  theIdeConfig.libSets["mavro"].link = "@kept";
  EXPECT_TRUE(ComposeFlags(project, theIdeConfig).link.ends_with(" @kept"));
}

TEST_F(FlagsTest, ComposeFlags_UnknownSet_AddsNothing) {
  project.type = cFormApplication;
  project.libSet = "gone";
  EXPECT_TRUE(ComposeFlags(project, theIdeConfig).include.ends_with("basic "));
}

}  // namespace
}  // namespace zendry
