#pragma once

#include <chrono>
#include <utility>

#include "ChildRun.h"

namespace mavro {

// A run on the caller's stack that reads the output of a started child to its end.
class BlockingRun : public ChildRun {
 public:
  // `outer` is the run whose handler started this one, or null; not owned.
  BlockingRun(Handler handler, BlockingRun* outer)
      : ChildRun(LineBuffer::Rule::cBlocking, std::move(handler)), outer(outer) {}

  // Delivers all lines and returns how the child ended. If its handler ends the run, the child is
  // killed.
  ChildEnd ToEnd();

  BlockingRun* const outer;

 private:
  using Clock = std::chrono::steady_clock;

  void ReadOutput();
  bool FetchMore();
  bool IsQuietForGood();
  void FollowStop();
  void AwaitEnd();
  bool LivesOn();

  bool childHasEnded = false;  // seen at the end of a quiet time
  bool isHeld = false;         // the child has ended, but not its output
  bool isStopping = false;
  Clock::time_point killTime;
};

// See SpawnConsole::StopBlockingRun.
void StopInnermostRun();

}  // namespace mavro
