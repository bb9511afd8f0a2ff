#include "BlockingRun.h"

#include <signal.h>

#include <atomic>

#include "IdleHook.h"
#include "SpawnLimits.h"

namespace mavro {

namespace {

constexpr char cOutputIsHeld[] =
    "A process started by the tool still holds its output; what it prints is not read any more.";
constexpr char cOutputWasClosed[] =
    "The tool has closed its output and does not end; it is being stopped.";

// Atomic, since a signal handler uses them: the process group of the innermost run, 0 for none, and
// the flag that it has been asked to end.
std::atomic<pid_t> theBlockingGroup = 0;
std::atomic<bool> theStopWasAsked = false;
static_assert(std::atomic<pid_t>::is_always_lock_free && std::atomic<bool>::is_always_lock_free);

// Makes a child the one that StopInnermostRun stops, during the lifetime of this object.
class InnermostGroup {
 public:
  explicit InnermostGroup(pid_t group) : outer(theBlockingGroup) {
    if (!outer) theStopWasAsked = false;
    theBlockingGroup = group;
  }
  ~InnermostGroup() { theBlockingGroup = outer; }
  InnermostGroup(const InnermostGroup&) = delete;
  InnermostGroup& operator=(const InnermostGroup&) = delete;

 private:
  pid_t outer;
};

}  // namespace

void StopInnermostRun() {
  const pid_t group = theBlockingGroup;
  if (!group) return;
  theStopWasAsked = true;
  kill(-group, SIGTERM);
}

ChildEnd BlockingRun::ToEnd() {
  child.CloseInput();
  {
    const InnermostGroup group(child.Group());
    ReadOutput();
    DeliverRest();
    if (isHeld) Hand(cOutputIsHeld);
    AwaitEnd();
  }
  // The child's process id is still reserved, so no other process can have its group.
  if (isStopping || ended) child.Kill();
  return child.Collect();
}

void BlockingRun::ReadOutput() {
  do {
    while (!ended && reader.BytesAhead()) DeliverRound();
    FollowStop();
  } while (!ended && FetchMore());
}

// Waits for output; false if there will be no more.
bool BlockingRun::FetchMore() {
  if (!WaitReadable(child.Output(), TheSpawnLimits().quiet)) return !IsQuietForGood();
  switch (reader.FetchAhead(child.Output())) {
    case PipeReader::Fetch::cBytes:
    case PipeReader::Fetch::cNone:
      return true;
    case PipeReader::Fetch::cEnd:
      return false;
    case PipeReader::Fetch::cError:
      break;
  }
  ShowRunFailure("Pipe read error");
  return false;
}

// Called after each quiet time. Only a quiet time that began after the child's end counts, since in
// an earlier one the child's last output may still be on its way.
bool BlockingRun::IsQuietForGood() {
  isHeld = childHasEnded;
  childHasEnded = child.HasEnded();
  return isHeld;
}

void BlockingRun::FollowStop() {
  if (!theStopWasAsked) return;
  if (!isStopping) {
    isStopping = true;
    killTime = Clock::now() + std::chrono::milliseconds(TheSpawnLimits().kill);
    child.Signal(SIGTERM);
  } else if (Clock::now() >= killTime) {
    child.Signal(SIGKILL);
  }
}

// True if the child has been running for too long after the end of its output.
bool BlockingRun::LivesOn() {
  const SpawnLimits& limits = TheSpawnLimits();
  const auto until = Clock::now() + std::chrono::milliseconds(limits.closedOutput);
  while (!ended && !child.WaitForEnd(limits.quiet, WaitReadable)) {
    FollowStop();
    if (Clock::now() >= until) return true;
  }
  return false;
}

void BlockingRun::AwaitEnd() {
  FollowStop();
  if (ended || !LivesOn()) return;
  Hand(cOutputWasClosed);
  child.Signal(SIGTERM);
  if (!child.WaitForEnd(TheSpawnLimits().kill, WaitReadable)) child.Kill();
}

}  // namespace mavro
