#pragma once

namespace mavro {

// What the message loop and an attached child share, so that either can exist without the other.
struct IdleSlot {
  // Called when the message queue runs dry and at the end of ProcessMessages; empty when nothing
  // runs alongside the loop. The one place where an attached child is polled.
  void (*hook)() = nullptr;
  // While `hook` is set: descriptor whose becoming readable must wake the loop for an idle pass, or
  // -1.
  int wakeDescriptor = -1;
  // Installed by the windows' half: called after the two fields above changed.
  void (*changed)() = nullptr;
};

// The one slot of the process.
IdleSlot& TheIdleSlot();

// Waits until `descriptor` can be read or `milliseconds` have passed; -1 waits for ever. Answers
// whether it can be read. Without windows this is poll(). The windows' half installs a version that
// meanwhile repaints and answers the window manager, and dispatches no input, command, timer or
// idle hook.
using BlockingWait = bool (*)(int descriptor, int milliseconds);
void SetBlockingWait(BlockingWait wait);
bool WaitReadable(int descriptor, int milliseconds);

}  // namespace mavro
