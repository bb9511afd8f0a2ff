#pragma once

#include "Core.h"

namespace mavro {

// Fires an event again and again. Stands outside the tree of controls; ticks come through the
// window of its owner and end with that window. While a tool run blocks the program no timer ticks,
// and a timer is no activity that the idle step would follow.
class Timer : public object {
 public:
  // `itsOwner` is not owned and outlives the timer.
  explicit Timer(Control* itsOwner);
  ~Timer() override;

  // Ticks every `milliseconds` from now on, or from the moment the owner's window is made. A
  // running timer starts over.
  void Start(int milliseconds);
  void Stop();
  bool IsRunning() const { return id != -1; }

  int id = -1;      // the native timer's id while it runs
  const int index;  // place in the list of timers
  Control* const owner;
  int interval = 0;  // in milliseconds

  NotifyEvent onTimer;

 private:
  friend class TimerList;
  void StartNative();
  bool startsWithWindow = false;
};

}  // namespace mavro
