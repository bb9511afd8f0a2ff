#include <dirent.h>
#include <gmock/gmock.h>
#include <malloc.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>

#include "DebugTest.h"
#include "FileText.h"
#include "SpawnConsole.h"
#include "config/IdeSession.h"

// The debug session with programs of many kinds and the gdb of this machine.

namespace zendry {
namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

struct ProgramTest : test::DebugTest {
  // The descriptors that this process has open.
  static int Descriptors() {
    int count = 0;
    DIR* folder = opendir("/proc/self/fd");
    while (folder && readdir(folder)) ++count;
    if (folder) closedir(folder);
    return count;
  }
  // The ids of the processes that this one has started.
  static std::string Children() {
    return mavro::ReadFileText("/proc/self/task/" + std::to_string(getpid()) + "/children").text;
  }
  // What is allocated. Nothing with a sanitizer, which counts in its own way.
  static size_t Memory() {
    const struct mallinfo2 info = mallinfo2();
    return info.uordblks + info.hblkhd;
  }
  static int Count(const char* variable, int otherwise) {
    const char* value = std::getenv(variable);
    return value ? std::atoi(value) : otherwise;
  }
  static constexpr size_t cMostGrowth = 5 << 20;
};

TEST_F(ProgramTest, ABreakpointInALibraryThatComesLater_IsPendingUntilThen) {
  Add("a.cpp",
      "#include <dlfcn.h>\nint main() {\n  void* lib = dlopen(\"./late.so\", RTLD_NOW);\n"
      "  return reinterpret_cast<int (*)()>(dlsym(lib, \"late\"))();\n}\n");
  build.files.Write("late.c", "int late(void) {\n  return 4;\n}\n");
  const std::string line = "gcc -g -shared -fPIC -o late.so late.c";
  mavro::SpawnConsole compiler;
  compiler.SetOutput(nullptr, build.files.Path());
  ASSERT_TRUE(compiler.Execute(line, mavro::SpawnConsole::Mode::cBlocking));
  debugger.Toggle(Path("late.c"), 1);
  debugger.Toggle(Path("a.cpp"), 2);
  ASSERT_TRUE(RunToStop()) << Output();
  EXPECT_TRUE(debugger.breakpoints.entries[0].isPending);
  EXPECT_EQ(debugger.breakpoints.entries[0].refusal, "");
  ASSERT_TRUE(RunToStop());
  EXPECT_EQ(view.execution, "late.c:2");
}

TEST_F(ProgramTest, TwoFilesOfOneName_AreToldApart) {
  const std::string text = "int NAME() {\n  int k = 1;\n  return k;\n}\n";
  for (const std::string name : {"one", "two"}) {
    std::string source = text;
    source.replace(source.find("NAME"), 4, name);
    Add(name == "two" ? "part.cpp" : "sub/part.cpp", source);
  }
  Add("main.cpp", "int one();\nint two();\nint main() {\n  return one() + two();\n}\n");
  debugger.Toggle(Path("part.cpp"), 2);
  ASSERT_TRUE(RunToStop()) << Output();
  EXPECT_EQ(debugger.breakpoints.entries[0].locations, 1);
  debugger.ViewCallStack();
  ASSERT_TRUE(IdleUntilPaused());
  EXPECT_THAT(view.stack.at(0), HasSubstr("two"));
}

TEST_F(ProgramTest, ATemplateUsedTwice_StopsInEachUse) {
  Add("a.cpp",
      "template <class T>\nT same(T value) {\n  T result = value;\n  return result;\n}\n"
      "int main() {\n  return same(1) + static_cast<int>(same(2.0));\n}\n");
  debugger.Toggle(Path("a.cpp"), 3);
  ASSERT_TRUE(RunToStop());
  EXPECT_EQ(debugger.breakpoints.entries[0].locations, 2);
  EXPECT_EQ(view.execution, "a.cpp:4");
  ASSERT_TRUE(RunToStop());
  EXPECT_EQ(view.execution, "a.cpp:4");
  EXPECT_EQ(debugger.breakpoints.entries[0].line, 3);
}

TEST_F(ProgramTest, ManyBreakpoints_AllGetTheirNumbers) {
  std::string text = "int main() {\n  int k = 0;\n";
  constexpr int cCount = 500;
  for (int i = 0; i < cCount; ++i) text += "  ++k;\n";
  Add("a.cpp", text + "  return 0;\n}\n");
  for (int i = 0; i < cCount; ++i) debugger.Toggle(Path("a.cpp"), 2 + i);
  ASSERT_TRUE(RunToStop());
  for (int i = 0; i < cCount; ++i)
    ASSERT_EQ(debugger.breakpoints.entries[static_cast<size_t>(i)].id, i + 1);
  debugger.ClearAll();
  debugger.Run(Debugger::With::cGdb);
  ASSERT_TRUE(IdleUntilEnd());
}

TEST_F(ProgramTest, AStep_StaysInItsThread) {
  Add("a.cpp", R"(#include <atomic>
#include <thread>
std::atomic<int> turns;
void work() {
  for (int i = 0; i < 1000000; ++i)
    ++turns;
}
int main() {
  std::thread first(work), second(work);
  first.join();
  second.join();
}
)");
  build.project.debugOptions = {0, "-g -pthread", "-g -pthread"};
  debugger.Toggle(Path("a.cpp"), 4);
  ASSERT_TRUE(RunToStop()) << Output();
  EXPECT_THAT(view.Said(), testing::ContainsRegex("in work, thread [23] "));
  debugger.ClearAll();
  debugger.AddExpression(0, "$_thread");
  debugger.AddExpression(0, "i");
  debugger.RefreshDisplays();
  ASSERT_TRUE(IdleUntilPaused());
  const std::string thread = Values()[0];
  for (int i = 0; i < 6; ++i) ASSERT_TRUE(StepToStop(GdbStep::cOver));
  EXPECT_EQ(Values()[0], thread);
  EXPECT_THAT(view.execution, testing::AnyOf("a.cpp:5", "a.cpp:6"));
}

TEST_F(ProgramTest, AStepOverAWaitForAnotherThread_ComesBack) {
  Add("a.cpp",
      "#include <unistd.h>\n#include <thread>\nint main() {\n  int k = 0;\n"
      "  std::thread other([&k] {\n    usleep(1000);\n    k = 5;\n  });\n  other.join();\n"
      "  return k;\n}\n");
  build.project.debugOptions = {0, "-g -pthread", "-g -pthread"};
  debugger.Toggle(Path("a.cpp"), 8);
  debugger.AddExpression(0, "k");
  ASSERT_TRUE(RunToStop()) << Output();
  ASSERT_TRUE(StepToStop(GdbStep::cOver));
  EXPECT_EQ(view.execution, "a.cpp:10");
  EXPECT_THAT(Values(), ElementsAre(testing::EndsWith("k = 5")));
}

TEST_F(ProgramTest, AProgramThatForks_GoesOnBeingDebugged) {
  Add("a.cpp",
      "#include <sys/wait.h>\n#include <unistd.h>\nint main() {\n"
      "  if (fork() == 0) _exit(5);\n  int status = 0;\n  wait(&status);\n"
      "  return WEXITSTATUS(status);\n}\n");
  debugger.Toggle(Path("a.cpp"), 6);
  ASSERT_TRUE(RunToStop());
  EXPECT_EQ(view.execution, "a.cpp:7");
  debugger.Run(Debugger::With::cGdb);
  ASSERT_TRUE(IdleUntilEnd());
  EXPECT_EQ(view.Said(), "The program has ended with exit code 5");
}

TEST_F(ProgramTest, EndlessRecursion_IsSaidAndItsStackIsBounded) {
  Add("a.cpp",
      "int deep(int k) {\n  volatile int space[64] = {k};\n  return deep(k + 1) + space[0];\n}\n"
      "int main() {\n  return deep(0);\n}\n");
  ASSERT_TRUE(RunToStop());
  EXPECT_TRUE(view.HasSaid("SIGSEGV"));
  EXPECT_THAT(view.execution, testing::StartsWith("a.cpp:"));
  debugger.ViewCallStack();
  ASSERT_TRUE(IdleUntilPaused());
  EXPECT_EQ(view.stack.size(), 10'000u);
}

TEST_F(ProgramTest, AWatchThatReachesABreakpoint_IsGivenUp) {
  Add("a.cpp",
      "int twice(int k) {\n  int result = 2 * k;\n  return result;\n}\nint main() {\n"
      "  int k = twice(1);\n  ++k;\n  ++k;\n  return k;\n}\n");
  debugger.Toggle(Path("a.cpp"), 6);
  debugger.Toggle(Path("a.cpp"), 2);
  debugger.AddExpression(0, "twice(k)");
  debugger.AddExpression(0, "k");
  ASSERT_TRUE(RunToStop());
  for (int i = 0; i < 3; ++i) {
    debugger.Run(Debugger::With::cGdb);
    ASSERT_TRUE(IdleUntil(
        [this] { return debugger.State() != DebugState::cRunning && debugger.IsQuiet(); }));
  }
  EXPECT_EQ(Values()[0], "twice(k) = <reaches a breakpoint>");
  debugger.Stop();
  EXPECT_EQ(debugger.State(), DebugState::cNotRunning);
}

TEST_F(ProgramTest, AWatchThatCallsAFunction_LeavesTheMarkWhereTheStopIs) {
  Add("a.cpp",
      "int twice(int k) {\n  return 2 * k;\n}\nint main() {\n  int k = twice(1);\n  ++k;\n  ++k;\n"
      "  return k;\n}\n");
  debugger.Toggle(Path("a.cpp"), 5);
  debugger.AddExpression(0, "twice(k)");
  ASSERT_TRUE(RunToStop());
  for (const char* place : {"a.cpp:7", "a.cpp:8"}) {
    ASSERT_TRUE(StepToStop(GdbStep::cOver));
    EXPECT_EQ(view.execution, place);
  }
  // Not every kernel lets gdb call functions: then it says why.
  EXPECT_THAT(Values(), ElementsAre(testing::AnyOf("!twice(k) = 8", HasSubstr("<error: "))));
}

TEST_F(ProgramTest, ASourceThatIsGone_LeavesTheWindowAsItIs) {
  Add("a.cpp", "int main() {\n  int k = 1;\n  return k;\n}\n");
  build.builder.Build(Builder::Scope::cStale);
  std::filesystem::remove(Path("a.cpp"));
  debugger.Step(GdbStep::cInto);
  ASSERT_TRUE(IdleUntilPaused());
  EXPECT_EQ(view.execution, "");
  ASSERT_TRUE(StepToStop(GdbStep::cOver));
  debugger.Run(Debugger::With::cGdb);
  ASSERT_TRUE(IdleUntilEnd());
  EXPECT_EQ(view.Said(), "The program has ended with exit code 1");
}

TEST_F(ProgramTest, AProgramThatBecomesAnother_EndsAsThatOne) {
  Add("a.cpp",
      "#include <unistd.h>\nint main() {\n"
      "  execl(\"/bin/sh\", \"sh\", \"-c\", \"exit 6\", nullptr);\n}\n");
  debugger.Run(Debugger::With::cGdb);
  ASSERT_TRUE(IdleUntilEnd());
  EXPECT_EQ(view.Said(), "The program has ended with exit code 6");
}

TEST_F(ProgramTest, CommandsInEveryState_AreHarmless) {
  Add("a.cpp", "int main() {\n  int k = 1;\n  return k;\n}\n");
  debugger.Toggle(Path("a.cpp"), 1);
  const auto all = [this] {
    debugger.Step(GdbStep::cOver);
    debugger.Step(GdbStep::cOut);
    debugger.Pause();
    debugger.ViewCallStack();
    debugger.SelectFrame(7);
    debugger.PrintTip("k");
    debugger.Execute("info locals");
    debugger.SetCondition(0, "");
    debugger.RefreshDisplays();
    debugger.ReconcileAll();
  };
  debugger.Run(Debugger::With::cGdb);
  debugger.Run(Debugger::With::cGdb);
  all();
  ASSERT_TRUE(IdleUntilPaused());
  EXPECT_EQ(view.execution, "a.cpp:2");
  all();
  IdleUntil([this] { return debugger.State() != DebugState::cRunning && debugger.IsQuiet(); });
  debugger.Stop();
  all();
  EXPECT_EQ(debugger.State(), DebugState::cStarting) << "a step starts";
  debugger.Stop();
  debugger.Stop();
  EXPECT_EQ(debugger.State(), DebugState::cNotRunning);
}

TEST_F(ProgramTest, Parameters_ReachTheProgramAsTheyAre) {
  Add("a.cpp",
      "#include <cstdio>\nint main(int count, char** words) {\n"
      "  for (int i = 1; i < count; ++i) std::printf(\"<%s>\", words[i]);\n"
      "  std::puts(\"\");\n}\n");
  debugger.SetParams("a \"b  c\" $HOME 'd");
  debugger.Run(Debugger::With::cGdb);
  ASSERT_TRUE(IdleUntilEnd());
  EXPECT_THAT(Output(), HasSubstr("<a><b  c><$HOME><'d>\r\n"));
}

TEST_F(ProgramTest, Redirections_AreTheShells) {
  Add("a.cpp",
      "#include <cstdio>\nint main() {\n  int n = 0;\n  if (std::scanf(\"%d\", &n) != 1) n = 99;\n"
      "  return n;\n}\n");
  build.files.Write("in put.txt", "23\n");
  debugger.SetParams("< \"in put.txt\"");
  debugger.Run(Debugger::With::cGdb);
  ASSERT_TRUE(IdleUntilEnd());
  EXPECT_EQ(view.Said(), "The program has ended with exit code 23");
}

TEST_F(ProgramTest, TheProgramsEnvironment_IsTheUsers) {
  const test::ScopedVariable colours("GCC_COLORS", "error=01;31");
  const test::ScopedVariable messages("LC_MESSAGES", "de_DE.UTF-8");
  Add("a.cpp",
      "#include <cstdio>\n#include <cstdlib>\n#include <string>\nint main() {\n"
      "  for (const char* name : {\"GCC_COLORS\", \"LC_MESSAGES\", \"LINES\"}) {\n"
      "    const char* value = std::getenv(name);\n"
      "    std::printf(\"%s=%s\\n\", name, value ? value : \"unset\");\n  }\n}\n");
  debugger.Run(Debugger::With::cGdb);
  ASSERT_TRUE(IdleUntilEnd());
  EXPECT_THAT(Output(), HasSubstr("GCC_COLORS=error=01;31\r\nLC_MESSAGES=de_DE.UTF-8\r\n"));
  EXPECT_THAT(Output(), HasSubstr("LINES=unset\r\n"));
}

TEST_F(ProgramTest, ALongLineAndMuchOutput_AreBounded) {
  Add("a.cpp",
      "#include <cstdio>\nint main() {\n  for (int i = 0; i < 10000000; ++i) std::putchar('x');\n"
      "  std::puts(\"\");\n  return 1;\n}\n");
  debugger.Run(Debugger::With::cGdb);
  ASSERT_TRUE(IdleUntilEnd());
  EXPECT_EQ(view.Said(), "The program has ended with exit code 1");
  EXPECT_LT(Output().size(), 9u << 20);
  EXPECT_THAT(Output(), HasSubstr("[The program prints more than is shown.]"));
}

TEST_F(ProgramTest, AProgramThatIsNoConsoleProgram_PrintsIntoTheOutputPanel) {
  build.project.type = cApiApplication;
  Add("a.cpp", "#include <cstdio>\nint main() {\n  std::puts(\"form\");\n}\n");
  debugger.Run(Debugger::With::cGdb);
  ASSERT_TRUE(IdleUntilEnd());
  EXPECT_THAT(Output(), HasSubstr("form\r\n"));
}

// In full: ZENDRY_DEBUG_RESTARTS=50.
TEST_F(ProgramTest, Restarts_LeaveMemoryDescriptorsAndProcessesWhereTheyWere) {
  Add("a.cpp", "int main() {\n  return 0;\n}\n");
  debugger.Toggle(Path("a.cpp"), 1);
  debugger.AddExpression(0, "1 + 1");
  ASSERT_TRUE(RunToStop());
  debugger.Stop();
  const int descriptors = Descriptors();
  const size_t memory = Memory();
  for (int i = 0; i < Count("ZENDRY_DEBUG_RESTARTS", 3); ++i) {
    ASSERT_TRUE(RunToStop());
    debugger.Stop();
    view.says.clear();
  }
  EXPECT_EQ(Descriptors(), descriptors);
  EXPECT_EQ(Children(), "");
  EXPECT_LT(Memory(), memory + cMostGrowth);
}

// In full: ZENDRY_DEBUG_STEPS=10000.
TEST_F(ProgramTest, Steps_LeaveMemoryDescriptorsAndProcessesWhereTheyWere) {
  Add("a.cpp", "int main() {\n  int k = 0;\n  for (;;) {\n    ++k;\n    ++k;\n  }\n}\n");
  debugger.Toggle(Path("a.cpp"), 3);
  debugger.AddExpression(0, "k");
  ASSERT_TRUE(RunToStop());
  debugger.ClearAll();
  ASSERT_TRUE(StepToStop(GdbStep::cOver));
  const int descriptors = Descriptors();
  const std::string children = Children();
  const size_t memory = Memory();
  for (int i = 0; i < Count("ZENDRY_DEBUG_STEPS", 100); ++i) {
    ASSERT_TRUE(StepToStop(GdbStep::cOver));
    view.says.clear();
  }
  EXPECT_EQ(Descriptors(), descriptors);
  EXPECT_EQ(Children(), children);
  EXPECT_LT(Memory(), memory + cMostGrowth);
}

TEST_F(ProgramTest, AProgramThatPrintsWithoutEnd_LeavesTimeForTheUserInEachPass) {
  Add("a.cpp",
      "#include <cstdio>\nint main() {\n"
      "  for (int i = 0;; ++i) std::printf(\"line %d\\n\", i);\n}\n");
  debugger.Run(Debugger::With::cGdb);
  constexpr size_t cPass = 16384, cRead = 4096, cEnough = 1 << 20;
  constexpr size_t cSaid = 1024;  // by the debugger itself, when the program starts
  size_t largest = 0, before = 0;
  ASSERT_TRUE(IdleUntil([&] {
    largest = std::max(largest, build.shell.output.size() - before);
    before = build.shell.output.size();
    return before > cEnough;
  }));
  EXPECT_LE(largest, cPass + cRead + cSaid);
  debugger.Stop();
  EXPECT_EQ(debugger.State(), DebugState::cNotRunning) << "it is stopped in the middle";
}

TEST_F(ProgramTest, ManyShortLines_CountForMoreThanTheirLetters) {
  Add("a.cpp",
      "#include <cstdio>\nint main() {\n"
      "  for (int i = 0; i < 400000; ++i) std::puts(\"x\");\n}\n");
  debugger.Run(Debugger::With::cGdb);
  ASSERT_TRUE(IdleUntilEnd());
  const std::string output = Output();
  EXPECT_LT(std::count(output.begin(), output.end(), '\n'), 260'000);
  EXPECT_THAT(output, HasSubstr("[The program prints more than is shown.]"));
}

TEST_F(ProgramTest, TheLastOutput_IsShownBeforeTheEndIsSaid) {
  Add("a.cpp",
      "#include <cstdio>\nint main() {\n"
      "  for (int i = 0; i < 3000; ++i) std::printf(\"line %d\\n\", i);\n"
      "  std::printf(\"last\");\n}\n");
  for (int i = 0; i < 3; ++i) {
    build.shell.output.clear();
    debugger.Run(Debugger::With::cGdb);
    ASSERT_TRUE(IdleUntilEnd());
    EXPECT_THAT(Output(),
                testing::EndsWith("line 2999\r\nlast\r\n------ The program has ended with exit "
                                  "code 0 --> \r\n"));
  }
}

TEST_F(ProgramTest, WhatGdbSaysInEverySession_CanBeLeftOut) {
  Add("a.cpp", "int main() {\n  return 2;\n}\n");
  const auto output = [this] {
    build.shell.output.clear();
    debugger.Toggle(Path("a.cpp"), 1);
    EXPECT_TRUE(RunToStop());
    debugger.ClearAll();
    debugger.Execute("echo said\\n");
    debugger.Run(Debugger::With::cGdb);
    EXPECT_TRUE(IdleUntilEnd());
    return Output();
  };
  EXPECT_THAT(output(), AllOf(HasSubstr("------ Starting program: "), HasSubstr("Continuing."),
                              HasSubstr("------ said -->"), HasSubstr("exit code 2")));
  theIdeSession.quietDebugger = true;
  EXPECT_THAT(output(), AllOf(Not(HasSubstr("Starting program")), Not(HasSubstr("Continuing.")),
                              HasSubstr("------ said -->"), HasSubstr("exit code 2")));
  theIdeSession.quietDebugger = false;
}

TEST_F(ProgramTest, FilesThatAreClosedAndOpened_KeepTheirBreakpoints) {
  Add("a.cpp", "int main() {\n  int k = 1;\n  return k;\n}\n");
  debugger.Toggle(Path("a.cpp"), 1);
  std::map<int, int>& marks = view.marks[Path("a.cpp")];
  marks.begin()->second = 2;
  debugger.FileClosing(Path("a.cpp"));
  view.marks.clear();
  EXPECT_EQ(debugger.breakpoints.entries[0].line, 2);
  EXPECT_EQ(debugger.breakpoints.entries[0].handle, -1);
  view.marks[Path("a.cpp")];
  debugger.FileOpened(Path("a.cpp"));
  const int handle = debugger.breakpoints.entries[0].handle;
  EXPECT_EQ(view.marks[Path("a.cpp")].at(handle), 2);
  debugger.ClearAll();
  EXPECT_TRUE(view.marks[Path("a.cpp")].empty());
}

}  // namespace
}  // namespace zendry
