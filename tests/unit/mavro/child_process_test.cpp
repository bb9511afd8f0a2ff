#include "ChildProcess.h"

#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>

// What the consoles' tests can't tell apart: a child that never was, that somebody else has
// collected, and one that is left alone.

namespace mavro {
namespace {

constexpr int cLongMs = 60'000;

ChildProcess::Start Started(ChildProcess& child, const std::string& how,
                            const std::string& more = "") {
  return child.Run({TEST_CHILD, how, more}, "", {});
}

bool IsThere(pid_t process) {
  return kill(process, 0) == 0;
}

TEST(ChildProcess, NotStarted_HasEndedAndGetsNoSignal) {
  ChildProcess child;
  EXPECT_TRUE(child.HasEnded());
  EXPECT_TRUE(child.WaitForEnd(0, WaitPlainly));
  EXPECT_FALSE(child.Signal(0)) << "that is our own group";
  EXPECT_EQ(child.Group(), 0);
}

TEST(ChildProcess, Running_HasNotEndedAndGetsSignals) {
  ChildProcess child;
  ASSERT_EQ(Started(child, "interruptible"), ChildProcess::Start::cStarted);
  EXPECT_FALSE(child.HasEnded());
  EXPECT_FALSE(child.WaitForEnd(0, WaitPlainly));
  EXPECT_TRUE(child.Signal(0));
  child.Kill();
  EXPECT_TRUE(child.HasEnded());
  EXPECT_EQ(child.Collect().Status(), 128 + SIGKILL);
  EXPECT_FALSE(child.Signal(0));
}

TEST(ChildProcess, Destroyed_IsKilledAndCollected) {
  pid_t process = 0;
  {
    ChildProcess child;
    ASSERT_EQ(Started(child, "interruptible"), ChildProcess::Start::cStarted);
    process = child.Group();
    ASSERT_TRUE(IsThere(process));
  }
  EXPECT_FALSE(IsThere(process));
  EXPECT_EQ(errno, ESRCH);
}

TEST(ChildProcess, CollectedByAnother_HasEndedInAWayThatNobodyKnows) {
  ChildProcess child;
  ASSERT_EQ(Started(child, "exit", "3"), ChildProcess::Start::cStarted);
  ASSERT_EQ(waitpid(child.Group(), nullptr, 0), child.Group());
  EXPECT_TRUE(child.HasEnded());
  EXPECT_EQ(child.Collect().Status(), -1);
}

TEST(ChildProcess, ExitCode_IsTold) {
  ChildProcess child;
  ASSERT_EQ(Started(child, "exit", "3"), ChildProcess::Start::cStarted);
  ASSERT_TRUE(child.WaitForEnd(cLongMs, WaitPlainly));
  const ChildEnd end = child.Collect();
  EXPECT_EQ(end.code, 3);
  EXPECT_EQ(end.signal, 0);
}

TEST(ChildProcess, ArgumentsThatCantBe_StartNothing) {
  for (const std::vector<std::string>& arguments :
       {std::vector<std::string>{}, {""}, {TEST_CHILD, std::string("a\0b", 3)}}) {
    ChildProcess child;
    EXPECT_EQ(child.Run(arguments, "", {}), ChildProcess::Start::cNotStarted);
    EXPECT_EQ(child.Group(), 0);
  }
}

}  // namespace
}  // namespace mavro
