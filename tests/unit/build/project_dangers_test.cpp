#include "build/ProjectDangers.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "CommandLine.h"
#include "ScopedVariable.h"
#include "TempFolder.h"
#include "config/BuildSettings.h"
#include "config/IdeConfig.h"
#include "project/ImportCommands.h"
#include "project/Project.h"

namespace zendry {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class ProjectDangers : public testing::Test {
 protected:
  ProjectDangers() {
    theIdeConfig = {};
    theIdeConfig.appDir = "/opt/zendry/bin/";
    theBuildSettings = {};
    project.Init(files.Path("p.zpj"), cConsole);
  }
  ~ProjectDangers() override {
    theIdeConfig = {};
    theBuildSettings = {};
  }

  std::vector<std::string> Texts() const {
    std::vector<std::string> texts;
    for (const ProjectDanger& danger : FindDangers(project))
      texts.push_back(danger.place + ": " + danger.text);
    return texts;
  }
  std::vector<std::string> InCompile(const std::string& switches) {
    project.debugOptions.comp = switches;
    std::vector<std::string> texts;
    for (const ProjectDanger& danger : FindDangers(project)) texts.push_back(danger.text);
    return texts;
  }

  test::TempFolder files;
  Project project;
};

TEST_F(ProjectDangers, NewProject_HasNone) {
  for (const int type : {cConsole, cFormApplication, cStaticLib}) {
    project.Init(files.Path("p.zpj"), type);
    EXPECT_THAT(Texts(), IsEmpty()) << type;
  }
}

TEST_F(ProjectDangers, UsualSwitches_AreNone) {
  for (const char* usual :
       {"-O2 -Wall -g3 -std=c++20 -DX=1 -Iinc -fPIC -pthread", "-Wl,-rpath,/x -Wl,--as-needed -s",
        "-Xlinker --gc-sections", "-fprofile-arcs -ffunction-sections -fno-plt",
        "-Wl,--dynamic-list=x.txt", "-Wp,-D_FORTIFY_SOURCE=2 -Wa,--noexecstack", "-include b.h",
        "-specx -fplug -wrap -Wl,-Iinclude", "a@b -D@"})
    EXPECT_THAT(InCompile(usual), IsEmpty()) << usual;
}

TEST_F(ProjectDangers, OptionsThatRunSomething_AreListedWithTheirValue) {
  EXPECT_THAT(InCompile("-O2 -wrapper ./w,-x -g"), ElementsAre("-wrapper ./w,-x"));
  EXPECT_THAT(InCompile("-fmodule-mapper=|./run"), ElementsAre("-fmodule-mapper=|./run"));
  EXPECT_THAT(InCompile("-fplugin=./p.so -fplugin-arg-p-x"), ElementsAre("-fplugin=./p.so"));
  EXPECT_THAT(InCompile("-specs=a --specs=b -specs c"),
              ElementsAre("-specs=a", "--specs=b", "-specs c"));
  EXPECT_THAT(InCompile("-Btools -B tools --prefix=x"),
              ElementsAre("-Btools", "-B tools", "--prefix=x"));
  EXPECT_THAT(InCompile("@flags -iplugindir=x"), ElementsAre("@flags", "-iplugindir=x"));
  EXPECT_THAT(InCompile("\"-wrapper\" \"a b\""), ElementsAre("-wrapper a b")) << "quoted";
  EXPECT_THAT(InCompile("-wrapper"), ElementsAre("-wrapper")) << "without its value";
}

TEST_F(ProjectDangers, OptionsForOtherTools_AreReadToo) {
  EXPECT_THAT(InCompile("-Wl,-O1,--plugin,x.so -Wl,-plugin=y -Wl,@f"),
              ElementsAre("-Wl,-O1,--plugin,x.so", "-Wl,-plugin=y", "-Wl,@f"));
  EXPECT_THAT(InCompile("-Xlinker --plug=x -Xlinker -O1 -Xassembler @f"),
              ElementsAre("-Xlinker --plug=x", "-Xassembler @f"));
  EXPECT_THAT(InCompile("-Wp,-fplugin=x -Wl,--dynamic-linker=/x -Wl,-I/x/ld.so"),
              ElementsAre("-Wp,-fplugin=x", "-Wl,--dynamic-linker=/x", "-Wl,-I/x/ld.so"));
}

// Both use one table; a switch that a project may have unasked is still one that an import names.
TEST_F(ProjectDangers, WhatIsListed_AnImportLeavesOut) {
  for (const char* danger :
       {"-wrapper ./w", "--wrapper ./w", "-fplugin=./p.so", "-iplugindir=x", "-specs=a",
        "--specs b", "-Bx", "-B x", "--prefix=x", "@flags", "-fmodule-mapper=|./run",
        "-Xclang -load", "-aux-info ../x", "-dumpdir ../x", "--output=../x", "-Wl,--plugin,x.so",
        "-Xlinker --plugin=x"}) {
    EXPECT_EQ(InCompile(danger).size(), 1u) << danger;
    const auto read = ReadSwitches(mavro::SplitCommandLine("g++ " + std::string(danger)), "/src");
    EXPECT_THAT(read.risky, ElementsAre(danger));
    EXPECT_THAT(read.others, IsEmpty()) << danger;
  }
  EXPECT_THAT(InCompile("-fprofile-arcs"), IsEmpty());
  EXPECT_THAT(ReadSwitches({"g++", "-fprofile-arcs"}, "/src").risky, ElementsAre("-fprofile-arcs"));
}

TEST_F(ProjectDangers, FilesWrittenElsewhere_AreListed) {
  EXPECT_THAT(InCompile("-o ../x -MF y"), ElementsAre("-o ../x", "-MF y"));
  project.debugOptions.comp.clear();
  for (const char* name : {"/bin/x", "../x", "a/../../x", ".."}) {
    project.outName = name;
    EXPECT_THAT(Texts(), ElementsAre("Output name: " + std::string(name)));
  }
  for (const char* name : {"x", "bin/x", "..x", "x..", ""}) {
    project.outName = name;
    EXPECT_THAT(Texts(), IsEmpty()) << name;
  }
}

TEST_F(ProjectDangers, EveryField_IsLookedAt_InTheirOrder) {
  project.includePath = "-Ba";
  project.linkerPath = "-Bb";
  project.linkLibs = "-Bc";
  project.debugOptions = {0, "-Bd", "-Be"};
  project.releaseOptions = {0, "-Bf", "-Bg"};
  project.programParams = "a; touch x";
  EXPECT_THAT(Texts(), ElementsAre("Include search path: -Ba", "Linker search path: -Bb",
                                   "Link library: -Bc", "Debug, Compile: -Bd", "Debug, Link: -Be",
                                   "Relase, Compile: -Bf", "Relase, Link: -Bg",
                                   "Program parameters, read by a shell: a; touch x"));
  project.programParams = "-x \"$HOME\"";
  EXPECT_EQ(Texts().size(), 7u) << "no shell reads them";
}

TEST_F(ProjectDangers, ToolsInTheFolder_AreListed) {
  for (const char* tool : {"gcc", "g++"}) files.Write(std::string("tools/") + tool, "");
  theIdeConfig.toolSets[1].folder = files.Path("tools");
  EXPECT_THAT(Texts(), IsEmpty()) << "of a set that isn't used";
  project.debugOptions.gcc = 1;
  EXPECT_THAT(Texts(),
              testing::Contains("Tool in the project's folder: " + files.Path("tools/g++")));
}

TEST_F(ProjectDangers, FolderOnThePathThatMeansTheProject_IsListed) {
  files.Write("g++", "");
  for (const char* entry : {".:/usr/bin", ":/usr/bin", "/nowhere:."}) {
    const test::ScopedVariable path("PATH", entry);
    EXPECT_THAT(Texts(), ElementsAre(HasSubstr("Tool in the project's folder: "))) << entry;
  }
  const test::ScopedVariable path("PATH", "/usr/bin:.");
  EXPECT_THAT(Texts(), IsEmpty()) << "the machine's comes first";
}

TEST_F(ProjectDangers, Key_IsThatOfFolderTextAndOptions) {
  project.debugOptions.comp = "-Bx";
  const std::string key = FindDangers(project)[0].key;
  project.debugOptions.comp = "-g -Bx";
  EXPECT_EQ(FindDangers(project)[0].key, key);
  project.debugOptions.comp = "-By";
  EXPECT_NE(FindDangers(project)[0].key, key);
  project.Init(files.Path("other/p.zpj"), cConsole);
  project.debugOptions.comp = "-Bx";
  EXPECT_NE(FindDangers(project)[0].key, key);
  project.Init(files.Path("p.zpj"), cConsole);
  for (const char* switches : {"@f", "-specs=f", "-specs f", "-Xlinker @f"}) {
    project.debugOptions.comp = switches;
    files.Write("f", "one");
    const std::string ofOne = FindDangers(project)[0].key;
    files.Write("f", "two");
    EXPECT_NE(FindDangers(project)[0].key, ofOne) << switches;
  }
}

}  // namespace
}  // namespace zendry
