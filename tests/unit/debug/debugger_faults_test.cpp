#include <fcntl.h>
#include <gmock/gmock.h>
#include <signal.h>
#include <sys/stat.h>

#include <fstream>
#include <iterator>

#include "DebugTest.h"
#include "FileText.h"

// The debug session with programs that stand in for gdb or for the terminal, and with a gdb that is
// taken away.

namespace zendry {
namespace {

using testing::HasSubstr;

constexpr char cWaiting[] =
    "#include <unistd.h>\n#include <cstdio>\nint main() {\n"
    "  std::printf(\"pid %d\\nrunning\\n\", getpid());\n  std::fflush(stdout);\n"
    "  for (;;) pause();\n}\n";

// Beside the test programs in the build's folder.
std::string ConsoleHelper() {
  const auto unit = std::filesystem::path(TEST_CHILD).parent_path();
  return unit.parent_path().parent_path() / "tools/zendry-console";
}

bool HasEnded(int process) {
  std::ifstream stat("/proc/" + std::to_string(process) + "/stat");
  const std::string text((std::istreambuf_iterator<char>(stat)), {});
  return text.empty() || text.find(") Z") != std::string::npos;
}

struct FaultTest : test::DebugTest {
  // Puts a script in the place of gdb, and starts on a program that there is.
  void StartWith(const std::string& script) {
    Add("a.cpp", "int main() {}\n");
    build.files.Write("out-dbg/p.exe", "");
    const std::string path = build.install.Path("tools/gdb");
    std::filesystem::remove(path);
    build.install.Write("tools/gdb", "#!/bin/sh\n" + script + "\n");
    chmod(path.c_str(), 0700);
    debugger.Step(GdbStep::cInto);
  }
  bool RunUntilItPrints(const std::string& text) {
    debugger.Run(Debugger::With::cGdb);
    return IdleUntil([&] { return Output().find(text) != std::string::npos; });
  }
  int NumberAfter(const std::string& word) const {
    const std::string output = Output();
    return std::atoi(output.c_str() + output.find(word) + word.size());
  }
  static int TracerOf(int process) {
    std::ifstream status("/proc/" + std::to_string(process) + "/status");
    const std::string text((std::istreambuf_iterator<char>(status)), {});
    constexpr std::string_view cTracer = "TracerPid:";
    return std::atoi(text.c_str() + text.find(cTracer) + cTracer.size());
  }
  static bool WaitForEnd(int process) {
    for (int i = 0; i < 20'000 && !HasEnded(process); ++i) usleep(1000);
    return HasEnded(process);
  }
};

TEST_F(FaultTest, NoGdb_IsSaid) {
  Add("a.cpp", "int main() {}\n");
  build.files.Write("out-dbg/p.exe", "");
  std::filesystem::remove(build.install.Path("tools/gdb"));
  debugger.Step(GdbStep::cInto);
  EXPECT_EQ(debugger.State(), DebugState::cNotRunning);
  EXPECT_THAT(view.Said(), HasSubstr("gdb can't be started"));
}

TEST_F(FaultTest, AGdbThatIsNotExecutable_IsSaid) {
  Add("a.cpp", "int main() {}\n");
  build.files.Write("out-dbg/p.exe", "");
  std::filesystem::remove(build.install.Path("tools/gdb"));
  build.install.Write("tools/gdb", "text");
  debugger.Step(GdbStep::cInto);
  EXPECT_EQ(debugger.State(), DebugState::cNotRunning);
  EXPECT_THAT(view.Said(), HasSubstr("gdb can't be started"));
}

TEST_F(FaultTest, AGdbThatDiesAtOnce_IsSaidWithItsWords) {
  StartWith("echo 'no such library'; exit 1");
  ASSERT_TRUE(IdleUntilEnd());
  EXPECT_EQ(view.Said(), "gdb has ended before the program ran: no such library");
}

TEST_F(FaultTest, AGdbThatNeverPrompts_IsSaidAndCanBeStopped) {
  TheDebugLimits().answer = 50;
  StartWith("exec sleep 1000");
  ASSERT_TRUE(IdleUntil([this] { return view.HasSaid("gdb doesn't answer"); }));
  EXPECT_EQ(debugger.State(), DebugState::cStarting);
  for (const GdbStep kind : {GdbStep::cInto, GdbStep::cOut}) debugger.Step(kind);
  debugger.Pause();
  debugger.Toggle(Path("a.cpp"), 0);
  debugger.Run(Debugger::With::cGdb);
  EXPECT_EQ(debugger.State(), DebugState::cStarting);
  debugger.Stop();
  EXPECT_EQ(debugger.State(), DebugState::cNotRunning);
}

TEST_F(FaultTest, GarbageWithoutEnd_IsBoundedAndCanBeStopped) {
  TheDebugLimits().answer = 200;
  StartWith("exec yes '1: garbage = $1 #1 Breakpoint 1, '");
  ASSERT_TRUE(IdleUntil([this] { return view.HasSaid("gdb doesn't answer"); }));
  EXPECT_LT(Output().size(), 100'000u);
  debugger.Stop();
  EXPECT_EQ(debugger.State(), DebugState::cNotRunning);
}

TEST_F(FaultTest, AGdbThatHangsAfterItsPrompt_CanBeStopped) {
  TheDebugLimits().answer = 50;
  StartWith("printf '\\032\\032prompt\\n'; exec sleep 1000");
  ASSERT_TRUE(IdleUntil([this] { return view.HasSaid("gdb doesn't start the program yet"); }));
  debugger.Reset();
  EXPECT_EQ(debugger.State(), DebugState::cNotRunning);
}

TEST_F(FaultTest, AKilledGdb_TakesTheProgramWithIt) {
  Add("a.cpp", cWaiting);
  ASSERT_TRUE(RunUntilItPrints("running\r\n"));
  const int program = NumberAfter("pid ");
  ASSERT_EQ(kill(TracerOf(program), SIGKILL), 0);
  ASSERT_TRUE(IdleUntilEnd());
  EXPECT_EQ(view.Said(), "gdb has ended");
  EXPECT_TRUE(WaitForEnd(program));
}

TEST_F(FaultTest, AStoppedGdb_CanBeStopped) {
  Add("a.cpp", cWaiting);
  ASSERT_TRUE(RunUntilItPrints("running\r\n"));
  const int program = NumberAfter("pid ");
  ASSERT_EQ(kill(TracerOf(program), SIGSTOP), 0);
  debugger.Stop();
  EXPECT_EQ(debugger.State(), DebugState::cNotRunning);
  EXPECT_TRUE(WaitForEnd(program));
}

TEST_F(FaultTest, AKilledProgram_IsSaid) {
  Add("a.cpp", cWaiting);
  ASSERT_TRUE(RunUntilItPrints("running\r\n"));
  ASSERT_EQ(kill(NumberAfter("pid "), SIGKILL), 0);
  ASSERT_TRUE(IdleUntilEnd());
  EXPECT_EQ(view.Said(), "The program was ended by SIGKILL: Killed");
}

TEST_F(FaultTest, RunWithoutDebugging_ShowsOutputAndExitCode) {
  std::filesystem::create_symlink(ConsoleHelper(), build.install.Folder("bin") + "/zendry-console");
  Add("a.cpp",
      "#include <cstdio>\nint main(int, char** words) {\n  std::puts(words[2]);\n  return 7;\n}\n");
  debugger.SetParams("a \"b  c\"");
  debugger.Run(Debugger::With::cNothing);
  EXPECT_EQ(debugger.State(), DebugState::cNotRunning);
  ASSERT_TRUE(IdleUntil([this] { return view.HasSaid("The program has ended"); }));
  EXPECT_EQ(view.Said(), "The program has ended with exit code 7");
  EXPECT_THAT(Output(), HasSubstr("b  c\r\n"));
}

TEST_F(FaultTest, RunWithoutDebugging_WithoutItsHelper_IsSaid) {
  Add("a.cpp", "int main() {}\n");
  TheDebugLimits().window = 50;
  debugger.Run(Debugger::With::cNothing);
  EXPECT_TRUE(IdleUntil([this] { return view.HasSaid("The program's terminal can't be opened"); }));
}

// --- A window of the user's terminal

// A terminal emulator without a window: keys come from a pipe, the screen is a file.
struct WindowTest : FaultTest {
  WindowTest() {
    const std::string helper = build.install.Folder("bin") + "/zendry-console";
    std::filesystem::create_symlink(ConsoleHelper(), helper);
    const std::string path = build.install.Write(
        "path/x-terminal-emulator", "#!/bin/sh\nshift\nexec script -qefc \"$*\" /dev/null < " +
                                        build.install.Path("keys") + " > " +
                                        build.install.Path("screen") + " 2>&1\n");
    chmod(path.c_str(), 0700);
    mkfifo(build.install.Path("keys").c_str(), 0600);
    keys = open(build.install.Path("keys").c_str(), O_RDWR | O_CLOEXEC);
  }
  ~WindowTest() override { close(keys); }

  void Type(std::string_view text) const {
    ASSERT_EQ(write(keys, text.data(), text.size()), static_cast<ssize_t>(text.size()));
  }
  std::string Screen() const { return mavro::ReadFileText(build.install.Path("screen")).text; }
  bool WaitForScreen(std::string_view text) {
    for (int i = 0; i < 20'000 && Screen().find(text) == std::string::npos; ++i) {
      IdleOnce();
      usleep(1000);
    }
    return Screen().find(text) != std::string::npos;
  }
  static void IdleOnce() {
    if (mavro::TheIdleSlot().hook) mavro::TheIdleSlot().hook();
  }

  test::ScopedVariable display{"DISPLAY", ":none"};
  test::ScopedVariable path{"PATH", build.install.Path("path") + ":" + std::getenv("PATH")};
  int keys = -1;
};

constexpr char cAsking[] =
    "#include <cstdio>\nint main() {\n  std::puts(\"number?\");\n  int n = 0;\n"
    "  std::scanf(\"%d\", &n);\n  for (volatile int i = 1; n == 0 && i; ++i) i = 1;\n"
    "  return n;\n}\n";

TEST_F(WindowTest, TheProgramReadsAndPrintsThere_AndTheWindowStaysUntilAKey) {
  Add("a.cpp", cAsking);
  debugger.Run(Debugger::With::cGdb);
  ASSERT_TRUE(WaitForScreen("number?")) << Output();
  EXPECT_FALSE(debugger.TakesInput());
  Type("17\r");
  ASSERT_TRUE(IdleUntilEnd());
  EXPECT_EQ(view.Said(), "The program has ended with exit code 17");
  EXPECT_TRUE(WaitForScreen("[The program has ended with exit code 17] Press a key to close."));
  EXPECT_EQ(Output().find("number?"), std::string::npos);
  Type("x");
}

TEST_F(WindowTest, CtrlC_StopsInTheDebugger) {
  Add("a.cpp", cAsking);
  debugger.Run(Debugger::With::cGdb);
  ASSERT_TRUE(WaitForScreen("number?"));
  Type("0\r");
  Type("\x03");
  ASSERT_TRUE(IdleUntilPaused());
  EXPECT_TRUE(view.HasSaid("Paused"));
  debugger.Stop();
}

TEST_F(WindowTest, WithoutDebugging_TheHelperRunsTheProgram) {
  Add("a.cpp", cAsking);
  debugger.Run(Debugger::With::cNothing);
  ASSERT_TRUE(WaitForScreen("number?"));
  Type("9\r");
  ASSERT_TRUE(IdleUntil([this] { return view.HasSaid("exit code 9"); }));
  EXPECT_TRUE(WaitForScreen("Press a key"));
  Type("x");
}

TEST_F(WindowTest, AnEmulatorThatShowsNothing_LeavesTheOutputPanel) {
  build.install.Write("path/x-terminal-emulator", "#!/bin/sh\nexit 1\n");
  TheDebugLimits().window = 50;
  Add("a.cpp", "#include <cstdio>\nint main() {\n  std::puts(\"here\");\n}\n");
  debugger.Run(Debugger::With::cGdb);
  ASSERT_TRUE(IdleUntilEnd());
  EXPECT_THAT(Output(), HasSubstr("here\r\n"));
}

}  // namespace
}  // namespace zendry
