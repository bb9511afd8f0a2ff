#pragma once

namespace mavro {

// The data that the message loop and an attached child share, so that either can exist without the
// other.
struct IdleSlot {
  // Called when the message queue is empty and at the end of ProcessMessages; null if nothing runs
  // alongside the loop. An attached child is polled here only.
  void (*hook)() = nullptr;
  // While `hook` is set: when this descriptor becomes readable, the loop must wake for an idle
  // pass; -1 for none.
  int wakeDescriptor = -1;
  // Installed by the platform half; called after the two fields above have changed.
  void (*changed)() = nullptr;
};

// The one slot of the process.
IdleSlot& TheIdleSlot();

// Waits until `descriptor` can be read or `milliseconds` have passed; -1 waits for ever. True if it
// can be read. Without windows this is poll(). The platform half installs a version that meanwhile
// repaints and answers the window manager, but dispatches no input, command, timer or idle hook.
using BlockingWait = bool (*)(int descriptor, int milliseconds);
void SetBlockingWait(BlockingWait wait);
bool WaitReadable(int descriptor, int milliseconds);

}  // namespace mavro
