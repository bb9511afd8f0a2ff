#include "SpawnPool.h"

#include <sys/epoll.h>

#include <algorithm>
#include <utility>

#include "CommandLine.h"
#include "IdleHook.h"
#include "ToolRun.h"

namespace mavro {

namespace {

constexpr int cSliceMs = 10;  // between looks at a child whose end the system can't report

}  // namespace

struct SpawnPool::Impl {
  struct Run {
    Run(int key, ChildRun::Handler handler) : key(key), tool(std::move(handler)) {}

    const int key;
    ToolRun tool;
    bool watchesOutput = false;
    bool watchesEnd = false;
  };

  bool OpenWatch();
  void SetWatched(int descriptor, bool& isWatched, bool wanted);
  void UpdateWatch(Run& run);
  int PatienceWithin(int milliseconds) const;

  Descriptor watch;  // becomes readable when a program prints or ends
  std::vector<std::unique_ptr<Run>> runs;
};

bool SpawnPool::Impl::OpenWatch() {
  if (!watch.IsOpen()) watch = Descriptor(epoll_create1(EPOLL_CLOEXEC));
  return watch.IsOpen();
}

void SpawnPool::Impl::SetWatched(int descriptor, bool& isWatched, bool wanted) {
  if (isWatched == wanted || descriptor < 0) return;
  epoll_event event = {};
  event.events = EPOLLIN;
  const int change = wanted ? EPOLL_CTL_ADD : EPOLL_CTL_DEL;
  if (epoll_ctl(watch.Number(), change, descriptor, &event) == 0) isWatched = wanted;
}

// A descriptor that stays readable would end each wait at once: what is not to be read is not
// watched.
void SpawnPool::Impl::UpdateWatch(Run& run) {
  ToolRun& tool = run.tool;
  const bool isOver = tool.IsOver();
  const bool isRead = tool.IsReading() && !tool.isPaused;
  SetWatched(tool.child.Output(), run.watchesOutput, !isOver && isRead);
  // A paused program's end is of no use before its output is read.
  const bool awaitsEnd = !isOver && !tool.HasSeenEnd() && !tool.isPaused;
  SetWatched(tool.child.EndDescriptor(), run.watchesEnd, awaitsEnd);
}

int SpawnPool::Impl::PatienceWithin(int milliseconds) const {
  for (const auto& run : runs) {
    const ToolRun& tool = run->tool;
    if (tool.isPaused && !tool.IsStopping()) continue;
    if (const int patience = tool.Patience(); patience >= 0)
      milliseconds = std::min(milliseconds, patience);
    const bool isUnwatched = (tool.IsReading() && !tool.isPaused && !run->watchesOutput) ||
                             (!tool.HasSeenEnd() && !run->watchesEnd);
    if (isUnwatched) milliseconds = std::min(milliseconds, cSliceMs);
  }
  return milliseconds;
}

SpawnPool::SpawnPool() : impl(std::make_unique<Impl>()) {}

SpawnPool::~SpawnPool() = default;

SpawnPool::Failure SpawnPool::Start(int key, const Command& command, LineHandler handler) {
  if (!impl->OpenWatch()) return {StartFailure(ChildProcess::Start::cNoPipe, command.line), true};
  auto run = std::make_unique<Impl::Run>(
      key, std::make_shared<const SpawnConsole::LineHandler>(std::move(handler)));
  ChildProcess& child = run->tool.child;
  const auto start = child.Run(SplitCommandLine(command.line), command.folder, command.environment);
  if (start != ChildProcess::Start::cStarted)
    return {StartFailure(start, command.line), child.WasShortOfRoom()};
  child.CloseInput();
  impl->UpdateWatch(*run);
  impl->runs.push_back(std::move(run));
  return {};
}

size_t SpawnPool::Running() const {
  return impl->runs.size();
}

std::vector<SpawnPool::Ended> SpawnPool::Wait(int milliseconds) {
  std::vector<Ended> ended;
  if (impl->runs.empty()) return ended;
  WaitReadable(impl->watch.Number(), impl->PatienceWithin(milliseconds));
  for (const auto& run : impl->runs) {
    run->tool.Advance();
    impl->UpdateWatch(*run);
    if (!run->tool.IsOver()) continue;
    const ChildEnd end = run->tool.Finish();
    ended.push_back({run->key, end.Status(), end.signal, run->tool.IsStopping()});
  }
  std::erase_if(impl->runs, [](const auto& run) { return run->tool.IsOver(); });
  return ended;
}

void SpawnPool::Pause(int key, bool isPaused) {
  for (const auto& run : impl->runs) {
    if (run->key != key || run->tool.isPaused == isPaused) continue;
    run->tool.isPaused = isPaused;
    impl->UpdateWatch(*run);
  }
}

// A paused program is read again, since it may wait for that to be able to end.
void SpawnPool::Stop() {
  for (const auto& run : impl->runs) {
    run->tool.Stop();
    Pause(run->key, false);
  }
}

void ShowStartFailure(const SpawnPool::Failure& failure) {
  ShowRunFailure(failure.text);
}

}  // namespace mavro
