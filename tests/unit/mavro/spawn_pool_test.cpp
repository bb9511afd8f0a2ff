#include "SpawnPool.h"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <map>
#include <string>
#include <thread>
#include <vector>

#include "ConsoleFixture.h"
#include "FewDescriptors.h"

namespace mavro {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

// Programs that run side by side; what each of them prints is kept under its key.
struct SpawnPoolTest : test::ConsoleFixture {
  SpawnPool pool;
  std::map<int, std::vector<std::string>> printed;
  std::map<int, SpawnPool::Ended> ends;

  SpawnPool::Failure Start(int key, const std::string& arguments) {
    return pool.Start(key, {Child(arguments)},
                      [this, key](const std::string& line) { printed[key].push_back(line); });
  }
  void WaitOnce() {
    for (const SpawnPool::Ended& ended : pool.Wait(20'000)) ends[ended.key] = ended;
  }
  void WaitForAll() {
    while (pool.Running() > 0) WaitOnce();
  }
  template <class Condition>
  void WaitUntil(Condition condition) {
    while (!condition()) WaitOnce();
  }
};

TEST_F(SpawnPoolTest, New_RunsNothingAndDoesNotWait) {
  EXPECT_EQ(pool.Running(), 0u);
  EXPECT_THAT(pool.Wait(-1), IsEmpty());
  pool.Stop();
}

TEST_F(SpawnPoolTest, Two_RunAtTheSameTime) {
  EXPECT_EQ(Start(1, "deaf").text, "");
  EXPECT_EQ(Start(2, "deaf").text, "");
  EXPECT_EQ(pool.Running(), 2u);
  WaitUntil([this] { return printed.size() == 2; });
  pool.Stop();
  WaitForAll();
  EXPECT_EQ(ends[1].exitSignal, SIGTERM);
  EXPECT_TRUE(ends[1].wasStopped);
  EXPECT_EQ(ends[2].exitCode, 128 + SIGTERM);
}

TEST_F(SpawnPoolTest, LinesAndEnds_AreTheirOwn) {
  Start(7, "raw one\\ntwo");
  Start(8, "exit 3");
  Start(9, "signal 9");
  WaitForAll();
  EXPECT_THAT(printed[7], ElementsAre("one", "two"));
  EXPECT_EQ(ends[7].exitCode, 0);
  EXPECT_FALSE(ends[7].wasStopped);
  EXPECT_EQ(ends[8].exitCode, 3);
  EXPECT_EQ(ends[9].exitSignal, SIGKILL);
  EXPECT_THAT(printed[9], ElementsAre("half a line"));
}

TEST_F(SpawnPoolTest, MuchOutput_DoesNotKeepAnotherFromItsTurn) {
  Start(1, "flood");
  Start(2, "print a");
  WaitUntil([this] { return ends.contains(2); });
  EXPECT_THAT(printed[2], ElementsAre("a"));
  pool.Stop();
  WaitForAll();
}

TEST_F(SpawnPoolTest, StubbornOnes_AreKilledAfterStop) {
  Start(1, "flood stubborn");
  Start(2, "close-output stubborn");
  WaitUntil([this] { return !printed[1].empty() && !printed[2].empty(); });
  pool.Stop();
  WaitForAll();
  EXPECT_EQ(ends[1].exitSignal, SIGKILL);
  EXPECT_EQ(ends[2].exitSignal, SIGKILL);
}

TEST_F(SpawnPoolTest, GrandchildHoldingTheOutput_DoesNotHoldThePoolUp) {
  Start(1, "grandchild");
  WaitForAll();
  ASSERT_THAT(printed[1], SizeIs(2));
  EXPECT_THAT(printed[1][1], HasSubstr("still holds its output"));
  EXPECT_EQ(ends[1].exitCode, 7);
  EXPECT_EQ(kill(std::stoi(printed[1][0]), SIGKILL), 0) << "it may live on";
}

TEST_F(SpawnPoolTest, GrandchildInTheGroup_EndsWithAStoppedProgram) {
  Start(1, "grandchild");
  WaitUntil([this] { return !printed[1].empty(); });
  pool.Stop();
  WaitForAll();
  const pid_t grandchild = std::stoi(printed[1][0]);
  while (kill(grandchild, 0) == 0 && !test::IsZombie(grandchild)) std::this_thread::yield();
}

TEST_F(SpawnPoolTest, OutputClosedButAlive_IsAskedToEndAndTold) {
  Start(1, "close-output");
  WaitForAll();
  ASSERT_THAT(printed[1], SizeIs(2));
  EXPECT_THAT(printed[1][1], HasSubstr("closed its output"));
  EXPECT_EQ(ends[1].exitSignal, SIGTERM);
  EXPECT_FALSE(ends[1].wasStopped);
}

TEST_F(SpawnPoolTest, Paused_IsReadLater) {
  Start(1, "lines 5000 79");
  pool.Pause(1, true);
  Start(2, "print a");
  WaitUntil([this] { return ends.contains(2); });
  EXPECT_THAT(printed[1], IsEmpty());
  pool.Pause(1, false);
  WaitForAll();
  EXPECT_THAT(printed[1], SizeIs(5000));
}

TEST_F(SpawnPoolTest, PausedAndStopped_Ends) {
  Start(1, "flood");
  pool.Pause(1, true);
  pool.Stop();
  WaitForAll();
  EXPECT_EQ(ends[1].exitSignal, SIGTERM);
}

TEST_F(SpawnPoolTest, MissingProgram_IsAFailureAndNoLackOfRoom) {
  const SpawnPool::Failure failure = pool.Start(1, {"no-such-tool x"}, {});
  EXPECT_EQ(failure.text, "Error run: no-such-tool x");
  EXPECT_FALSE(failure.isForLackOfRoom);
  EXPECT_EQ(pool.Running(), 0u);
}

TEST_F(SpawnPoolTest, NoDescriptorLeft_IsALackOfRoom) {
  Start(1, "deaf");
  {
    const test::FewDescriptors few(3);
    const SpawnPool::Failure failure = Start(2, "print a");
    EXPECT_EQ(failure.text, "CreatePipe");
    EXPECT_TRUE(failure.isForLackOfRoom);
  }
  EXPECT_EQ(Start(2, "print a").text, "");
  WaitUntil([this] { return !printed[1].empty(); });
  pool.Stop();
  WaitForAll();
}

TEST_F(SpawnPoolTest, NoDescriptorToWatchTheEnd_IsFoundOutByAsking) {
  constexpr int cThoseOfThePipes = 4;
  Start(1, "print a");
  WaitForAll();
  {
    const test::FewDescriptors few(cThoseOfThePipes);
    EXPECT_EQ(Start(2, "close-output").text, "");
  }
  WaitForAll();
  EXPECT_EQ(ends[2].exitSignal, SIGTERM);
}

TEST_F(SpawnPoolTest, ManyRuns_LeaveNoProcessAndNoDescriptor) {
  const int before = dup(0);
  close(before);
  {
    SpawnPool many;
    for (int i = 0; i < 40; ++i) many.Start(i, {Child("print a")}, {});
    while (many.Running() > 0) many.Wait(20'000);
    many.Start(0, {Child("deaf")}, {});
  }
  const int after = dup(0);
  close(after);
  EXPECT_EQ(after, before);
  EXPECT_EQ(waitpid(-1, nullptr, WNOHANG), -1);
}

}  // namespace
}  // namespace mavro
