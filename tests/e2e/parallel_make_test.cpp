#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <signal.h>

#include <fstream>
#include <iterator>
#include <regex>
#include <thread>

#include "SmallDisk.h"
#include "TestBuild.h"
#include "ZendryMakeRun.h"
#include "base/Paths.h"
#include "build/RunningTools.h"

// zendry-make with several jobs and with launchers, and what is left when it is killed.

namespace {

using test::Ended;
using testing::AllOf;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

struct ParallelMake : testing::Test {
  test::MakeInstall install;
  test::TempFolder files;

  // A console program of these sources, compiled with all warnings.
  std::string Project(const std::vector<std::string>& sources) {
    std::string list;
    for (const std::string& source : sources) list += "\t<file name=\"" + source + "\"/>\n";
    return files.Write("p.zpj", "<ide>\n<set parse=\"y\"/></ide>\n<src>\n" + list +
                                    "</src>\n<opt>\n\t<gen>\n\t\t<targ id=\"0\"/>\n\t\t<inc "
                                    "value=\"-Wall\"/>\n\t</gen>\n</opt>\n");
  }
  // A program of so many sources, each of which includes "h.h" and gives a warning.
  std::string ManySources(int count) {
    files.Write("h.h", "enum { cValue = 1 };\n");
    std::vector<std::string> sources;
    std::string sum = "0", declarations;
    for (int i = 0; i < count; ++i) {
      const std::string name = "f" + std::to_string(i);
      files.Write(name + ".c",
                  "#include \"h.h\"\nint " + name + "(void) { int unused; return cValue; }\n");
      sources.push_back(name + ".c");
      declarations += "int " + name + "(void);\n";
      sum += " + " + name + "()";
    }
    files.Write("main.c", declarations + "int main(void) { return " + sum + "; }\n");
    sources.push_back("main.c");
    return Project(sources);
  }
  int Run() { return test::Program({files.Path("out-rel/p.exe")}, files.Path()).Wait().status; }
  // Puts the stand-in with these deeds in the place of the C compiler.
  void FakeCompiler(const std::string& deeds) {
    std::filesystem::remove(install.root.Path("tools/gcc"));
    std::filesystem::create_symlink(FAKE_TOOL, install.root.Path("tools/gcc"));
    install.root.Write("tools/gcc.do", deeds);
  }
  void RealCompiler() {
    std::filesystem::remove(install.root.Path("tools/gcc"));
    std::filesystem::create_symlink("/usr/bin/gcc", install.root.Path("tools/gcc"));
  }
  void PutBefore(const std::string& launcher) {
    install.root.Write("bin/Zendry.cfg", "<gcc id=\"0\" name=\"" + launcher +
                                             "\" opt=\"GCC\" path=\"@/tools\" "
                                             "value=\"-fno-diagnostics-show-caret\"/>\n");
  }
};

std::string WithoutTimes(const std::string& output) {
  static const std::regex cTimes(R"(\[\d+\]|Build time \[s\]: --> \d+)");
  return std::regex_replace(output, cTimes, "[T]");
}

bool IsAlive(pid_t process) {
  std::ifstream status("/proc/" + std::to_string(process) + "/stat");
  const std::string text((std::istreambuf_iterator<char>(status)), {});
  return !text.empty() && text.find(") Z") == std::string::npos;
}

TEST_F(ParallelMake, JobsWithoutAMeaning_EndWithTwo) {
  const std::string project = ManySources(1);
  const std::vector<std::vector<std::string>> lines = {
      {project, "-j"},     {"-j", "0", project},  {"-j", "x", project},   {"-j0", project},
      {"-j", "", project}, {"-j", "-1", project}, {"--jobs=1.5", project}};
  for (const auto& line : lines) {
    const Ended ended = install.Make(line);
    EXPECT_EQ(ended.status, 2) << testing::PrintToString(line);
    EXPECT_THAT(ended.err, HasSubstr("jobs")) << testing::PrintToString(line);
    EXPECT_EQ(ended.out, "");
  }
  EXPECT_FALSE(files.Exists("out-rel"));
}

TEST_F(ParallelMake, AThousandJobs_AreTaken) {
  const Ended ended = install.Make({"-j", "1000", ManySources(20)});
  EXPECT_EQ(ended.status, 0) << ended.err;
  EXPECT_EQ(Run(), 20);
}

TEST_F(ParallelMake, AnyNumberOfJobs_GivesTheSameTranscriptAndProgram) {
  const std::string project = ManySources(12);
  const Ended one = install.Make({"-j1", "--rebuild", project});
  EXPECT_EQ(one.status, 0);
  EXPECT_THAT(one.err, HasSubstr("f11.c:2: warning: "));
  for (const char* jobs : {"-j2", "-j8"}) {
    const Ended other = install.Make({jobs, "--rebuild", project});
    EXPECT_EQ(WithoutTimes(other.out), WithoutTimes(one.out));
    EXPECT_EQ(other.err, one.err);
    EXPECT_EQ(Run(), 12);
  }
}

TEST_F(ParallelMake, HeaderTouched_CompilesWhatIncludesItWithAnyNumberOfJobs) {
  const std::string project = ManySources(6);
  ASSERT_EQ(install.Make({"-j8", project}).status, 0);
  files.Write("h.h", "enum { cValue = 2 };\n");
  const Ended ended = install.Make({"-j8", project});
  EXPECT_EQ(ended.status, 0);
  EXPECT_EQ(Run(), 12);
  EXPECT_THAT(ended.out, Not(HasSubstr("main.c\n")));
}

TEST_F(ParallelMake, FewDescriptors_GiveFewerJobsAndNoError) {
  const std::string project = ManySources(30);
  const std::string shell =
      "ulimit -n 30; exec " + install.root.Path("bin/zendry-make") + " -j 200 " + project;
  const Ended ended = test::Program({"/bin/sh", "-c", shell}, files.Path()).Wait();
  EXPECT_EQ(ended.status, 0) << ended.err;
  EXPECT_EQ(Run(), 30);
}

// Group: a build that ends in the middle.

TEST_F(ParallelMake, Signal_EndsAllRunningToolsAndDeletesWhatTheyWrote) {
  const std::string project = ManySources(3);
  FakeCompiler("wait\n");
  test::Program program = install.Start({"-j2", project});
  for (const char* object : {"out-rel/f0.o", "out-rel/f1.o"})
    while (!files.Exists(object) || files.Read(object) != "cut") std::this_thread::yield();
  kill(program.Process(), SIGTERM);
  const Ended ended = program.Wait();
  EXPECT_EQ(ended.status, 1);
  EXPECT_THAT(ended.out, HasSubstr("Build stopped"));
  EXPECT_THAT(files.Names(), Not(testing::Contains("out-rel/f0.o")));
  for (const char* object : {"out-rel/f0.o", "out-rel/f1.o", "out-rel/f2.o"})
    EXPECT_FALSE(files.Exists(object)) << object;
}

// The tool that the killed builder leaves would go on to write its object.
TEST_F(ParallelMake, KilledInTheMiddle_TheNextBuildEndsWhatIsLeftAndGivesTheRightProgram) {
  const std::string project = ManySources(3);
  FakeCompiler("for f0.c\nwait\nfor f1.c\npid " + files.Path("process") + "\nwait\n");
  test::Program program = install.Start({"-j2", project});
  while (!files.Exists("out-rel/f1.o") || files.Read("out-rel/f1.o") != "cut")
    std::this_thread::yield();
  kill(program.Process(), SIGKILL);
  EXPECT_EQ(program.Wait().status, 128 + SIGKILL);
  const pid_t left = std::stoi(files.Read("process"));
  EXPECT_TRUE(IsAlive(left));
  RealCompiler();
  const Ended ended = install.Make({"-j2", project});
  EXPECT_EQ(ended.status, 0) << ended.out << ended.err;
  EXPECT_FALSE(IsAlive(left));
  EXPECT_EQ(Run(), 3);
  EXPECT_FALSE(files.Exists(std::string("out-rel/") + zendry::RunningTools::cRunningName));
}

TEST_F(ParallelMake, FullDiskInOneOfFour_FailsThatOneAndLeavesNoCutObject) {
  for (const char* name : {"a.c", "b.c", "c.c"})
    files.Write(name, std::string("int ") + name[0] + ";\n");
  files.Write("big.c", "int big[1000000] = {1};\nint main(void) { return 0; }\n");
  const std::string project = Project({"a.c", "big.c", "b.c", "c.c"});
  files.Folder("out-rel");
  const int answer = test::RunOnSmallDisk(files.Path("out-rel"), "1m", [&] {
    if (install.Make({"-j4", project}).status != 1) return 1;
    if (files.Exists("out-rel/big.o") || files.Exists("out-rel/p.exe")) return 2;
    files.Write("big.c", "int main(void) { return 0; }\n");
    if (install.Make({"-j4", project}).status != 0) return 3;
    return Run();
  });
  if (answer == test::cCannotMount) GTEST_SKIP() << "nobody may mount here";
  EXPECT_EQ(answer, 0);
}

// Group: launchers.

TEST_F(ParallelMake, Tools_AreListedWithTheirLaunchers) {
  PutBefore("no-such-launcher");
  const Ended ended = install.Make({"--tools"});
  EXPECT_EQ(ended.status, 0);
  EXPECT_EQ(ended.out,
            "0 GCC: " + install.root.Path("tools/g++") + "; no-such-launcher: not found\n");
}

TEST_F(ParallelMake, MissingLauncher_EndsWithOneAndSaysSo) {
  PutBefore("no-such-launcher");
  const Ended ended = install.Make({ManySources(2)});
  EXPECT_EQ(ended.status, 1);
  EXPECT_THAT(ended.err, HasSubstr("no-such-launcher:0:  -> the launcher before the compiler is "
                                   "not found\n"));
}

TEST_F(ParallelMake, Ccache_GivesTheSameProgramAndAChangedHeaderIsSeen) {
  if (!zendry::IsOnPath("ccache")) GTEST_SKIP() << "ccache is not installed";
  PutBefore("ccache");
  const std::string project = ManySources(4);
  for (const char* how : {"--explain", "--rebuild"}) {
    const Ended ended = install.Make({"-j2", how, project});
    ASSERT_EQ(ended.status, 0) << ended.out << ended.err;
    EXPECT_EQ(Run(), 4);
  }
  files.Write("h.h", "enum { cValue = 2 };\n");
  EXPECT_EQ(install.Make({"-j2", project}).status, 0);
  EXPECT_EQ(Run(), 8);
}

}  // namespace
