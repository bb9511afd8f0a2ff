#include "IdleWatch.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <memory>
#include <string>
#include <vector>

#include "IdleHook.h"

namespace mavro {
namespace {

// Waits as the message loop does; false after 20 seconds without news.
bool IdleOnce() {
  const IdleSlot slot = TheIdleSlot();
  if (!slot.hook || !WaitReadable(slot.wakeDescriptor, 20'000)) return false;
  slot.hook();
  return true;
}

struct IdleWatchTest : testing::Test {
  IdleWatchTest() { EXPECT_EQ(pipe(ends), 0); }
  ~IdleWatchTest() override {
    for (const int end : ends) close(end);
  }
  void Write() const { EXPECT_EQ(write(ends[1], "x", 1), 1); }
  void Read() const {
    char byte;
    EXPECT_EQ(read(ends[0], &byte, 1), 1);
  }

  int ends[2] = {-1, -1};
};

TEST_F(IdleWatchTest, WakesForEachDescriptor_AndFreesTheSlot) {
  int other[2];
  ASSERT_EQ(pipe(other), 0);
  std::vector<std::string> calls;
  {
    const IdleWatch first(ends[0], [&] { calls.push_back("first"); });
    const IdleWatch second(other[0], [&] { calls.push_back("second"); });
    EXPECT_FALSE(WaitReadable(TheIdleSlot().wakeDescriptor, 0));
    Write();
    ASSERT_TRUE(IdleOnce());
    EXPECT_EQ(calls, (std::vector<std::string>{"first", "second"}));
    Read();
    EXPECT_FALSE(WaitReadable(TheIdleSlot().wakeDescriptor, 0));
  }
  EXPECT_EQ(TheIdleSlot().hook, nullptr);
  EXPECT_EQ(TheIdleSlot().wakeDescriptor, -1);
  for (const int end : other) close(end);
}

TEST_F(IdleWatchTest, AHandlerMayDestroyItsWatchAndOthers) {
  int calls = 0;
  std::unique_ptr<IdleWatch> first, second;
  first = std::make_unique<IdleWatch>(ends[0], [&] {
    ++calls;
    first.reset();
    second.reset();
  });
  second = std::make_unique<IdleWatch>(ends[0], [&] { ++calls; });
  TheIdleSlot().hook();
  EXPECT_EQ(calls, 1);
  EXPECT_EQ(TheIdleSlot().hook, nullptr);
}

TEST(IdleTimerTest, CallsOnceAndCanBeStartedAgainFromTheCall) {
  int calls = 0;
  IdleTimer timer;
  EXPECT_FALSE(timer.IsRunning());
  timer.Start(0, [&] {
    ++calls;
    EXPECT_FALSE(timer.IsRunning());
    timer.Start(1, [&] { ++calls; });
  });
  while (calls < 2 && IdleOnce()) {
  }
  EXPECT_EQ(calls, 2);
  EXPECT_FALSE(timer.IsRunning());
}

TEST(IdleTimerTest, ALaterCallReplacesAnEarlierOne_AndStopDropsIt) {
  std::string calls;
  IdleTimer timer, end;
  timer.Start(1, [&] { calls += "early "; });
  timer.Start(20, [&] { calls += "late "; });
  end.Start(60, [&] { calls += "end "; });
  while (end.IsRunning() && IdleOnce()) {
  }
  EXPECT_EQ(calls, "late end ");
  timer.Start(1, [&] { calls += "stopped "; });
  timer.Stop();
  end.Start(20, [&] { calls += "end"; });
  while (end.IsRunning() && IdleOnce()) {
  }
  EXPECT_EQ(calls, "late end end");
}

}  // namespace
}  // namespace mavro
