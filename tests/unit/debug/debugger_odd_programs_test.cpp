#include <gmock/gmock.h>
#include <signal.h>
#include <unistd.h>

#include <fstream>
#include <iterator>

#include "DebugTest.h"

// The debug session with programs, breakpoints and values that try its patience.

namespace zendry {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

struct OddTest : test::DebugTest {
  // The only gdb that this process has started.
  static int Gdb() {
    std::ifstream list("/proc/self/task/" + std::to_string(getpid()) + "/children");
    int process = 0;
    list >> process;
    return process;
  }
};

// --- A gdb that is taken away, by each signal in each state

struct Loss {
  DebugState state;
  bool isEvaluating;
  int signal;
};

class LostGdb : public OddTest, public testing::WithParamInterface<Loss> {};

TEST_P(LostGdb, LeavesADebuggerThatCanStartAgain) {
  build.install.Write("home/.gdbinit",
                      "python\nimport gdb, time\nclass Slow(gdb.Function):\n"
                      "  def invoke(self, value):\n    time.sleep(1000)\n    return value\n"
                      "Slow('slow')\nend\n");
  Add("a.cpp",
      "#include <unistd.h>\nint main() {\n  int k = 1;\n  for (; k;) usleep(1000);\n"
      "  return k;\n}\n");
  debugger.Toggle(Path("a.cpp"), 2);
  debugger.Run(Debugger::With::cGdb);
  if (GetParam().state != DebugState::cStarting) {
    ASSERT_TRUE(IdleUntilPaused());
    if (GetParam().isEvaluating) debugger.AddExpression(0, "$slow(k)");
    if (GetParam().state == DebugState::cRunning) {
      ASSERT_TRUE(StepToStop(GdbStep::cOver));
      debugger.Step(GdbStep::cOver);  // never comes back
    }
  }
  ASSERT_EQ(debugger.State(), GetParam().state);
  ASSERT_TRUE(!GetParam().isEvaluating || !debugger.IsQuiet());
  ASSERT_EQ(kill(Gdb(), GetParam().signal), 0);
  if (GetParam().signal == SIGSTOP) debugger.Stop();
  ASSERT_TRUE(IdleUntilEnd());
  EXPECT_THAT(view.Said(), testing::AnyOf(HasSubstr("gdb has ended"), "Debugging was stopped"));
  EXPECT_EQ(view.execution, "");
  EXPECT_EQ(Gdb(), 0) << "no process is left";
  debugger.ClearCurrent();
  ASSERT_TRUE(RunToStop()) << view.Said();
  EXPECT_EQ(view.execution, "a.cpp:3");
}

INSTANTIATE_TEST_SUITE_P(InEachState, LostGdb,
                         testing::Values(Loss{DebugState::cStarting, false, SIGKILL},
                                         Loss{DebugState::cStarting, false, SIGSTOP},
                                         Loss{DebugState::cPaused, false, SIGKILL},
                                         Loss{DebugState::cPaused, false, SIGSTOP},
                                         Loss{DebugState::cRunning, false, SIGKILL},
                                         Loss{DebugState::cRunning, false, SIGSTOP},
                                         Loss{DebugState::cPaused, true, SIGKILL},
                                         Loss{DebugState::cPaused, true, SIGSTOP}));

// --- Programs

TEST_F(OddTest, AProgramThatBecomesADaemon_HasEnded) {
  Add("a.cpp",
      "#include <unistd.h>\nint main() {\n  if (daemon(1, 0) != 0) return 1;\n"
      "  usleep(1000);\n  return 2;\n}\n");
  debugger.Run(Debugger::With::cGdb);
  ASSERT_TRUE(IdleUntilEnd());
  EXPECT_EQ(view.Said(), "The program has ended with exit code 0") << "that of its first process";
}

TEST_F(OddTest, AProgramThatClosesItsOutput_GoesOnBeingDebugged) {
  Add("a.cpp",
      "#include <unistd.h>\nint main() {\n  for (int i = 0; i < 3; ++i) close(i);\n"
      "  int k = 4;\n  return k;\n}\n");
  debugger.Toggle(Path("a.cpp"), 4);
  ASSERT_TRUE(RunToStop());
  EXPECT_EQ(view.execution, "a.cpp:5");
  debugger.Run(Debugger::With::cGdb);
  ASSERT_TRUE(IdleUntilEnd());
  EXPECT_EQ(view.Said(), "The program has ended with exit code 4");
}

// --- Breakpoints

TEST_F(OddTest, Breakpoints_InACommentOnTheLastLineAndBeyond) {
  Add("a.cpp", "int main() {\n  int k = 1;\n  // nothing\n  // here\n  ++k;\n  return k;\n}");
  debugger.Toggle(Path("a.cpp"), 2);
  debugger.Toggle(Path("a.cpp"), 6);
  debugger.Toggle(Path("a.cpp"), 20);
  ASSERT_TRUE(RunToStop());
  EXPECT_EQ(view.execution, "a.cpp:5");
  EXPECT_EQ(debugger.breakpoints.entries[0].line, 4) << "the next line with code";
  ASSERT_TRUE(RunToStop());
  EXPECT_EQ(view.execution, "a.cpp:7");
  const Breakpoint& beyond = debugger.breakpoints.entries.back();
  EXPECT_TRUE(beyond.isPending || !beyond.refusal.empty()) << "shown as one that can't be reached";
}

TEST_F(OddTest, ABreakpointInAnInlineFunction_StopsInEachOfItsUses) {
  Add("a.cpp",
      "__attribute__((always_inline)) inline int next(volatile int& k) {\n  ++k;\n  return k;\n}\n"
      "int main() {\n  volatile int k = 0;\n  next(k);\n  next(k);\n  next(k);\n  next(k);\n"
      "  next(k);\n  return k;\n}\n");
  debugger.Toggle(Path("a.cpp"), 1);
  for (int use = 0; use < 5; ++use) {
    ASSERT_TRUE(RunToStop()) << use;
    EXPECT_EQ(view.execution, "a.cpp:2");
  }
  EXPECT_EQ(debugger.breakpoints.entries[0].locations, 5);
  debugger.Run(Debugger::With::cGdb);
  ASSERT_TRUE(IdleUntilEnd());
  EXPECT_EQ(view.Said(), "The program has ended with exit code 5");
}

// --- Values

TEST_F(OddTest, LargeAndEndlessValues_AreBounded) {
  Add("a.cpp",
      "#include <list>\n#include <string>\nstruct Node {\n  Node* next;\n  int value;\n};\n"
      "int numbers[10000000], some[100000];\nint main() {\n  Node first = {nullptr, 1}, second = "
      "{&first, 2};\n"
      "  first.next = &second;\n  std::string text(1000000, 'x');\n"
      "  for (int i = 0; i < 10000000; ++i) numbers[i] = i;\n  some[2] = 2;\n  return 0;\n}\n");
  debugger.Toggle(Path("a.cpp"), 13);
  for (const char* expression :
       {"first", "*first.next->next", "numbers", "text", "some", "numbers[5]@3"})
    debugger.AddExpression(0, expression);
  ASSERT_TRUE(RunToStop()) << Output();
  const std::vector<std::string> values = Values();
  EXPECT_THAT(values[0], testing::MatchesRegex("first = \\{next = 0x[0-9a-f]+, value = 1\\}"));
  EXPECT_THAT(values[1], HasSubstr("value = 1"));
  EXPECT_THAT(values[2], HasSubstr("value requires 40000000 bytes"));
  EXPECT_THAT(values[4], testing::StartsWith("some = {0, 0, 2, 0"));
  EXPECT_EQ(values[5], "numbers[5]@3 = {5, 6, 7}");
  for (const std::string& value : values) EXPECT_LT(value.size(), 4096u);
  for (const Watch& watch : debugger.watches.lists[0]) EXPECT_LT(watch.whole.size(), 4096u);
}

// What lies in the stack before the constructors run looks like containers of any length.
TEST_F(OddTest, ContainersBeforeTheirConstructors_AreBounded) {
  Add("a.cpp",
      "#include <cstring>\n#include <list>\n#include <map>\n#include <string>\n#include "
      "<vector>\nvoid scribble() {\n  volatile char bytes[4096];\n  std::memset((char*)bytes, "
      "0x55, sizeof bytes);\n}\nint use() {\n  int k = 1;\n  std::string text = \"a\";\n  "
      "std::vector<int> numbers(3);\n  std::map<int, int> map;\n  std::list<int> list;\n  return "
      "k;\n}\nint main() {\n  scribble();\n  return use();\n}\n");
  debugger.Toggle(Path("a.cpp"), 10);
  for (const char* expression : {"text", "numbers", "map", "list", "k"})
    debugger.AddExpression(0, expression);
  ASSERT_TRUE(RunToStop()) << Output();
  ASSERT_TRUE(IdleUntil([this] { return debugger.IsQuiet(); }));
  ASSERT_TRUE(StepToStop(GdbStep::cOver));
  for (const std::string& value : Values()) EXPECT_LT(value.size(), 4096u) << value;
  EXPECT_THAT(Values().back(), HasSubstr("k = 1"));
  ASSERT_TRUE(StepToStop(GdbStep::cOver));
  EXPECT_THAT(Values()[0], HasSubstr("\"a\""));
}

// This gdb knows no consoles of programs; that is no news for the user.
TEST_F(OddTest, TheRefusedConsoleSetting_IsNotShown) {
  Add("a.cpp", "int main() {\n  return 0;\n}\n");
  debugger.Toggle(Path("a.cpp"), 1);
  ASSERT_TRUE(RunToStop());
  EXPECT_THAT(Output(), testing::Not(HasSubstr("No symbol \"new\"")));
  for (const std::string& said : view.says)
    EXPECT_THAT(said, testing::Not(HasSubstr("No symbol"))) << said;
}

TEST_F(OddTest, AWatchWithASideEffect_HasItOnceAtEachStop) {
  Add("a.cpp",
      "int count = 0;\nint main() {\n  int k = 1;\n  ++k;\n  ++k;\n  ++k;\n  return k;\n}\n");
  debugger.Toggle(Path("a.cpp"), 3);
  debugger.AddExpression(0, "++count");
  ASSERT_TRUE(RunToStop());
  EXPECT_THAT(Values(), ElementsAre("++count = 1"));
  ASSERT_TRUE(StepToStop(GdbStep::cOver));
  ASSERT_TRUE(StepToStop(GdbStep::cOver));
  EXPECT_THAT(Values(), ElementsAre("!++count = 3"));
}

}  // namespace
}  // namespace zendry
