#include "BlockingRun.h"

#include <signal.h>

#include <algorithm>
#include <atomic>

#include "IdleHook.h"
#include "SpawnLimits.h"

namespace mavro {

namespace {

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
    while (!IsOver()) {
      Wait();
      if (theStopWasAsked) Stop();
      Advance();
    }
  }
  return Finish();
}

// For a limited time, because a stop may be asked for and the child may end while another process
// holds its output.
void BlockingRun::Wait() {
  const int quiet = TheSpawnLimits().quiet;
  const int patience = Patience();
  const int milliseconds = patience < 0 ? quiet : std::min(patience, quiet);
  if (IsReading())
    WaitReadable(child.Output(), milliseconds);
  else
    child.WaitForEnd(milliseconds, WaitReadable);
}

}  // namespace mavro
