#include "build/StepQueue.h"

#include <algorithm>
#include <utility>

namespace zendry {

namespace {

// A step that prints more than this before its turn has to wait.
constexpr size_t cMostBytes = 4 << 20;
constexpr size_t cBytesOfALine = 64;  // what keeping a line costs besides its text
// The longest time that lines are shown for before the window gets its turn.
constexpr std::chrono::milliseconds cShowTime(20);
// Exit codes that distributing launchers use for failures of their own; shells use those from 126.
constexpr int cFirstLauncherCode = 100;
constexpr int cLastLauncherCode = 125;

}  // namespace

int StepQueue::TakeSlot() {
  if (freeSlots.empty()) return usedSlots++;
  return freeSlots.extract(freeSlots.begin()).value();
}

bool StepQueue::Begin(const ToolStep& step, const std::vector<std::string>& environment) {
  auto owned = std::make_unique<Active>(step, TakeSlot(), environment);
  Active& active = *owned;
  const bool isFirst = steps.empty();
  steps.push_back(std::move(owned));
  if (isFirst) ShowFirst();
  if (step.refusal) {
    active.hasEnded = true;
    NoteError(active);
    return true;
  }
  active.end.wasRun = true;
  const mavro::SpawnPool::Failure failure = StartTool(active, step.line);
  if (failure.text.empty()) {
    withTool.push_back(&active);
    return true;
  }
  if (failure.isForLackOfRoom && Running() > 0) {
    freeSlots.insert(active.slot);
    steps.pop_back();
    return false;
  }
  active.hasEnded = true;
  active.end.startFailure = failure.text;
  return true;
}

mavro::SpawnPool::Failure StepQueue::StartTool(Active& active, const std::string& line) {
  return pool.Start(active.slot, {line, active.step.folder, active.environment},
                    [this, &active](const std::string& printed) { Keep(active, printed); });
}

void StepQueue::Keep(Active& active, const std::string& line) {
  active.bytes += line.size() + cBytesOfALine;
  if (!active.isShown && watcher.IsErrorLine(active.step, line)) NoteError(active);
  active.lines.push_back(line);
}

bool StepQueue::Advance(int milliseconds) {
  if (steps.empty()) return false;
  const bool canShow = !steps.front()->lines.empty() || steps.front()->hasEnded;
  for (const mavro::SpawnPool::Ended& ended : pool.Wait(canShow ? 0 : milliseconds)) NoteEnd(ended);
  for (const Active* active : withTool) pool.Pause(active->slot, active->bytes > cMostBytes);
  ShowFirst();
  Active& first = *steps.front();
  if (!ShowLines(first) || !first.hasEnded) return false;
  const std::unique_ptr<Active> done = std::move(steps.front());
  steps.pop_front();
  freeSlots.insert(done->slot);
  failing -= done->hasError;
  watcher.EndStep(done->step, done->end, done->slot);
  return true;
}

void StepQueue::NoteError(Active& active) {
  if (!std::exchange(active.hasError, true)) ++failing;
}

void StepQueue::NoteEnd(const mavro::SpawnPool::Ended& ended) {
  const auto found = std::ranges::find(withTool, ended.key, &Active::slot);
  if (found == withTool.end() || RunsHere(**found, ended)) return;
  Active& active = **found;
  withTool.erase(found);
  active.hasEnded = true;
  if (ended.exitSignal != 0 && !ended.wasStopped) NoteError(active);
  active.end.exitCode = ended.exitCode;
  active.end.exitSignal = ended.exitSignal;
  active.end.wasStopped = ended.wasStopped && ended.exitCode != 0;
  active.end.milliseconds =
      std::chrono::duration_cast<std::chrono::milliseconds>(Clock::now() - active.start).count();
}

// Repeats a step without its launcher if that has lost its machine.
bool StepQueue::RunsHere(Active& active, const mavro::SpawnPool::Ended& ended) {
  const bool isLost = active.step.mayBeLostElsewhere && active.end.lostWith == 0 &&
                      !ended.wasStopped && ended.exitCode >= cFirstLauncherCode &&
                      ended.exitCode <= cLastLauncherCode;
  if (!isLost) return false;
  active.end.lostWith = ended.exitCode;
  return StartTool(active, active.step.lineWithoutLauncher).text.empty();
}

void StepQueue::ShowFirst() {
  Active& first = *steps.front();
  if (std::exchange(first.isShown, true)) return;
  watcher.ShowStep(first.step);
}

// False if time was too short for all lines.
bool StepQueue::ShowLines(Active& active) {
  const Clock::time_point until = Clock::now() + cShowTime;
  while (!active.lines.empty()) {
    const std::string line = std::move(active.lines.front());
    active.lines.pop_front();
    active.bytes -= line.size() + cBytesOfALine;
    watcher.TakeStepLine(active.step, line);
    if (Clock::now() >= until) return active.lines.empty();
  }
  return true;
}

void StepQueue::Stop() {
  pool.Stop();
}

}  // namespace zendry
