#pragma once

#include <utility>

#include "ToolRun.h"

namespace mavro {

// A run on the caller's stack that reads the output of a started child to its end.
class BlockingRun : public ToolRun {
 public:
  // `outer` is the run whose handler started this one, or null; not owned.
  BlockingRun(Handler handler, BlockingRun* outer) : ToolRun(std::move(handler)), outer(outer) {}

  // Delivers all lines and returns how the child ended. If its handler ends the run, the child is
  // killed.
  ChildEnd ToEnd();

  BlockingRun* const outer;

 private:
  void Wait();
};

// See SpawnConsole::StopBlockingRun.
void StopInnermostRun();

}  // namespace mavro
