#include <gmock/gmock.h>

#include "DebugTest.h"

// The debug session with the gdb of this machine.

namespace zendry {
namespace {

using test::DebugTest;
using testing::ElementsAre;
using testing::HasSubstr;

constexpr char cCounting[] = R"(#include <cstdio>

int twice(int k) {
  int result = 2 * k;

  return result;
}
int main() {
  int sum = 0;
  for (int i = 1; i < 4; ++i)
    sum += twice(i);
  std::printf("sum %d\n", sum);
  return 3;
}
)";

TEST_F(DebugTest, Run_StopsAtABreakpointAndGoesOnToTheEnd) {
  Add("a.cpp", cCounting);
  debugger.Toggle(Path("a.cpp"), 11);
  ASSERT_TRUE(RunToStop()) << Output();
  EXPECT_EQ(view.execution, "a.cpp:12");
  EXPECT_EQ(view.Said(), "Stopped at breakpoint 1 in main");
  EXPECT_TRUE(debugger.IsRunning());
  debugger.Run(Debugger::With::cGdb);
  ASSERT_TRUE(IdleUntilEnd());
  EXPECT_EQ(view.Said(), "The program has ended with exit code 3");
  EXPECT_EQ(view.execution, "");
  EXPECT_FALSE(debugger.IsRunning());
  EXPECT_THAT(Output(), HasSubstr("sum 12\r\n"));
}

TEST_F(DebugTest, Step_GoesIntoOverAndOut) {
  Add("a.cpp", cCounting);
  debugger.Run(Debugger::With::cGdb);
  ASSERT_TRUE(IdleUntilEnd());
  ASSERT_TRUE(StepToStop(GdbStep::cInto)) << Output();
  EXPECT_EQ(view.execution, "a.cpp:9") << "the first stop is in main";
  EXPECT_EQ(view.Said(), "Stopped in main") << "no breakpoint of the user's";
  ASSERT_TRUE(StepToStop(GdbStep::cOver));
  ASSERT_TRUE(StepToStop(GdbStep::cOver));
  EXPECT_EQ(view.execution, "a.cpp:11");
  ASSERT_TRUE(StepToStop(GdbStep::cInto));
  EXPECT_EQ(view.execution, "a.cpp:4");
  EXPECT_EQ(view.Said(), "Stopped in twice");
  ASSERT_TRUE(StepToStop(GdbStep::cOut));
  EXPECT_EQ(view.execution, "a.cpp:11");
  debugger.Stop();
  EXPECT_EQ(debugger.State(), DebugState::cNotRunning);
  EXPECT_EQ(view.Said(), "Debugging was stopped");
}

TEST_F(DebugTest, AStepThatCantBeMade_LeavesTheProgramPaused) {
  Add("a.cpp", cCounting);
  debugger.Toggle(Path("a.cpp"), 8);
  ASSERT_TRUE(RunToStop());
  ASSERT_TRUE(StepToStop(GdbStep::cOut));
  EXPECT_THAT(view.says, testing::Contains(HasSubstr("not meaningful in the outermost frame")));
  EXPECT_EQ(view.execution, "a.cpp:9");
}

TEST_F(DebugTest, Breakpoints_GetNumbersMoveAndAreRemoved) {
  Add("a.cpp", cCounting);
  debugger.Toggle(Path("a.cpp"), 4);  // an empty line
  debugger.Toggle(Path("a.cpp"), 11);
  ASSERT_TRUE(RunToStop());
  EXPECT_EQ(view.execution, "a.cpp:6");
  const std::vector<Breakpoint>& entries = debugger.breakpoints.entries;
  EXPECT_EQ(entries[0].line, 5);
  EXPECT_EQ(view.marks[Path("a.cpp")].at(entries[0].handle), 5);
  EXPECT_EQ(entries[0].id, 1);
  EXPECT_EQ(entries[1].id, 2);
  debugger.Toggle(Path("a.cpp"), 5);
  ASSERT_EQ(entries.size(), 1u);
  EXPECT_TRUE(RunToStop());
  EXPECT_EQ(view.execution, "a.cpp:12");
}

TEST_F(DebugTest, TwoBreakpointsThatMeet_BecomeOne) {
  Add("a.cpp", cCounting);
  debugger.Toggle(Path("a.cpp"), 5);
  debugger.Toggle(Path("a.cpp"), 4);
  ASSERT_TRUE(RunToStop());
  EXPECT_EQ(debugger.breakpoints.entries.size(), 1u);
  EXPECT_EQ(view.marks[Path("a.cpp")].size(), 1u);
}

TEST_F(DebugTest, Breakpoints_FollowEdits) {
  Add("a.cpp", cCounting);
  debugger.Toggle(Path("a.cpp"), 11);
  debugger.Toggle(Path("a.cpp"), 3);
  std::map<int, int>& marks = view.marks[Path("a.cpp")];
  marks[debugger.breakpoints.entries[0].handle] = 12;
  marks.erase(debugger.breakpoints.entries[1].handle);
  debugger.Reconcile(Path("a.cpp"));
  ASSERT_EQ(debugger.breakpoints.entries.size(), 1u);
  EXPECT_EQ(debugger.breakpoints.entries[0].line, 12);
  marks[debugger.breakpoints.entries[0].handle] = 11;
  ASSERT_TRUE(RunToStop());
  EXPECT_EQ(view.execution, "a.cpp:12");
}

TEST_F(DebugTest, Conditions_AreSentAndEdited) {
  Add("a.cpp", cCounting);
  debugger.Toggle(Path("a.cpp"), 3);
  debugger.SetCondition(0, "k == 2");
  debugger.AddExpression(0, "k");
  ASSERT_TRUE(RunToStop());
  EXPECT_THAT(Values(), ElementsAre("k = 2"));
  debugger.SetCondition(0, "k > 5");
  debugger.Toggle(Path("a.cpp"), 11);
  ASSERT_TRUE(RunToStop());
  EXPECT_EQ(view.execution, "a.cpp:12");
}

TEST_F(DebugTest, ACondition_WithAnError_IsSaidAndCanBeMended) {
  Add("a.cpp", cCounting);
  debugger.Toggle(Path("a.cpp"), 3);
  debugger.Toggle(Path("a.cpp"), 8);
  debugger.SetCondition(0, "nosuch +");
  ASSERT_TRUE(RunToStop());
  EXPECT_EQ(view.execution, "a.cpp:9");
  EXPECT_THAT(debugger.breakpoints.entries[0].refusal, HasSubstr("No symbol \"nosuch\""));
  EXPECT_TRUE(view.HasSaid("Breakpoint a.cpp:4: No symbol"));
  debugger.SetCondition(0, "k == 3");
  ASSERT_TRUE(RunToStop());
  EXPECT_EQ(view.execution, "a.cpp:4");
  EXPECT_EQ(debugger.breakpoints.entries[0].refusal, "");
}

TEST_F(DebugTest, RunToCursor_StopsThereOnce) {
  Add("a.cpp", cCounting);
  build.project.SetMode(cRelease);
  debugger.Run(Debugger::With::cGdb);
  build.project.SetMode(cDebug);
  build.builder.Build(Builder::Scope::cStale);
  view.caret = CaretPlace{Path("a.cpp"), 3};
  debugger.RunToCursor();
  ASSERT_TRUE(IdleUntilPaused()) << Output();
  EXPECT_EQ(view.execution, "a.cpp:4");
  EXPECT_EQ(view.Said(), "Stopped in twice");
  view.caret = CaretPlace{Path("a.cpp"), 11};
  debugger.RunToCursor();
  ASSERT_TRUE(IdleUntilPaused());
  EXPECT_EQ(view.execution, "a.cpp:12");
  EXPECT_TRUE(debugger.breakpoints.entries.empty());
}

TEST_F(DebugTest, Step_InReleaseMode_IsRefused) {
  Add("a.cpp", cCounting);
  build.project.SetMode(cRelease);
  debugger.Step(GdbStep::cInto);
  EXPECT_THAT(dialogs.texts, ElementsAre("Information: Project not in debug mode!"));
  EXPECT_EQ(debugger.State(), DebugState::cNotRunning);
}

// --- Watches

TEST_F(DebugTest, Watches_ShowValuesAndWhatHasChanged) {
  Add("a.cpp", cCounting);
  debugger.Toggle(Path("a.cpp"), 10);
  EXPECT_TRUE(debugger.AddExpression(0, " sum "));
  EXPECT_TRUE(debugger.AddExpression(0, "i"));
  EXPECT_TRUE(debugger.AddExpression(0, "nosuch"));
  EXPECT_FALSE(debugger.AddExpression(0, "sum"));
  EXPECT_THAT(dialogs.texts, ElementsAre("Information: Watch contains: sum"));
  EXPECT_FALSE(debugger.AddExpression(0, "  "));
  const std::string error = "nosuch = No symbol \"nosuch\" in current context.";
  ASSERT_TRUE(RunToStop());
  EXPECT_THAT(Values(), ElementsAre("sum = 0", "i = 1", error));
  ASSERT_TRUE(RunToStop());
  EXPECT_THAT(Values(), ElementsAre("!sum = 2", "!i = 2", error));
  ASSERT_TRUE(StepToStop(GdbStep::cOver));
  EXPECT_THAT(Values(), ElementsAre("!sum = 6", "i = 2", error));
}

TEST_F(DebugTest, Watches_AreReadInTheFrameThatIsShown) {
  Add("a.cpp", cCounting);
  debugger.Toggle(Path("a.cpp"), 3);
  debugger.AddExpression(0, "k");
  debugger.AddExpression(0, "i");
  ASSERT_TRUE(RunToStop());
  EXPECT_THAT(Values(), ElementsAre("k = 1", "i = No symbol \"i\" in current context."));
  debugger.ViewCallStack();
  ASSERT_TRUE(IdleUntilPaused());
  EXPECT_THAT(view.stack, ElementsAre("#0  twice (k=1) at a.cpp:4", testing::StartsWith("#1 ")));
  debugger.SelectFrame(1);
  ASSERT_TRUE(IdleUntilPaused());
  EXPECT_EQ(view.execution, "a.cpp:11");
  EXPECT_THAT(Values(), ElementsAre("k = No symbol \"k\" in current context.", "i = 1"));
}

TEST_F(DebugTest, Watches_AreEditedInPlaceAndClearedDuringTheSession) {
  Add("a.cpp", cCounting);
  debugger.Toggle(Path("a.cpp"), 3);
  debugger.AddExpression(0, "k");
  ASSERT_TRUE(RunToStop());
  EXPECT_TRUE(debugger.ChangeExpression(0, 1, "k + 1"));
  EXPECT_TRUE(debugger.ChangeExpression(0, 0, "/x k + 9"));
  ASSERT_TRUE(IdleUntilPaused());
  EXPECT_THAT(Values(), ElementsAre("/x k + 9 = 0xa", "k + 1 = 2"));
  EXPECT_TRUE(debugger.ChangeExpression(0, 0, ""));
  ASSERT_TRUE(RunToStop());
  EXPECT_THAT(Values(), ElementsAre("!k + 1 = 3"));
  debugger.ClearCurrent();
  debugger.AddExpression(1, "k");
  debugger.RefreshDisplays();
  ASSERT_TRUE(IdleUntilPaused());
  EXPECT_TRUE(Values(0).empty());
  EXPECT_THAT(Values(1), ElementsAre("k = 2"));
}

TEST_F(DebugTest, Watches_OfTheLibrarysContainers) {
  Add("a.cpp",
      "#include <map>\n#include <string>\n#include <vector>\nint main() {\n"
      "  std::string s = \"one = two\";\n  std::vector<int> v = {1, 2};\n"
      "  std::map<int, std::string> m = {{1, \"x\"}};\n  return s.empty();\n}\n");
  debugger.Toggle(Path("a.cpp"), 7);
  for (const char* name : {"s", "v", "m"}) debugger.AddExpression(0, name);
  ASSERT_TRUE(RunToStop()) << Output();
  EXPECT_THAT(Values(),
              ElementsAre("s = \"one = two\"", "v = std::vector of length 2, capacity 2 = {1, 2}",
                          "m = std::map with 1 element = {[1] = \"x\"}"));
}

TEST_F(DebugTest, AValueThatTakesLong_IsGivenUp) {
  build.install.Write("home/.gdbinit",
                      "python\nimport gdb, time\nclass Slow(gdb.Function):\n"
                      "  def invoke(self, value):\n    time.sleep(1000)\n    return value\n"
                      "Slow('slow')\nend\n");
  Add("a.cpp", "int main() {\n  int k = 1;\n  ++k;\n  ++k;\n  return k;\n}\n");
  debugger.Toggle(Path("a.cpp"), 2);
  TheDebugLimits().evaluation = 300;
  for (const char* expression : {"k", "$slow(k)", "k + 1"}) debugger.AddExpression(0, expression);
  ASSERT_TRUE(RunToStop());
  const std::string given = "$slow(k) = <takes longer than 2 seconds>";
  EXPECT_THAT(Values(), ElementsAre("k = 1", given, "k + 1 = 2"));
  ASSERT_TRUE(StepToStop(GdbStep::cOver));
  EXPECT_EQ(view.execution, "a.cpp:4");
  EXPECT_THAT(Values(), ElementsAre("!k = 2", given, "!k + 1 = 3"));
}

TEST_F(DebugTest, AValueThatTakesLongOnlyLater_DoesNotHoldTheStop) {
  build.install.Write("home/.gdbinit",
                      "python\nimport gdb, time\nclass Slow(gdb.Function):\n"
                      "  def invoke(self, value):\n    if int(value) > 1: time.sleep(1000)\n"
                      "    return value\nSlow('slow')\nend\n");
  Add("a.cpp", "int main() {\n  int k = 1;\n  ++k;\n  ++k;\n  return k;\n}\n");
  debugger.Toggle(Path("a.cpp"), 2);
  TheDebugLimits().evaluation = 300;
  for (const char* expression : {"k", "$slow(k)", "k + 1"}) debugger.AddExpression(0, expression);
  ASSERT_TRUE(RunToStop());
  EXPECT_THAT(Values(), ElementsAre("k = 1", "$slow(k) = 1", "k + 1 = 2"));
  ASSERT_TRUE(StepToStop(GdbStep::cOver));
  EXPECT_EQ(view.execution, "a.cpp:4");
  EXPECT_THAT(Values(),
              ElementsAre("!k = 2", "$slow(k) = <takes longer than 2 seconds>", "!k + 1 = 3"));
}

TEST_F(DebugTest, PrintTip_ShowsTheValueAndNoError) {
  Add("a.cpp", cCounting);
  debugger.Toggle(Path("a.cpp"), 3);
  ASSERT_TRUE(RunToStop());
  const std::string before = Output();
  debugger.PrintTip("nosuch");
  ASSERT_TRUE(IdleUntilPaused());
  EXPECT_EQ(view.tip, "");
  debugger.PrintTip("k");
  ASSERT_TRUE(IdleUntilPaused());
  EXPECT_EQ(view.tip, "k=1");
  EXPECT_EQ(Output(), before);
}

TEST_F(DebugTest, ATip_IsOfTheExpressionThatIsUnderTheMouseNow) {
  Add("a.cpp", cCounting);
  debugger.Toggle(Path("a.cpp"), 3);
  ASSERT_TRUE(RunToStop());
  debugger.PrintTip("k");
  debugger.PrintTip("nosuch");
  ASSERT_TRUE(IdleUntilPaused());
  EXPECT_EQ(view.tip, "") << "the mouse has moved on to another name";
  debugger.PrintTip("k");
  debugger.PrintTip("");
  ASSERT_TRUE(IdleUntilPaused());
  EXPECT_EQ(view.tip, "") << "the mouse has left the name";
  debugger.PrintTip("k");
  ASSERT_TRUE(StepToStop(GdbStep::cOver));
  EXPECT_EQ(view.tip, "") << "the value is that of the stop before";
  debugger.PrintTip("k");
  debugger.PrintTip("k + 1");
  ASSERT_TRUE(IdleUntilPaused());
  EXPECT_EQ(view.tip, "k + 1=2");
}

// --- The call stack

TEST_F(DebugTest, TheCallStack_FollowsEachStopAsLongAsItIsSeen) {
  Add("a.cpp", cCounting);
  debugger.Toggle(Path("a.cpp"), 3);
  ASSERT_TRUE(RunToStop());
  EXPECT_TRUE(view.stack.empty()) << "nobody has asked for it";
  debugger.ViewCallStack();
  view.showsStack = true;
  ASSERT_TRUE(StepToStop(GdbStep::cOver));
  EXPECT_THAT(view.stack, ElementsAre("#0  twice (k=1) at a.cpp:6", testing::StartsWith("#1 ")));
  debugger.SelectFrame(1);
  ASSERT_TRUE(IdleUntilPaused());
  EXPECT_EQ(view.stack.size(), 2u) << "another frame is no other stop";
  debugger.SelectFrame(0);
  ASSERT_TRUE(StepToStop(GdbStep::cOut));
  EXPECT_THAT(view.stack, ElementsAre(testing::EndsWith(" at a.cpp:11")));
  view.showsStack = false;
  ASSERT_TRUE(RunToStop());
  EXPECT_EQ(view.stack.size(), 1u);
  view.showsStack = true;
  debugger.FollowStack();
  debugger.FollowStack();
  ASSERT_TRUE(IdleUntilPaused());
  EXPECT_EQ(view.stack.size(), 2u) << "its page has come to the front again";
}

// --- Running programs

constexpr char cEndless[] =
    "#include <unistd.h>\n#include <cstdio>\nint ticks = 0;\nint main() {\n"
    "  std::puts(\"running\");\n  for (;;) {\n    ++ticks;\n    usleep(1000);\n  }\n}\n";

struct RunningTest : DebugTest {
  bool RunUntilItPrints() {
    debugger.Run(Debugger::With::cGdb);
    return IdleUntil([this] { return Output().find("running\r\n") != std::string::npos; });
  }
};

TEST_F(RunningTest, Pause_StopsAndShowsTheFirstSource) {
  Add("a.cpp", cEndless);
  ASSERT_TRUE(RunUntilItPrints());
  debugger.Pause();
  ASSERT_TRUE(IdleUntilPaused());
  EXPECT_TRUE(IdleUntil([this] { return view.execution.starts_with("a.cpp:"); }));
  EXPECT_TRUE(view.HasSaid("Paused"));
}

TEST_F(RunningTest, ABreakpointThatIsSetMeanwhile_TakesEffectAtOnce) {
  Add("a.cpp", cEndless);
  ASSERT_TRUE(RunUntilItPrints());
  debugger.AddExpression(0, "ticks < 0 ? 8 : 9");
  debugger.Toggle(Path("a.cpp"), 6);
  EXPECT_EQ(debugger.State(), DebugState::cRunning);
  ASSERT_TRUE(IdleUntilPaused());
  EXPECT_EQ(view.execution, "a.cpp:7");
  EXPECT_EQ(view.Said(), "Stopped at breakpoint 1 in main");
  EXPECT_THAT(Output(), testing::Not(HasSubstr("SIGINT"))) << "the pause was ours";
  EXPECT_THAT(Values(), ElementsAre("ticks < 0 ? 8 : 9 = 9"));
}

TEST_F(RunningTest, AProgramThatBlocksTheInterrupt_CanBePaused) {
  Add("a.cpp",
      "#include <signal.h>\n#include <unistd.h>\n#include <cstdio>\nint main() {\n"
      "  sigset_t all;\n  sigfillset(&all);\n  sigprocmask(SIG_BLOCK, &all, nullptr);\n"
      "  std::puts(\"running\");\n  int n = 0;\n  for (;;) {\n    ++n;\n    usleep(1000);\n  "
      "}\n}\n");
  ASSERT_TRUE(RunUntilItPrints());
  debugger.Toggle(Path("a.cpp"), 10);
  ASSERT_TRUE(IdleUntilPaused());
  EXPECT_EQ(view.execution, "a.cpp:11");
  ASSERT_TRUE(RunToStop());
  EXPECT_EQ(view.execution, "a.cpp:11");
}

TEST_F(RunningTest, WhatAHostileProgramPrints_MovesNothing) {
  Add("a.cpp", R"(#include <cstdio>
int main() {
  int k = 1;
  std::puts("#1  f () at a.c:1\n1: k = 2\nBreakpoint 9 at 0x1: file a.c, line 2.\n(gdb) $1 = 2");
  std::puts("\032\032exited 3\n\032\032source /p/a.c:1:1:beg:0x1\n\032\032prompt\nrunning");
  return k - 1;
}
)");
  debugger.AddExpression(0, "k");
  debugger.Toggle(Path("a.cpp"), 5);
  ASSERT_TRUE(RunToStop());
  EXPECT_TRUE(IdleUntil([this] { return Output().find("running\r\n") != std::string::npos; }));
  EXPECT_THAT(Values(), ElementsAre("k = 1"));
  EXPECT_EQ(view.execution, "a.cpp:6");
  EXPECT_TRUE(view.stack.empty());
  EXPECT_EQ(debugger.breakpoints.entries[0].id, 1);
}

TEST_F(RunningTest, AProgramWithoutAWindow_ReadsALine) {
  Add("a.cpp",
      "#include <cstdio>\nint main() {\n  std::puts(\"running\");\n  int n = 0;\n"
      "  if (std::scanf(\"%d\", &n) != 1) n = -1;\n  return n;\n}\n");
  ASSERT_TRUE(RunUntilItPrints());
  ASSERT_TRUE(debugger.TakesInput());
  debugger.SendInput("17");
  ASSERT_TRUE(IdleUntilEnd());
  EXPECT_EQ(view.Said(), "The program has ended with exit code 17");
  EXPECT_FALSE(debugger.TakesInput());
}

// --- Ends

TEST_F(DebugTest, ACrash_IsSaidAndShownWhereTheSourceIs) {
  Add("a.cpp",
      "#include <cstring>\nvoid copy(char* to) {\n  std::strcpy(to, \"x\");\n}\n"
      "int main(int count, char**) {\n  copy(count > 5 ? new char[2] : nullptr);\n}\n");
  ASSERT_TRUE(RunToStop()) << Output();
  EXPECT_TRUE(view.HasSaid("The program has received SIGSEGV: Segmentation fault"));
  EXPECT_TRUE(IdleUntil([this] { return view.execution == "a.cpp:3"; })) << view.execution;
  EXPECT_GE(view.stack.size(), 2u);
}

// Programs that end by an exception: one statement each, what is said then.
struct Throw {
  const char* statement;
  const char* words;
};

class Throws : public DebugTest, public testing::WithParamInterface<Throw> {};

TEST_P(Throws, AnExceptionThatNobodyCatches_IsNamed) {
  Add("a.cpp",
      "#include <exception>\n#include <stdexcept>\n"
      "struct Own : std::runtime_error { using runtime_error::runtime_error; };\n"
      "struct Speaker : Own {\n  using Own::Own;\n"
      "  const char* what() const noexcept override { return \"speaks\"; }\n};\n"
      "namespace { struct Hidden {}; }\n"
      "int main() {\n  " +
          std::string(GetParam().statement) + "\n}\n");
  ASSERT_TRUE(RunToStop()) << Output();
  EXPECT_EQ(view.Said(), GetParam().words);
  EXPECT_THAT(view.execution, testing::StartsWith("a.cpp:"));
}

INSTANTIATE_TEST_SUITE_P(
    All, Throws,
    testing::Values(
        Throw{"throw std::runtime_error(\"it is \\\"so\\\"\");",
              "The program has thrown an exception that nobody catches: std::runtime_error: it is "
              "\"so\""},
        Throw{"throw Own(\"mine\");",
              "The program has thrown an exception that nobody catches: Own: mine"},
        Throw{"throw Speaker(\"unheard\");",
              "The program has thrown an exception that nobody catches: Speaker"},
        Throw{"throw Hidden();",
              "The program has thrown an exception that nobody catches: (anonymous "
              "namespace)::Hidden"},
        Throw{"throw 5;", "The program has thrown an exception that nobody catches: int"},
        Throw{"[]() noexcept { throw std::logic_error(\"no\"); }();",
              "The program has thrown an exception that nobody catches: std::logic_error: no"},
        Throw{"std::exception_ptr kept; try { throw Own(\"again\"); } catch (...) { kept = "
              "std::current_exception(); } std::rethrow_exception(kept);",
              "The program has thrown an exception that nobody catches: Own: again"},
        Throw{"std::terminate();", "The program has called std::terminate"}));

TEST_F(DebugTest, AMissingProgram_IsSaid) {
  Add("a.cpp", "int main() { return no_such; }\n");
  debugger.Run(Debugger::With::cGdb);
  EXPECT_EQ(debugger.State(), DebugState::cNotRunning);
  EXPECT_THAT(view.Said(), HasSubstr("There is no program to run: "));
}

TEST_F(DebugTest, AProgramThatCantBeRun_IsSaid) {
  Add("a.cpp", cCounting);
  build.builder.Build(Builder::Scope::cStale);
  chmod(Path("out-dbg/p.exe").c_str(), 0600);
  debugger.Step(GdbStep::cInto);
  ASSERT_TRUE(IdleUntilEnd());
  EXPECT_THAT(view.Said(), HasSubstr("The program can't be run"));
}

TEST_F(DebugTest, AHostileGdbinit_ChangesNothing) {
  build.install.Write("home/.gdbinit",
                      "set annotate 0\nset prompt other> \nset height 5\nset confirm on\n"
                      "set trace-commands on\npython raise Exception('x')\n");
  Add("a.cpp", cCounting);
  debugger.Toggle(Path("a.cpp"), 3);
  debugger.AddExpression(0, "k");
  ASSERT_TRUE(RunToStop());
  EXPECT_EQ(view.execution, "a.cpp:4");
  EXPECT_THAT(Values(), ElementsAre("k = 1"));
}

TEST_F(DebugTest, AStrippedProgram_StillRuns) {
  Add("a.cpp", cCounting);
  build.project.debugOptions = {0, "-O2", "-s"};
  debugger.Toggle(Path("a.cpp"), 3);
  debugger.Run(Debugger::With::cGdb);
  ASSERT_TRUE(IdleUntilEnd());
  EXPECT_EQ(view.Said(), "The program has ended with exit code 3");
}

TEST_F(DebugTest, AnEditedText_IsSaidToBeNewerThanTheProgram) {
  Add("a.cpp", cCounting);
  build.builder.Build(Builder::Scope::cStale);
  debugger.Toggle(Path("a.cpp"), 3);
  std::filesystem::last_write_time(
      Path("a.cpp"),
      std::filesystem::last_write_time(Path("out-dbg/p.exe")) + std::chrono::seconds(5));
  debugger.Step(GdbStep::cInto);
  ASSERT_TRUE(IdleUntilPaused());
  EXPECT_TRUE(view.HasSaid("The program is older than this text"));
}

TEST_F(RunningTest, Stop_LeavesNoProcessBehind) {
  Add("a.cpp",
      "#include <unistd.h>\n#include <cstdio>\nint main() {\n  const int child = fork();\n"
      "  if (child == 0) setpgid(0, 0);\n"
      "  if (child > 0) std::printf(\"pids %d %d\\nrunning\\n\", getpid(), child);\n"
      "  std::fflush(stdout);\n  for (;;) pause();\n}\n");
  ASSERT_TRUE(RunUntilItPrints());
  int program = 0, child = 0;
  const std::string output = Output();
  ASSERT_EQ(std::sscanf(output.c_str() + output.find("pids "), "pids %d %d", &program, &child), 2);
  debugger.Stop();
  const auto isGone = [](int id) {
    const std::string path = "/proc/" + std::to_string(id) + "/stat";
    std::ifstream stat(path);
    const std::string text((std::istreambuf_iterator<char>(stat)), {});
    return text.empty() || text.find(") Z") != std::string::npos;
  };
  for (int i = 0; i < 20'000 && !(isGone(program) && isGone(child)); ++i) usleep(1000);
  EXPECT_TRUE(isGone(program));
  EXPECT_TRUE(isGone(child));
}

TEST_F(DebugTest, Reset_EndsTheSessionAndForgets) {
  Add("a.cpp", cCounting);
  debugger.Toggle(Path("a.cpp"), 3);
  debugger.AddExpression(2, "k");
  ASSERT_TRUE(RunToStop());
  debugger.Reset();
  EXPECT_EQ(debugger.State(), DebugState::cNotRunning);
  EXPECT_TRUE(debugger.breakpoints.entries.empty());
  EXPECT_TRUE(debugger.watches.lists[2].empty());
}

TEST_F(DebugTest, TheConsole_ShowsWhatGdbSays) {
  Add("a.cpp", cCounting);
  debugger.Execute("print 1");
  EXPECT_THAT(view.console, ElementsAre("gdb doesn't run."));
  debugger.Toggle(Path("a.cpp"), 3);
  ASSERT_TRUE(RunToStop());
  debugger.Execute("print k + 41");
  ASSERT_TRUE(IdleUntilPaused());
  EXPECT_THAT(view.console, testing::Contains("$1 = 42"));
  for (const char* line : {"define twice", "print 2 * $arg0"}) {
    debugger.Execute(line);
    ASSERT_TRUE(IdleUntilPaused());
  }
  debugger.Toggle(Path("a.cpp"), 11);
  debugger.Execute("twice 21");
  ASSERT_TRUE(IdleUntilPaused());
  EXPECT_THAT(view.console, testing::Contains("$2 = 42"));
  EXPECT_EQ(debugger.breakpoints.entries[1].id, 2);
  debugger.Execute("quit");
  ASSERT_TRUE(IdleUntilEnd());
  EXPECT_EQ(view.Said(), "gdb has ended");
}

}  // namespace
}  // namespace zendry
