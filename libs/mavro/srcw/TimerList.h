#pragma once

#include "Timer.h"

namespace mavro {

// All timers of the program, found by the ids of their native timers.
class TimerList {
 public:
  // Called when a native timer has ticked.
  static void Tick(int nIDEvent);
  // WindowMade starts the timers that wait for the window of `owner`; WindowGoes stops them.
  static void WindowMade(Control* owner);
  static void WindowGoes(Control* owner);
};

}  // namespace mavro
