#include "IdleHook.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include "Descriptor.h"

namespace mavro {
namespace {

struct WaitReadableTest : testing::Test {
  WaitReadableTest() {
    int ends[2];
    if (pipe(ends) == 0) readEnd = Descriptor(ends[0]), writeEnd = Descriptor(ends[1]);
  }
  ~WaitReadableTest() override { SetBlockingWait(nullptr); }
  Descriptor readEnd, writeEnd;
};

TEST_F(WaitReadableTest, NothingThere_EndsWithItsTime) {
  EXPECT_FALSE(WaitReadable(readEnd.Number(), 0));
  EXPECT_FALSE(WaitReadable(readEnd.Number(), 1));
}

TEST_F(WaitReadableTest, BytesThere_EndsAtOnce) {
  ASSERT_EQ(write(writeEnd.Number(), "x", 1), 1);
  EXPECT_TRUE(WaitReadable(readEnd.Number(), 0));
  EXPECT_TRUE(WaitReadable(readEnd.Number(), -1));
}

TEST_F(WaitReadableTest, OtherEndClosed_CountsAsReadable) {
  writeEnd.Close();
  EXPECT_TRUE(WaitReadable(readEnd.Number(), -1));
}

TEST_F(WaitReadableTest, InstalledWait_IsUsedUntilTakenAway) {
  SetBlockingWait([](int, int milliseconds) { return milliseconds == 77; });
  EXPECT_TRUE(WaitReadable(readEnd.Number(), 77));
  EXPECT_FALSE(WaitReadable(readEnd.Number(), 78));
  SetBlockingWait(nullptr);
  EXPECT_FALSE(WaitReadable(readEnd.Number(), 1));
}

TEST(IdleSlot, AtFirst_IsEmpty) {
  EXPECT_EQ(TheIdleSlot().hook, nullptr);
  EXPECT_EQ(TheIdleSlot().wakeDescriptor, -1);
  EXPECT_EQ(&TheIdleSlot(), &TheIdleSlot());
}

}  // namespace
}  // namespace mavro
