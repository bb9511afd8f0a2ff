#include "SpawnConsole.h"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "CommandLine.h"
#include "ConsoleFixture.h"
#include "Descriptor.h"
#include "FewDescriptors.h"
#include "TempFolder.h"

namespace mavro {
namespace {

using testing::Contains;
using testing::Each;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

struct BlockingConsole : test::ConsoleFixture {
  bool Run(const std::string& arguments) { return console.Execute(Child(arguments), cBlocking); }
};

TEST_F(BlockingConsole, New_HasRunNothing) {
  EXPECT_FALSE(console.running);
  EXPECT_EQ(console.exitCode, -1);
  EXPECT_EQ(console.exitSignal, 0);
  EXPECT_FALSE(console.Send("x"));
  EXPECT_FALSE(console.Interrupt());
  console.Terminate();
  console.Poll();
  SpawnConsole::StopBlockingRun();
  EXPECT_THAT(recorder.reasons, IsEmpty());
}

TEST_F(BlockingConsole, Lines_ArriveWithoutTheirEndingAndWhole) {
  EXPECT_TRUE(Run("raw one\\ntwo\\r\\nthree\\n"));
  EXPECT_THAT(lines, ElementsAre("one", "two", "three"));
  EXPECT_THAT(recorder.reasons, ElementsAre(0));
  EXPECT_EQ(recorder.sender, &console);
}

TEST_F(BlockingConsole, LastLineWithoutNewline_IsDeliveredAtTheEnd) {
  Run("raw one\\ntwo");
  EXPECT_THAT(lines, ElementsAre("one", "two"));
}

TEST_F(BlockingConsole, BlankLines_AreEmptyLinesEvenTheFirst) {
  Run("raw \\n\\none\\n\\n");
  EXPECT_THAT(lines, ElementsAre("", "", "one", ""));
}

TEST_F(BlockingConsole, NothingPrinted_IsNoLine) {
  EXPECT_TRUE(Run("exit 0"));
  EXPECT_THAT(lines, IsEmpty());
}

TEST_F(BlockingConsole, BothOutputs_ArriveInTheOrderWritten) {
  Run("both");
  EXPECT_THAT(lines, ElementsAre("out", "err", "out again"));
}

TEST_F(BlockingConsole, LinesLongerThanARead_ArriveWhole) {
  Run("lines 1000 237");
  EXPECT_THAT(lines, SizeIs(1000));
  EXPECT_THAT(lines, Each(std::string(237, 'x')));
}

TEST_F(BlockingConsole, TenMegabytesWithoutNewline_AreOneLine) {
  Run("big 10000000");
  ASSERT_THAT(lines, SizeIs(1));
  EXPECT_EQ(lines[0].size(), 10'000'000u);
}

TEST_F(BlockingConsole, BinaryOutput_IsKept) {
  std::string before, after;
  for (int c = 0; c < 256; ++c) (c < '\n' ? before : after) += static_cast<char>(c);
  Run("binary");
  EXPECT_THAT(lines, ElementsAre(before, after.substr(1)));
}

TEST_F(BlockingConsole, ExitCode_IsKeptAndTheReason) {
  EXPECT_TRUE(Run("exit 3"));
  EXPECT_EQ(console.exitCode, 3);
  EXPECT_EQ(console.exitSignal, 0);
  EXPECT_THAT(recorder.reasons, ElementsAre(3));
}

TEST_F(BlockingConsole, DeathByASignal_DiffersFromExit) {
  EXPECT_TRUE(Run("signal 9"));
  EXPECT_THAT(lines, ElementsAre("half a line"));
  EXPECT_EQ(console.exitSignal, SIGKILL);
  EXPECT_EQ(console.exitCode, 128 + SIGKILL);
  EXPECT_THAT(recorder.reasons, ElementsAre(128 + SIGKILL));
  Run("exit 0");
  EXPECT_EQ(console.exitSignal, 0);
}

TEST_F(BlockingConsole, MissingTool_IsShownByItsCommandLine) {
  EXPECT_FALSE(console.Execute("no-such-tool -c a.c", cBlocking));
  EXPECT_THAT(dialogs.texts, ElementsAre("Compiler error: Error run: no-such-tool -c a.c"));
  EXPECT_EQ(console.exitCode, -1);
  EXPECT_THAT(recorder.reasons, IsEmpty());
}

TEST_F(BlockingConsole, MissingToolOfALongCommand_IsShownBy116Characters) {
  const std::string command = "no-such-tool " + std::string(200, 'x');
  console.Execute(command, cBlocking);
  EXPECT_THAT(dialogs.texts, ElementsAre("Compiler error: Error run: " + command.substr(0, 116)));
}

TEST_F(BlockingConsole, WhatIsNoProgram_IsShownToo) {
  const test::TempFolder folder;
  const std::string text = folder.Write("text", "echo not run by a shell\n");
  const std::string nul = Child("print a") + '\0';
  for (const std::string& command : {std::string(), std::string("\"\""), text, folder.Path(), nul})
    EXPECT_FALSE(console.Execute(command, cBlocking)) << command;
  std::filesystem::permissions(text, std::filesystem::perms::all);
  EXPECT_FALSE(console.Execute(text, cBlocking));
  EXPECT_THAT(dialogs.texts, SizeIs(6));
  EXPECT_THAT(lines, IsEmpty());
}

TEST_F(BlockingConsole, FailedStartAfterARun_ForgetsItsEnd) {
  Run("signal 9");
  console.Execute("no-such-tool", cBlocking);
  EXPECT_EQ(console.exitCode, -1);
  EXPECT_EQ(console.exitSignal, 0);
}

TEST_F(BlockingConsole, CommandLine_IsSplitAndNoShellSeesIt) {
  Run(R"(print $HOME `id` "a b" ; > x | y * 'c d' \"e\")");
  EXPECT_THAT(lines, ElementsAre("$HOME", "`id`", "a b", ";", ">", "x", "|", "y", "*", "'c", "d'",
                                 "\"e\""));
}

TEST_F(BlockingConsole, Folder_IsTheChilds) {
  const test::TempFolder folder;
  console.SetOutput(Keep(), folder.Path());
  Run("folder");
  EXPECT_THAT(lines, ElementsAre(folder.Path()));
}

TEST_F(BlockingConsole, MissingFolder_IsAFailedStart) {
  const test::TempFolder folder;
  console.SetOutput(Keep(), folder.Path("none"));
  EXPECT_FALSE(Run("folder"));
  EXPECT_THAT(dialogs.texts, ElementsAre(HasSubstr("Compiler error: Error run: ")));
}

TEST_F(BlockingConsole, RelativeProgramWithASlash_IsTakenFromTheChildsFolder) {
  const test::TempFolder folder;
  folder.Folder("bin");
  std::filesystem::create_symlink(TEST_CHILD, folder.Path("bin/tool"));
  console.SetOutput(Keep(), folder.Path());
  EXPECT_TRUE(console.Execute("bin/tool print found", cBlocking));
  EXPECT_THAT(lines, ElementsAre("found"));
}

TEST_F(BlockingConsole, StandardInput_IsAtItsEnd) {
  Run("echo");
  EXPECT_THAT(lines, ElementsAre("end of input"));
}

TEST_F(BlockingConsole, Environment_HasNoTerminalColoursOrDownloads) {
  setenv("DEBUGINFOD_URLS", "https://example.org", 1);
  setenv("GCC_COLORS", "error=01;31", 1);
  setenv("ZENDRY_TEST", "kept", 1);
  Run("environment TERM GCC_COLORS DEBUGINFOD_URLS ZENDRY_TEST");
  EXPECT_THAT(lines, ElementsAre("TERM=dumb", "GCC_COLORS=", "DEBUGINFOD_URLS is not set",
                                 "ZENDRY_TEST=kept"));
  for (const char* name : {"DEBUGINFOD_URLS", "GCC_COLORS", "ZENDRY_TEST"}) unsetenv(name);
}

TEST_F(BlockingConsole, Environment_TakesTheChangesItIsGiven) {
  setenv("ZENDRY_TEST", "old", 1);
  setenv("ZENDRY_TEST2", "kept", 1);
  setenv("ZENDRY_TEST3", "dropped", 1);
  console.environment = {"ZENDRY_TEST=new", "ZENDRY_TEST3", "ZENDRY_TEST4=a=b", "GCC_COLORS=x"};
  Run("environment ZENDRY_TEST ZENDRY_TEST2 ZENDRY_TEST3 ZENDRY_TEST4 GCC_COLORS");
  EXPECT_THAT(lines, ElementsAre("ZENDRY_TEST=new", "ZENDRY_TEST2=kept", "ZENDRY_TEST3 is not set",
                                 "ZENDRY_TEST4=a=b", "GCC_COLORS=x"));
  for (const char* name : {"ZENDRY_TEST", "ZENDRY_TEST2", "ZENDRY_TEST3"}) unsetenv(name);
}

TEST_F(BlockingConsole, Descriptors_OfOursAreClosed) {
  const int leaked = open("/dev/null", O_RDONLY);  // on purpose without close-on-exec
  Run("descriptors");
  EXPECT_THAT(lines, ElementsAre("0", "1", "2"));
  close(leaked);
}

// The C library keeps two signals to itself; they are masked out here.
TEST_F(BlockingConsole, Surroundings_AreThoseOfANewProgramWithoutTerminal) {
  const auto savedPipe = signal(SIGPIPE, SIG_IGN), savedInterrupt = signal(SIGINT, SIG_IGN);
  Run("surroundings");
  signal(SIGPIPE, savedPipe);
  signal(SIGINT, savedInterrupt);
  ASSERT_THAT(lines, SizeIs(4));
  EXPECT_EQ(lines[0], "own group");
  EXPECT_EQ(lines[1], "no terminal");
  constexpr unsigned long long cLibrarySignals = 0x180000000;
  for (size_t i : {2u, 3u})
    EXPECT_EQ(std::stoull(lines[i].substr(8), nullptr, 16) & ~cLibrarySignals, 0u) << lines[i];
}

// The first run is for the sanitizers, which need descriptors of their own at first.
TEST_F(BlockingConsole, NoDescriptorLeft_IsShown) {
  EXPECT_TRUE(Run("print a"));
  for (int count : {0, 1, 2, 3}) {
    const test::FewDescriptors few(count);
    EXPECT_FALSE(Run("print b"));
  }
  EXPECT_THAT(dialogs.texts, Each("Compiler error: CreatePipe"));
  EXPECT_THAT(dialogs.texts, SizeIs(4));
  EXPECT_TRUE(Run("print c"));
  EXPECT_THAT(lines, ElementsAre("a", "c"));
}

TEST_F(BlockingConsole, NoDescriptorToWatchTheEnd_IsFoundOutByAsking) {
  constexpr int cThoseOfThePipes = 4;
  Run("close-output");
  {
    const test::FewDescriptors few(cThoseOfThePipes);
    EXPECT_TRUE(Run("close-output"));
  }
  EXPECT_EQ(console.exitSignal, SIGTERM);
}

// Any of them may be missing when a desktop starts us, and a pipe's end then has its number.
TEST_F(BlockingConsole, StandardStreamsOfOursClosed_ChildHasItsOwn) {
  for (int missing = 1; missing < 8; ++missing) {
    std::vector<Descriptor> saved(3);
    for (int i = 0; i < 3; ++i) saved[i] = Descriptor(fcntl(i, F_DUPFD_CLOEXEC, 10));
    for (int i = 0; i < 3; ++i)
      if (missing & 1 << i) close(i);
    lines.clear();
    Run("echo");
    Run("both");
    for (int i = 0; i < 3; ++i) dup2(saved[i].Number(), i);
    EXPECT_THAT(lines, ElementsAre("end of input", "out", "err", "out again")) << missing;
  }
}

TEST_F(BlockingConsole, OutputClosedButAlive_IsAskedToEndAndTold) {
  EXPECT_TRUE(Run("close-output"));
  ASSERT_THAT(lines, SizeIs(2));
  EXPECT_EQ(lines[0], "before");
  EXPECT_THAT(lines[1], HasSubstr("closed its output"));
  EXPECT_EQ(console.exitSignal, SIGTERM);
}

TEST_F(BlockingConsole, OutputClosedAndStubborn_IsKilled) {
  EXPECT_TRUE(Run("close-output stubborn"));
  EXPECT_EQ(console.exitSignal, SIGKILL);
  EXPECT_THAT(recorder.reasons, ElementsAre(128 + SIGKILL));
}

TEST_F(BlockingConsole, GrandchildHoldingTheOutput_DoesNotHoldUsUp) {
  EXPECT_TRUE(Run("grandchild"));
  ASSERT_THAT(lines, SizeIs(2));
  EXPECT_THAT(lines[1], HasSubstr("still holds its output"));
  EXPECT_EQ(console.exitCode, 7);
  EXPECT_EQ(console.exitSignal, 0);
  EXPECT_EQ(kill(std::stoi(lines[0]), SIGKILL), 0) << "it may live on";
}

TEST_F(BlockingConsole, ManyRuns_LeaveNoProcessAndNoDescriptor) {
  const int before = dup(0);
  close(before);
  for (int i = 0; i < 20; ++i) Run("print a");
  Run("signal 9");
  console.Execute("no-such-tool", cBlocking);
  const int after = dup(0);
  close(after);
  EXPECT_EQ(after, before);
  EXPECT_EQ(waitpid(-1, nullptr, WNOHANG), -1);
}

TEST_F(BlockingConsole, IgnoredChildSignal_StillGivesTheExitCode) {
  const auto saved = signal(SIGCHLD, SIG_IGN);
  Run("exit 5");
  signal(SIGCHLD, saved);
  EXPECT_EQ(console.exitCode, 5);
}

TEST_F(BlockingConsole, NoHandler_LinesAreDropped) {
  console.SetOutput(nullptr, "");
  EXPECT_TRUE(Run("lines 100 80"));
  EXPECT_EQ(console.exitCode, 0);
}

TEST_F(BlockingConsole, Run_IsNotAttached) {
  std::optional<bool> running, sent, hooked;
  console.SetOutput(
      [&](const std::string&) {
        running = console.running;
        sent = console.Send("x");
        hooked = TheIdleSlot().hook != nullptr;
      },
      "");
  Run("print a");
  EXPECT_EQ(running, false);
  EXPECT_EQ(sent, false);
  EXPECT_EQ(hooked, false);
}

TEST_F(BlockingConsole, WaitOfTheWindows_IsUsed) {
  static int waits;
  waits = 0;
  SetBlockingWait([](int descriptor, int milliseconds) {
    ++waits;
    pollfd entry{descriptor, POLLIN, 0};
    return poll(&entry, 1, milliseconds) > 0;
  });
  Run("print a");
  SetBlockingWait(nullptr);
  EXPECT_GT(waits, 0);
  EXPECT_THAT(lines, ElementsAre("a"));
}

TEST_F(BlockingConsole, TerminateFromTheHandler_StopsTheTool) {
  console.SetOutput([this](const std::string&) { console.Terminate(); }, "");
  EXPECT_TRUE(Run("flood"));
  EXPECT_EQ(console.exitSignal, SIGTERM);
  EXPECT_THAT(recorder.reasons, ElementsAre(128 + SIGTERM));
}

TEST_F(BlockingConsole, TerminateOfAStubbornTool_KillsIt) {
  console.SetOutput([this](const std::string&) { console.Terminate(); }, "");
  EXPECT_TRUE(Run("flood stubborn"));
  EXPECT_EQ(console.exitSignal, SIGKILL);
}

TEST_F(BlockingConsole, StopOfASilentTool_WorksFromASignalHandler) {
  const auto saved = signal(SIGALRM, [](int) { SpawnConsole::StopBlockingRun(); });
  console.SetOutput([](const std::string&) { ualarm(1000, 0); }, "");
  EXPECT_TRUE(Run("deaf"));
  signal(SIGALRM, saved);
  EXPECT_EQ(console.exitSignal, SIGTERM);
}

TEST_F(BlockingConsole, StopOfAToolThatHasClosedItsOutput_DoesNotWaitForIt) {
  TheSpawnLimits().closedOutput = 600'000;
  console.SetOutput([](const std::string&) { SpawnConsole::StopBlockingRun(); }, "");
  EXPECT_TRUE(Run("close-output stubborn"));
  EXPECT_EQ(console.exitSignal, SIGKILL);
}

TEST_F(BlockingConsole, StopAfterARun_DoesNotTouchTheNext) {
  Run("print a");
  SpawnConsole::StopBlockingRun();
  Run("print b");
  EXPECT_EQ(console.exitCode, 0);
}

TEST_F(BlockingConsole, RunFromTheHandler_IsARunOfItsOwn) {
  console.SetOutput(
      [this](const std::string& line) {
        lines.push_back(line);
        if (line == "outer") console.Execute(Child("raw inner\\n"), cBlocking);
      },
      "");
  Run("print outer after");
  EXPECT_THAT(lines, ElementsAre("outer", "inner", "after"));
  EXPECT_THAT(recorder.reasons, ElementsAre(0, 0));
}

TEST_F(BlockingConsole, HandlerReplacedWithinARun_RunKeepsItsOwn) {
  console.SetOutput(
      [this](const std::string& line) {
        lines.push_back(line);
        console.SetOutput(nullptr, "");
      },
      "");
  Run("print a b");
  EXPECT_THAT(lines, ElementsAre("a", "b"));
}

TEST_F(BlockingConsole, DestroyedByItsHandler_KillsTheToolAndReturns) {
  auto victim = std::make_unique<SpawnConsole>();
  SpawnConsole& alias = *victim;
  int count = 0;
  alias.SetOutput(
      [&](const std::string&) {
        ++count;
        victim.reset();
      },
      "");
  EXPECT_TRUE(alias.Execute(Child("flood"), cBlocking));
  EXPECT_EQ(count, 1);
  EXPECT_EQ(waitpid(-1, nullptr, WNOHANG), -1);
}

TEST_F(BlockingConsole, DestroyedByOnExit_ReturnsSafely) {
  struct Owner : object {
    std::unique_ptr<SpawnConsole> console = std::make_unique<SpawnConsole>();
    void OnExit(NotifyArgs&) { console.reset(); }
  } owner;
  owner.console->onExit.Add_H(&owner, &Owner::OnExit);
  EXPECT_TRUE(owner.console->Execute(Child("exit 0"), cBlocking));
  EXPECT_EQ(owner.console, nullptr);
}

TEST_F(BlockingConsole, QuotedNames_ReachTheToolAsTheyAre) {
  const std::vector<std::string> names = {"a b", "a\"b", "a\\",  "a b\\", "",
                                          "a'b", "$(x)", "a\nb", "-o",    "\xff"};
  std::string command = "print";
  for (const std::string& name : names) command += " " + QuoteArgument(name);
  Run(command);
  EXPECT_THAT(
      lines, ElementsAre("a b", "a\"b", "a\\", "a b\\", "", "a'b", "$(x)", "a", "b", "-o", "\xff"));
}

}  // namespace
}  // namespace mavro
