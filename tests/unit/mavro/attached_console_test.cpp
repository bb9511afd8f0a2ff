#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sched.h>
#include <sys/wait.h>
#include <unistd.h>

#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "ConsoleFixture.h"
#include "SpawnConsole.h"

namespace mavro {
namespace {

using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

struct AttachedConsole : test::ConsoleFixture {
  bool Attach(const std::string& arguments) { return console.Execute(Child(arguments), cAttached); }
};

TEST_F(AttachedConsole, Execute_ReturnsAtOnceWithTheIdleSlotSet) {
  EXPECT_TRUE(Attach("echo"));
  EXPECT_TRUE(console.running);
  EXPECT_NE(TheIdleSlot().hook, nullptr);
  EXPECT_GE(TheIdleSlot().wakeDescriptor, 0);
  console.Terminate();
}

TEST_F(AttachedConsole, Lines_ArriveWithTheirEnding) {
  Attach("raw one\\ntwo\\r\\n\\nthree\\n");
  EXPECT_TRUE(IdleToTheEnd());
  EXPECT_THAT(lines, ElementsAre("one\r\n", "two\r\n", "\r\n", "three\r\n"));
}

TEST_F(AttachedConsole, LastLineWithoutNewline_ArrivesWithTheEndOfTheOutput) {
  Attach("raw \"one\\n(gdb) \"");
  EXPECT_TRUE(IdleToTheEnd());
  EXPECT_THAT(lines, ElementsAre("one\r\n", "(gdb) "));
}

TEST_F(AttachedConsole, EndOfOutput_EndsTheRunAndFreesTheSlot) {
  Attach("exit 3");
  EXPECT_TRUE(IdleToTheEnd());
  EXPECT_THAT(recorder.reasons, ElementsAre(SpawnConsole::cPipeEnded));
  EXPECT_EQ(TheIdleSlot().hook, nullptr);
  EXPECT_EQ(TheIdleSlot().wakeDescriptor, -1);
  EXPECT_EQ(waitpid(-1, nullptr, WNOHANG), -1) << "a zombie stays";
}

TEST_F(AttachedConsole, Slot_TellsEachChange) {
  static int changes;
  changes = 0;
  TheIdleSlot().changed = [] { ++changes; };
  Attach("echo");
  EXPECT_EQ(changes, 1);
  console.Terminate();
  EXPECT_EQ(changes, 2);
  TheIdleSlot().changed = nullptr;
}

TEST_F(AttachedConsole, Poll_WithNothingThere_ReturnsAtOnce) {
  Attach("echo");
  console.Poll();
  EXPECT_TRUE(console.running);
  EXPECT_THAT(lines, IsEmpty());
  console.Terminate();
}

TEST_F(AttachedConsole, ExecuteWhileAttached_IsRefusedAndChildUntouched) {
  Attach("echo");
  EXPECT_FALSE(Attach("exit 0"));
  EXPECT_FALSE(console.Execute(Child("exit 0"), cBlocking));
  EXPECT_THAT(dialogs.texts, IsEmpty());
  EXPECT_THAT(recorder.reasons, IsEmpty());
  EXPECT_TRUE(console.Send("still there"));
  EXPECT_TRUE(IdleUntilLines(1));
  EXPECT_THAT(lines, ElementsAre("still there\r\n"));
}

TEST_F(AttachedConsole, SecondConsole_CannotAttachMeanwhile) {
  Attach("echo");
  SpawnConsole other;
  EXPECT_FALSE(other.Execute(Child("echo"), cAttached));
  EXPECT_FALSE(other.running);
  EXPECT_TRUE(other.Execute(Child("exit 4"), cBlocking));
  EXPECT_EQ(other.exitCode, 4);
  EXPECT_TRUE(console.running);
}

TEST_F(AttachedConsole, MissingTool_EndsTheRunWithItsReason) {
  EXPECT_FALSE(console.Execute("no-such-tool", cAttached));
  EXPECT_THAT(dialogs.texts, ElementsAre("Compiler error: Utility execution error"));
  EXPECT_THAT(recorder.reasons, ElementsAre(SpawnConsole::cStartFailed));
  EXPECT_FALSE(console.running);
  EXPECT_EQ(TheIdleSlot().hook, nullptr);
}

TEST_F(AttachedConsole, Folder_IsOurOwn) {
  console.SetOutput(Keep(), "/");
  Attach("folder");
  EXPECT_TRUE(IdleToTheEnd());
  char path[4096];
  EXPECT_THAT(lines, ElementsAre(getcwd(path, sizeof path) + std::string("\r\n")));
}

TEST_F(AttachedConsole, Send_ReachesTheChildWithANewline) {
  Attach("echo");
  EXPECT_TRUE(console.Send("info break"));
  EXPECT_TRUE(console.Send(""));
  EXPECT_TRUE(IdleUntilLines(2));
  EXPECT_THAT(lines, ElementsAre("info break\r\n", "\r\n"));
}

TEST_F(AttachedConsole, SendFromTheHandler_IsAllowed) {
  console.SetOutput(
      [this](const std::string& line) {
        lines.push_back(line);
        if (lines.size() < 5) console.Send(std::to_string(lines.size()));
      },
      "");
  Attach("echo");
  console.Send("0");
  EXPECT_TRUE(IdleUntilLines(5));
  EXPECT_THAT(lines, ElementsAre("0\r\n", "1\r\n", "2\r\n", "3\r\n", "4\r\n"));
}

TEST_F(AttachedConsole, SendToADeadChild_IsDropped) {
  Attach("exit 0");
  ASSERT_TRUE(WaitReadable(TheIdleSlot().wakeDescriptor, 20'000));
  while (console.Send("x")) continue;  // the pipe's other end may close a moment later
  EXPECT_TRUE(console.running) << "only a poll finds out";
  EXPECT_TRUE(IdleToTheEnd());
  EXPECT_THAT(recorder.reasons, ElementsAre(SpawnConsole::cPipeEnded));
  EXPECT_THAT(dialogs.texts, IsEmpty());
}

TEST_F(AttachedConsole, SendToAChildThatHasClosedItsInput_IsDropped) {
  Attach("close-input");
  EXPECT_TRUE(IdleUntilLines(1));
  EXPECT_FALSE(console.Send("x"));
  EXPECT_TRUE(console.running);
}

TEST_F(AttachedConsole, SendToADeafChild_EndsTheRunInsteadOfHanging) {
  Attach("deaf");
  EXPECT_TRUE(IdleUntilLines(1));
  EXPECT_FALSE(console.Send(std::string(1 << 20, 'x')));
  EXPECT_THAT(recorder.reasons, ElementsAre(SpawnConsole::cWriteFailed));
  EXPECT_FALSE(console.running);
  EXPECT_EQ(waitpid(-1, nullptr, WNOHANG), -1);
}

TEST_F(AttachedConsole, SendMoreThanAPipeHolds_ToAChildThatWaitsForItsOwnOutput) {
  TheSpawnLimits().write = 20'000;
  Attach("chatter 100000");
  std::string text;
  for (int i = 0; i < 30; ++i) text += std::string(9'999, 'q') + "\n";
  EXPECT_TRUE(console.Send(text.substr(0, text.size() - 1)));
  EXPECT_TRUE(IdleUntilLines(30));
  EXPECT_THAT(lines, Each(std::string(100'000, 'y') + "\r\n"));
}

TEST_F(AttachedConsole, Terminate_KillsAndTellsReasonOne) {
  Attach("close-output stubborn");
  EXPECT_TRUE(console.running);
  console.Terminate();
  EXPECT_FALSE(console.running);
  EXPECT_THAT(recorder.reasons, ElementsAre(SpawnConsole::cTerminated));
  EXPECT_EQ(TheIdleSlot().hook, nullptr);
  EXPECT_EQ(waitpid(-1, nullptr, WNOHANG), -1);
  console.Terminate();
  EXPECT_THAT(recorder.reasons, SizeIs(1));
}

TEST_F(AttachedConsole, SetOutput_TerminatesFirst) {
  Attach("echo");
  std::vector<std::string> others;
  console.SetOutput([&](const std::string& line) { others.push_back(line); }, "");
  EXPECT_FALSE(console.running);
  EXPECT_THAT(recorder.reasons, ElementsAre(SpawnConsole::cTerminated));
  Attach("print new");
  EXPECT_TRUE(IdleToTheEnd());
  EXPECT_THAT(others, ElementsAre("new\r\n"));
  EXPECT_THAT(lines, IsEmpty());
}

TEST_F(AttachedConsole, Destructor_TerminatesFirst) {
  {
    SpawnConsole other;
    other.onExit.Add_H(&recorder, &Recorder::OnExit);
    EXPECT_TRUE(other.Execute(Child("deaf"), cAttached));
  }
  EXPECT_THAT(recorder.reasons, ElementsAre(SpawnConsole::cTerminated));
  EXPECT_EQ(TheIdleSlot().hook, nullptr);
  EXPECT_EQ(waitpid(-1, nullptr, WNOHANG), -1);
}

TEST_F(AttachedConsole, Interrupt_ReachesTheChild) {
  Attach("interruptible");
  EXPECT_TRUE(IdleUntilLines(1));
  EXPECT_TRUE(console.Interrupt());
  EXPECT_TRUE(IdleUntilLines(2));
  EXPECT_THAT(lines, ElementsAre("ready\r\n", "interrupted\r\n"));
}

TEST_F(AttachedConsole, OutputClosedButAlive_IsKilled) {
  TheSpawnLimits().attachedEnd = 1;
  Attach("close-output stubborn");
  EXPECT_TRUE(IdleToTheEnd());
  EXPECT_THAT(lines, ElementsAre("before\r\n"));
  EXPECT_THAT(recorder.reasons, ElementsAre(SpawnConsole::cPipeEnded));
  EXPECT_EQ(waitpid(-1, nullptr, WNOHANG), -1);
}

TEST_F(AttachedConsole, GrandchildHoldingTheOutput_DoesNotKeepTheRun) {
  Attach("grandchild");
  EXPECT_TRUE(IdleToTheEnd());
  ASSERT_THAT(lines, SizeIs(1));
  EXPECT_THAT(recorder.reasons, ElementsAre(SpawnConsole::cPipeEnded));
  EXPECT_EQ(kill(std::stoi(lines[0]), SIGKILL), 0) << "it may live on";
}

TEST_F(AttachedConsole, Terminate_TakesTheWholeGroup) {
  console.SetOutput(
      [this](const std::string& line) {
        lines.push_back(line);
        console.Terminate();
      },
      "");
  Attach("grandchild");
  EXPECT_TRUE(IdleToTheEnd());
  ASSERT_THAT(lines, SizeIs(1));
  EXPECT_THAT(recorder.reasons, ElementsAre(SpawnConsole::cTerminated));
  // A killed process that nobody has collected yet still has a number, but no group to be killed.
  const pid_t grandchild = std::stoi(lines[0]);
  while (kill(grandchild, 0) == 0 && !test::IsZombie(grandchild)) sched_yield();
}

TEST_F(AttachedConsole, Burst_IsDeliveredWithoutStarvingTheLoop) {
  Attach("flood");
  int passes = 0;
  EXPECT_TRUE(IdleUntil([&] { return ++passes > 5; }));
  EXPECT_GT(lines.size(), 0u);
  EXPECT_THAT(lines, Each(std::string(79, 'f') + "\r\n"));
}

TEST_F(AttachedConsole, ManyLines_AllArrive) {
  Attach("lines 50000 80");
  EXPECT_TRUE(IdleToTheEnd());
  EXPECT_THAT(lines, SizeIs(50'000));
  EXPECT_THAT(lines, Each(std::string(80, 'x') + "\r\n"));
}

TEST_F(AttachedConsole, TerminateFromTheHandler_DeliversNothingMore) {
  console.SetOutput(
      [this](const std::string& line) {
        lines.push_back(line);
        console.Terminate();
      },
      "");
  Attach("print a b c");
  EXPECT_TRUE(IdleToTheEnd());
  EXPECT_THAT(lines, ElementsAre("a\r\n"));
  EXPECT_THAT(recorder.reasons, ElementsAre(SpawnConsole::cTerminated));
}

TEST_F(AttachedConsole, PollFromTheHandler_KeepsTheOrder) {
  console.SetOutput(
      [this](const std::string& line) {
        lines.push_back(line);
        // All of it has been fetched, so what there is to wait for is the end.
        if (lines.size() == 1) WaitReadable(TheIdleSlot().wakeDescriptor, 20'000);
        console.Poll();
      },
      "");
  Attach("print a b c d");
  EXPECT_TRUE(IdleToTheEnd());
  EXPECT_THAT(lines, ElementsAre("a\r\n", "b\r\n", "c\r\n", "d\r\n"));
  EXPECT_THAT(recorder.reasons, SizeIs(1));
}

TEST_F(AttachedConsole, DestroyedByItsHandler_PollReturnsSafely) {
  auto victim = std::make_unique<SpawnConsole>();
  int count = 0;
  victim->SetOutput(
      [&](const std::string&) {
        ++count;
        victim.reset();
      },
      "");
  ASSERT_TRUE(victim->Execute(Child("print a b c"), cAttached));
  EXPECT_TRUE(IdleUntil([&] { return !victim; }));
  EXPECT_EQ(count, 1);
  EXPECT_EQ(TheIdleSlot().hook, nullptr);
}

TEST_F(AttachedConsole, NextRunFromTheHandler_DoesNotMixWithTheOld) {
  console.SetOutput(
      [this](const std::string& line) {
        lines.push_back(line);
        if (line != "old\r\n") return;
        console.Terminate();
        EXPECT_TRUE(Attach("print new"));
      },
      "");
  Attach("print old more");
  EXPECT_TRUE(IdleToTheEnd());
  EXPECT_THAT(lines, ElementsAre("old\r\n", "new\r\n"));
  EXPECT_THAT(recorder.reasons, ElementsAre(1, 0));
}

struct Restarter : object {
  explicit Restarter(SpawnConsole& console) : console(console) {}
  SpawnConsole& console;
  std::string command;
  void OnExit(NotifyArgs&) {
    if (!command.empty())
      console.Execute(std::exchange(command, ""), SpawnConsole::Mode::cAttached);
  }
};

TEST_F(AttachedConsole, NextRunFromOnExit_IsAttached) {
  Restarter restarter(console);
  restarter.command = Child("print second");
  console.onExit.Add_H(&restarter, &Restarter::OnExit);
  Attach("print first");
  EXPECT_TRUE(IdleUntilLines(2));
  EXPECT_TRUE(IdleToTheEnd());
  EXPECT_THAT(lines, ElementsAre("first\r\n", "second\r\n"));
}

TEST_F(AttachedConsole, DestroyedByOnExit_PollReturnsSafely) {
  struct Owner : object {
    std::unique_ptr<SpawnConsole> console = std::make_unique<SpawnConsole>();
    void OnExit(NotifyArgs&) { console.reset(); }
  } owner;
  owner.console->onExit.Add_H(&owner, &Owner::OnExit);
  ASSERT_TRUE(owner.console->Execute(Child("print a"), cAttached));
  EXPECT_TRUE(IdleUntil([&] { return !owner.console; }));
}

}  // namespace
}  // namespace mavro
