#include "IdleHook.h"

#include <poll.h>

#include <cerrno>
#include <chrono>

namespace mavro {

namespace {

using Clock = std::chrono::steady_clock;

// The remaining time of a limit, in the form that poll() takes.
int MillisecondsUntil(Clock::time_point end) {
  const auto left = std::chrono::ceil<std::chrono::milliseconds>(end - Clock::now()).count();
  return left > 0 ? static_cast<int>(left) : 0;
}

// The end of output and a broken pipe count as readable: the next read then finds out which it is.
bool PollReadable(int descriptor, int milliseconds) {
  const auto end = Clock::now() + std::chrono::milliseconds(milliseconds < 0 ? 0 : milliseconds);
  pollfd entry{descriptor, POLLIN, 0};
  for (;;) {
    const int ready = poll(&entry, 1, milliseconds < 0 ? -1 : MillisecondsUntil(end));
    if (ready >= 0) return ready > 0;
    if (errno != EINTR) return false;
  }
}

BlockingWait blockingWait = PollReadable;

}  // namespace

IdleSlot& TheIdleSlot() {
  static IdleSlot slot;
  return slot;
}

void SetBlockingWait(BlockingWait wait) {
  blockingWait = wait ? wait : PollReadable;
}

bool WaitReadable(int descriptor, int milliseconds) {
  return blockingWait(descriptor, milliseconds);
}

}  // namespace mavro
