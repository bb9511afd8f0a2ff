#include "build/StepQueue.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace zendry {
namespace {

struct Ends : StepWatcher {
  void ShowStep(const ToolStep&) override {}
  void TakeStepLine(const ToolStep&, const std::string&) override {}
  void EndStep(const ToolStep& step, const StepEnd&, int slot) override {
    ends.push_back(step.subject + std::to_string(slot));
  }
  bool IsErrorLine(const ToolStep&, const std::string&) override { return false; }

  std::vector<std::string> ends;
};

ToolStep NotRun(const std::string& subject) {
  ToolStep step;
  step.subject = subject;
  step.refusal = ToolStep::Refusal{subject, "it can't be run"};
  return step;
}

// Steps that can't be run end at once, and wait until they are shown.
TEST(StepQueue, ASlot_IsTheLowestThatNoWaitingStepHas) {
  Ends ends;
  StepQueue queue(ends);
  for (const char* subject : {"a", "b", "c"}) EXPECT_TRUE(queue.Begin(NotRun(subject), {}));
  EXPECT_EQ(queue.NextSlot(), 3);
  queue.Advance(0);
  queue.Advance(0);
  EXPECT_EQ(queue.NextSlot(), 0);
  for (const char* subject : {"d", "e", "f"}) queue.Begin(NotRun(subject), {});
  EXPECT_EQ(queue.NextSlot(), 4);
  while (!queue.IsEmpty()) queue.Advance(0);
  EXPECT_THAT(ends.ends, testing::ElementsAre("a0", "b1", "c2", "d0", "e1", "f3"));
  EXPECT_EQ(queue.NextSlot(), 0);
}

}  // namespace
}  // namespace zendry
