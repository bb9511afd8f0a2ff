#pragma once

#include <chrono>
#include <utility>

#include "ChildRun.h"

namespace mavro {

// A run on the caller's stack: reads a started child to its end.
class BlockingRun : public ChildRun {
 public:
  // `outer` is the run from whose handler this one is started, or null; not owned.
  BlockingRun(Handler handler, BlockingRun* outer)
      : ChildRun(LineBuffer::Rule::cBlocking, std::move(handler)), outer(outer) {}

  // Delivers all lines and answers how the child ended. A run that was ended by its handler kills
  // its child.
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
  bool isHeld = false;         // the child has ended, its output hasn't
  bool isStopping = false;
  Clock::time_point killTime;
};

// See SpawnConsole::StopBlockingRun.
void StopInnermostRun();

}  // namespace mavro
