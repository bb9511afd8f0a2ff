#pragma once

#include <chrono>
#include <cstddef>
#include <deque>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "SpawnPool.h"
#include "build/ToolStep.h"

namespace zendry {

// Gets what the steps of a queue do, as if they had run one after the other.
class StepWatcher {
 public:
  virtual ~StepWatcher() = default;
  // Before a step's first line.
  virtual void ShowStep(const ToolStep& step) = 0;
  virtual void TakeStepLine(const ToolStep& step, const std::string& line) = 0;
  // `slot` is a number that no other step of the queue has.
  virtual void EndStep(const ToolStep& step, const StepEnd& end, int slot) = 0;
  // Asked as soon as a line arrives, before its step can be shown.
  virtual bool IsErrorLine(const ToolStep& step, const std::string& line) = 0;
};

// The steps of a build that run side by side. They are shown in the order in which they have begun:
// lines of the first step go to the watcher as they arrive; those of the others wait until the
// steps before them have ended.
class StepQueue {
 public:
  explicit StepQueue(StepWatcher& watcher) : watcher(watcher) {}

  // The slot that the next step gets.
  int NextSlot() const { return freeSlots.empty() ? usedSlots : *freeSlots.begin(); }
  // Starts a step, with these changes of the environment. False if the system has no room for one
  // more process: the step is not taken, and there is room when a running one has ended.
  bool Begin(const ToolStep& step, const std::vector<std::string>& environment);
  // Waits for news, at most so many milliseconds, and shows what can be shown. True if a step
  // has ended and left the queue.
  bool Advance(int milliseconds);
  // Ends all running steps.
  void Stop();

  bool IsEmpty() const { return steps.empty(); }
  int Running() const { return static_cast<int>(pool.Running()); }
  // A step has failed so that no other may begin, though it may not be shown yet.
  bool HasError() const { return failing > 0; }
  // The number of steps that have ended and are not shown.
  int Waiting() const { return static_cast<int>(steps.size()) - Running(); }

 private:
  using Clock = std::chrono::steady_clock;

  struct Active {
    Active(const ToolStep& step, int slot, std::vector<std::string> environment)
        : step(step), slot(slot), environment(std::move(environment)) {}

    const ToolStep step;
    const int slot;
    const std::vector<std::string> environment;
    const Clock::time_point start = Clock::now();
    std::deque<std::string> lines;  // that are not shown
    size_t bytes = 0;               // of these lines
    bool isShown = false;
    bool hasEnded = false;
    bool hasError = false;
    StepEnd end;
  };

  int TakeSlot();
  mavro::SpawnPool::Failure StartTool(Active& active, const std::string& line);
  void Keep(Active& active, const std::string& line);
  void NoteError(Active& active);
  void NoteEnd(const mavro::SpawnPool::Ended& ended);
  bool RunsHere(Active& active, const mavro::SpawnPool::Ended& ended);
  void ShowFirst();
  bool ShowLines(Active& active);

  StepWatcher& watcher;
  std::deque<std::unique_ptr<Active>> steps;
  // Kept beside the steps, because thousands wait when no tool can be started.
  std::vector<Active*> withTool;  // those whose tool runs
  int failing = 0;                // the number of those that have an error
  std::set<int> freeSlots;        // those below `usedSlots`
  int usedSlots = 0;
  mavro::SpawnPool pool;  // after `steps`, whose handlers it calls: it must go first
};

}  // namespace zendry
