#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <csignal>
#include <set>
#include <thread>

#include "TestBuild.h"
#include "ZendryMakeRun.h"
#include "project/Project.h"

// The program zendry-make as an installation has it, with the real compilers.

namespace {

using test::Ended;
using testing::AllOf;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

// A project file with these files, and the switches that differ from a fresh project's.
struct ProjectText {
  std::vector<std::string> files;
  int type = zendry::cConsole;
  std::string includePath = {};
  std::string linkerPath = {};
  std::string libraries = {};
  std::string outName = {};

  std::string Text() const {
    std::string text = "<ide>\n<set parse=\"y\"/></ide>\n<src>\n";
    for (const std::string& file : files) text += "\t<file name=\"" + file + "\"/>\n";
    return text + "</src>\n<opt>\n\t<gen>\n\t\t<targ id=\"" + std::to_string(type) +
           "\"/>\n\t\t<inc value=\"" + includePath + "\"/>\n\t\t<arch value=\"" + linkerPath +
           "\"/>\n\t\t<lib value=\"" + libraries + "\"/>\n\t\t<out value=\"" + outName +
           "\"/>\n\t</gen>\n</opt>\n";
  }
};

struct ZendryMake : testing::Test {
  test::MakeInstall install;
  test::TempFolder files;

  std::string WriteProject(const std::string& name, const ProjectText& project) {
    return files.Write(name, project.Text());
  }
  // The output of the built program.
  std::string Run(const std::string& program) {
    const Ended ended = test::Program({files.Path(program)}, files.Path()).Wait();
    return std::to_string(ended.status) + " " + ended.out;
  }
  // A program of two sources, two headers of which one includes the other, and a third source
  // apart.
  std::string WriteExample() {
    files.Write("src/deep.h", "#pragma once\nenum { cAnswer = 42 };\n");
    files.Write("src/near.h", "#pragma once\n#include \"deep.h\"\nint Answer();\n");
    files.Write("src/main.cpp",
                "#include <cstdio>\n#include \"near.h\"\nint Apart();\n"
                "int main() { std::printf(\"%d\\n\", Answer() + Apart()); }\n");
    files.Write("src/answer.cpp", "#include \"near.h\"\nint Answer() { return cAnswer; }\n");
    files.Write("src/apart.cpp", "int Apart() { return 0; }\n");
    return WriteProject(
        "p.zpj", {{"src/main.cpp", "src/answer.cpp", "src/apart.cpp", "src/near.h", "src/deep.h"}});
  }
};

std::set<std::string> Compiled(const Ended& ended) {
  std::set<std::string> names;
  const std::string marker = "------ Compiling --> ";
  for (size_t at = ended.out.find(marker); at != std::string::npos;
       at = ended.out.find(marker, at + 1)) {
    const size_t begin = at + marker.size();
    const std::string path = ended.out.substr(begin, ended.out.find('\n', begin) - begin);
    names.insert(std::filesystem::path(path).filename().string());
  }
  return names;
}

using Names = std::set<std::string>;

// Group: builds that end well.

TEST_F(ZendryMake, CppProject_IsBuiltAndRuns) {
  const Ended ended = install.Make({WriteExample()});
  EXPECT_EQ(ended.status, 0) << ended.out << ended.err;
  EXPECT_EQ(ended.err, "");
  EXPECT_THAT(ended.out, HasSubstr("------ Build succeeded  errors: 0  warnings: 0 --> \n"));
  EXPECT_THAT(ended.out, Not(HasSubstr("\r")));
  EXPECT_EQ(Run("out-rel/p.exe"), "0 42\n");
}

TEST_F(ZendryMake, CProject_IsBuiltByTheCCompiler) {
  files.Write("main.c",
              "#include <stdio.h>\nint main(void) { int class = 7; printf(\"%d\\n\", class); "
              "return 0; }\n");
  EXPECT_EQ(install.Make({WriteProject("c.zpj", {{"main.c"}})}).status, 0);
  EXPECT_EQ(Run("out-rel/c.exe"), "0 7\n");
}

TEST_F(ZendryMake, StaticLibraryProject_LinksIntoAConsoleProject) {
  files.Write("lib/twice.c", "int twice(int x) { return 2 * x; }\n");
  files.Write("lib/twice.h", "int twice(int x);\n");
  ProjectText library{{"twice.c", "twice.h"}, zendry::cStaticLib};
  EXPECT_EQ(install.Make({WriteProject("lib/libtwice.zpj", library)}).status, 0);
  files.Write("main.c",
              "#include <stdio.h>\n#include \"twice.h\"\nint main(void) { printf(\"%d\\n\", "
              "twice(4)); return 0; }\n");
  ProjectText program{{"main.c"}};
  program.includePath = "-Ilib";
  program.linkerPath = "-L../lib/out-rel";
  program.libraries = "-ltwice";
  const Ended ended = install.Make({WriteProject("p.zpj", program)});
  EXPECT_EQ(ended.status, 0) << ended.out << ended.err;
  EXPECT_EQ(Run("out-rel/p.exe"), "0 8\n");
}

TEST_F(ZendryMake, SwitchThatCanRunSomething_IsWarnedAboutAndBuilt) {
  files.Write("a.cpp", "int main() {}\n");
  const Ended ended = install.Make({WriteProject("p.zpj", {{"a.cpp"}, 0, "-Btools"})});
  EXPECT_EQ(ended.status, 0) << ended.err;
  EXPECT_EQ(ended.err,
            "zendry-make: warning: this project can run or write something by itself: "
            "Include search path: -Btools\n");
  EXPECT_EQ(install.Make({WriteProject("q.zpj", {{"a.cpp"}})}).err, "");
}

TEST_F(ZendryMake, DynamicLibProject_CompilesAndStops) {
  files.Write("a.c", "int a;\n");
  EXPECT_EQ(install.Make({WriteProject("p.zpj", {{"a.c"}, zendry::cDynamicLib})}).status, 0);
  EXPECT_TRUE(files.Exists("out-rel/a.o"));
  EXPECT_FALSE(files.Exists("out-rel/p.exe"));
}

TEST_F(ZendryMake, SecondBuild_RunsNothing) {
  const std::string project = WriteExample();
  install.Make({project});
  const Ended ended = install.Make({"--explain", project});
  EXPECT_EQ(ended.status, 0);
  EXPECT_EQ(ended.out,
            "\n------ Build time [s]: --> 0\n"
            "\n------ Build succeeded  errors: 0  warnings: 0 --> \n");
}

TEST_F(ZendryMake, HeaderTwoDeepTouched_CompilesWhatIncludesIt) {
  const std::string project = WriteExample();
  install.Make({project});
  test::AgeFiles(files.Path());
  test::AgeRecords(files.Path() + "/out-rel");
  test::SetTime(files.Path("src/deep.h"), 3);
  const Ended ended = install.Make({"--explain", project});
  EXPECT_EQ(Compiled(ended), (Names{"main.cpp", "answer.cpp"}));
  EXPECT_THAT(ended.out,
              AllOf(HasSubstr("explain: src/main.cpp: src/deep.h is newer than out-rel/main.o by "
                              "0.000000001 s\n"),
                    HasSubstr("explain: p.exe: out-rel/main.o is newer than out-rel/p.exe by "),
                    Not(HasSubstr("explain: src/apart.cpp"))));
}

TEST_F(ZendryMake, Rebuild_CompilesEverything) {
  const std::string project = WriteExample();
  install.Make({project});
  const Ended ended = install.Make({"--rebuild", project});
  EXPECT_EQ(Compiled(ended), (Names{"main.cpp", "answer.cpp", "apart.cpp"}));
  EXPECT_EQ(ended.status, 0);
}

TEST_F(ZendryMake, Clean_DeletesObjectsAndBuildsNothing) {
  const std::string project = WriteExample();
  install.Make({project});
  const Ended ended = install.Make({"--clean", project});
  EXPECT_EQ(ended.status, 0);
  EXPECT_EQ(ended.out, "");
  EXPECT_FALSE(files.Exists("out-rel/main.o"));
  EXPECT_TRUE(files.Exists("out-rel/p.exe"));
}

TEST_F(ZendryMake, Mode_IsTheOptionsElseTheSessionsElseRelease) {
  const std::string project = WriteExample();
  install.Make({"--mode", "debug", project});
  EXPECT_TRUE(files.Exists("out-dbg/p.exe"));
  EXPECT_FALSE(files.Exists("out-rel"));
  files.Write("p.zend", "<state>\n\t<mode opt=\"dbg\"/>\n\t<open>\n\t</open>\n</state>\n");
  EXPECT_THAT(Compiled(install.Make({project})), IsEmpty());
  EXPECT_THAT(Compiled(install.Make({"--mode", "release", project})), testing::SizeIs(3));
}

TEST_F(ZendryMake, RelativePathAndOtherFolder_AreFound) {
  WriteExample();
  const std::string shell = "cd " + files.Path("src") + " && " +
                            install.root.Path("bin/zendry-make") + " ../p.zpj > /dev/null";
  EXPECT_EQ(std::system(shell.c_str()), 0);
  EXPECT_TRUE(files.Exists("out-rel/p.exe"));
}

TEST_F(ZendryMake, WritesNothingButTheOutputFolder) {
  const std::string project = WriteExample();
  install.Make({project});
  EXPECT_EQ(files.Names(), (std::vector<std::string>{"out-rel", "p.zpj", "src"}));
  EXPECT_TRUE(std::filesystem::is_empty(install.root.Path("home")));
}

TEST_F(ZendryMake, ProgramStartedThroughALink_FindsItsInstallation) {
  std::filesystem::create_symlink(install.root.Path("bin/zendry-make"), files.Path("link"));
  const Ended ended = test::Program({files.Path("link"), WriteExample()}, files.Path()).Wait();
  EXPECT_THAT(ended.out, HasSubstr(install.root.Path("tools/g++")));
}

// Group: builds that don't.

TEST_F(ZendryMake, BrokenSource_EndsWithOneAndARowOnStandardError) {
  files.Write("bad.cpp", "int main() {\n  return nowhere;\n}\n");
  const Ended ended = install.Make({WriteProject("p.zpj", {{"bad.cpp"}})});
  EXPECT_EQ(ended.status, 1);
  EXPECT_THAT(ended.err,
              AllOf(HasSubstr("bad.cpp:2: error: "), HasSubstr("There ware errors!  errors: 1")));
  EXPECT_FALSE(files.Exists("out-rel/bad.o"));
}

TEST_F(ZendryMake, MissingHeader_IsAnError) {
  files.Write("a.cpp", "#include \"gone.h\"\nint main() {}\n");
  const Ended ended = install.Make({WriteProject("p.zpj", {{"a.cpp"}})});
  EXPECT_EQ(ended.status, 1);
  EXPECT_THAT(ended.err, AllOf(HasSubstr("a.cpp:1: fatal error: gone.h: No such file or directory"),
                               HasSubstr("There ware errors!  errors: 1  warnings: 0")));
}

TEST_F(ZendryMake, MissingLibrary_EndsWithOne) {
  files.Write("a.cpp", "int main() {}\n");
  ProjectText project{{"a.cpp"}};
  project.libraries = "-lnowhere";
  const Ended ended = install.Make({WriteProject("p.zpj", project)});
  EXPECT_EQ(ended.status, 1);
  EXPECT_THAT(ended.err, HasSubstr("LINKER:0: /usr/bin/ld: cannot find -lnowhere"));
}

TEST_F(ZendryMake, UndefinedReference_EndsWithOneAndLeavesNoProgram) {
  files.Write("a.cpp", "int f();\nint main() { return f(); }\n");
  EXPECT_EQ(install.Make({WriteProject("p.zpj", {{"a.cpp"}})}).status, 1);
  EXPECT_FALSE(files.Exists("out-rel/p.exe"));
}

TEST_F(ZendryMake, MissingTool_EndsWithOneAndSaysSo) {
  files.Write("a.cpp", "int main() {}\n");
  std::filesystem::remove(install.root.Path("tools/g++"));
  const Ended ended = install.Make({WriteProject("p.zpj", {{"a.cpp"}})});
  EXPECT_EQ(ended.status, 1);
  EXPECT_THAT(ended.err, HasSubstr("Error run: " + install.root.Path("tools/g++")));
}

TEST_F(ZendryMake, MissingSource_IsRefused) {
  const Ended ended = install.Make({WriteProject("p.zpj", {{"gone.cpp"}})});
  EXPECT_EQ(ended.status, 1);
  EXPECT_THAT(ended.err, HasSubstr("gone.cpp:0:  -> it can't be read\n"));
  EXPECT_THAT(Compiled(ended), IsEmpty());
}

TEST_F(ZendryMake, ControlBytesOfASource_ArriveAsMarks) {
  files.Write("a.c", "#pragma GCC warning \"\x1b[31mred\x07\"\nint main(void) { return 0; }\n");
  const Ended ended = install.Make({WriteProject("p.zpj", {{"a.c"}})});
  EXPECT_EQ(ended.status, 0);
  EXPECT_THAT(ended.out, HasSubstr("warning: <1b>[31mred<07>"));
  EXPECT_THAT(ended.err, HasSubstr("a.c:1: warning: <1b>[31mred<07>\n"));
}

TEST_F(ZendryMake, SignalWhileAToolRuns_StopsItAndDeletesWhatItWrote) {
  std::filesystem::remove(install.root.Path("tools/g++"));
  std::filesystem::create_symlink(FAKE_TOOL, install.root.Path("tools/g++"));
  install.root.Write("tools/g++.do", "wait\n");
  files.Write("a.cpp", "");
  files.Write("b.cpp", "");
  const std::string project = WriteProject("p.zpj", {{"a.cpp", "b.cpp"}});
  test::Program program = install.Start({"-j1", project});
  while (!files.Exists("out-rel/a.o") || files.Read("out-rel/a.o") != "cut")
    std::this_thread::yield();
  kill(program.Process(), SIGINT);
  const Ended ended = program.Wait();
  EXPECT_EQ(ended.status, 1);
  EXPECT_FALSE(files.Exists("out-rel/a.o"));
  EXPECT_EQ(Compiled(ended), Names{"a.cpp"});
}

// Group: a source alone.

TEST_F(ZendryMake, SourceAlone_IsBuiltBesideIt) {
  const std::string path = files.Write("dir/x.c", "int main(void) { return 0; }\n");
  const Ended ended = install.Make({path});
  EXPECT_EQ(ended.status, 0) << ended.err;
  EXPECT_TRUE(files.Exists("dir/out-rel/x.exe"));
  EXPECT_EQ(install.Make({"--mode", "debug", path}).status, 0);
  EXPECT_TRUE(files.Exists("dir/out-dbg/x.exe"));
}

TEST_F(ZendryMake, SourceAloneThatDoesNotLink_HasARowThatLeadsToIt) {
  const std::string path =
      files.Write("x.cpp", "int nowhere();\nint main() { return nowhere(); }\n");
  const Ended ended = install.Make({path});
  EXPECT_EQ(ended.status, 1);
  EXPECT_THAT(ended.err, AllOf(HasSubstr("x.cpp:0: "), HasSubstr("undefined reference to"),
                               HasSubstr("There ware errors!  errors: 1  warnings: 0")));
}

TEST_F(ZendryMake, SourceThatIsMissing_EndsWithTwo) {
  const Ended ended = install.Make({files.Path("gone.c")});
  EXPECT_EQ(ended.status, 2);
  EXPECT_THAT(ended.err, HasSubstr("gone.c can't be read"));
}

// Group: what can't be started.

TEST_F(ZendryMake, WrongCommandLines_EndWithTwo) {
  const std::string project = WriteExample();
  const std::vector<std::vector<std::string>> lines = {{},
                                                       {"--mode"},
                                                       {"--mode", "fast", project},
                                                       {"--nonsense", project},
                                                       {project, project},
                                                       {"--clean", "--rebuild", project},
                                                       {""}};
  for (const auto& line : lines) {
    const Ended ended = install.Make(line);
    EXPECT_EQ(ended.status, 2) << testing::PrintToString(line);
    EXPECT_NE(ended.err, "");
    EXPECT_EQ(ended.out, "");
  }
  EXPECT_FALSE(files.Exists("out-rel"));
}

TEST_F(ZendryMake, HelpAndVersion_EndWithZero) {
  EXPECT_THAT(install.Make({"--help"}).out, HasSubstr("PROJECT"));
  EXPECT_THAT(install.Make({"--version"}).out, testing::StartsWith("zendry-make "));
}

TEST_F(ZendryMake, ProjectThatCannotBeRead_EndsWithTwoAndSaysWhy) {
  files.Folder("folder.zpj");
  files.Write("empty.zpj", "");
  files.Write("text.zpj", "just a text\n");
  files.Write("main.txt", "int main() {}\n");
  const std::pair<const char*, const char*> cases[] = {{"gone.zpj", "No such file or directory"},
                                                       {"folder.zpj", "is a folder"},
                                                       {"empty.zpj", "is not a project file"},
                                                       {"text.zpj", "is not a project file"},
                                                       {"main.txt", "is no project file"}};
  for (const auto& [name, why] : cases) {
    const Ended ended = install.Make({files.Path(name)});
    EXPECT_EQ(ended.status, 2) << name;
    EXPECT_THAT(ended.err, AllOf(HasSubstr(name), HasSubstr(why)));
  }
}

TEST_F(ZendryMake, ProjectThatIsCut_IsRefusedAndNotBuilt) {
  files.Write("a.c", "int main(void) { return 0; }\n");
  const std::string text = ProjectText{{"a.c"}, zendry::cOther}.Text();
  const Ended ended = install.Make({files.Write("p.zpj", text.substr(0, text.find("</opt>")))});
  EXPECT_EQ(ended.status, 2);
  EXPECT_EQ(ended.err,
            "zendry-make: " + files.Path("p.zpj") + ": the end is missing, it may have been cut\n");
  EXPECT_FALSE(files.Exists("out-rel"));
}

TEST_F(ZendryMake, ValueThatIsTooLong_IsRefusedInProjectAndConfiguration) {
  const std::string project = WriteExample();
  const std::string tooLong = ProjectText{.files = {}, .includePath = std::string(600, 'x')}.Text();
  Ended ended = install.Make({files.Write("long.zpj", tooLong)});
  EXPECT_EQ(ended.status, 2);
  EXPECT_THAT(ended.err, HasSubstr("long.zpj: holds a value of more than some 500 characters"));
  install.root.Write("bin/Zendry.cfg", "<l n=\"x\" p=\"" + std::string(600, 'x') + "\"/>");
  ended = install.Make({project});
  EXPECT_EQ(ended.status, 2);
  EXPECT_THAT(ended.err, HasSubstr("Zendry.cfg: left out is a value"));
}

TEST_F(ZendryMake, SessionThatIsDamaged_IsSaidAndTheProjectBuilt) {
  const std::string project = WriteExample();
  files.Write("p.zend", "<state><mode opt=\"dbg\"/><file n=\"" + std::string(600, 'x') + "\"/>");
  const Ended ended = install.Make({project});
  EXPECT_EQ(ended.status, 0) << ended.out << ended.err;
  EXPECT_THAT(ended.err, HasSubstr("p.zend: left out is a value"));
  EXPECT_TRUE(files.Exists("out-dbg/p.exe"));
}

TEST_F(ZendryMake, ProjectCutAtEachByte_EndsByItself) {
  files.Write("a.c", "int main(void) { return 0; }\n");
  const std::string text = ProjectText{{"a.c"}, zendry::cOther}.Text();
  for (size_t length = 0; length < text.size(); length += 7) {
    const Ended ended = install.Make({files.Write("cut.zpj", text.substr(0, length))});
    EXPECT_LE(ended.status, 2) << ended.err;
  }
}

// Group: the demo.

TEST(Demo, ConsoleProgramAndItsLibrary_BuildCleanlyInBothModes) {
  test::MakeInstall install;
  test::TempFolder files;
  const std::string demo = files.Path("console");
  std::filesystem::copy(ZENDRY_DIST "/Repos/demos/console", demo,
                        std::filesystem::copy_options::recursive);
  for (const char* mode : {"release", "debug"})
    for (const char* project : {"/textstat/libtextstat.zpj", "/console.zpj"}) {
      const Ended ended = install.Make({"--mode", mode, demo + project});
      EXPECT_EQ(ended.status, 0) << ended.out << ended.err;
      EXPECT_EQ(ended.err, "");
    }
  for (const char* folder : {"out-rel", "out-dbg"}) {
    const Ended ended = test::Program({demo + "/" + folder + "/console.exe"}, demo).Wait();
    EXPECT_EQ(ended.status, 0);
    EXPECT_THAT(ended.out, HasSubstr("       4  lines\n"));
  }
}

}  // namespace
