#pragma once

#include "Timer.h"

namespace mavro {

// All timers of the program, found by the ids of their native timers.
class TimerList {
 public:
  // A native timer has ticked.
  static void Tick(int nIDEvent);
  // The window of `owner` has been made: timers that wait for it start. It goes: they stop.
  static void WindowMade(Control* owner);
  static void WindowGoes(Control* owner);
};

}  // namespace mavro
