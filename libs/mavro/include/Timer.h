#pragma once

#include "Core.h"

namespace mavro {

// Fires an event at regular intervals. It is not part of the tree of controls; its ticks come
// through the window of its owner and end with that window. Timers don't tick while a tool run
// blocks the program. A tick doesn't count as activity that an idle step follows.
class Timer : public object {
 public:
  // `itsOwner` is not owned and outlives the timer.
  explicit Timer(Control* itsOwner);
  ~Timer() override;

  // Ticks every `milliseconds` from now on, or from the moment the owner's window is made. A
  // running timer is restarted.
  void Start(int milliseconds);
  void Stop();
  bool IsRunning() const { return id != -1; }

  int id = -1;      // the native timer's id while it runs
  const int index;  // index in the list of timers
  Control* const owner;
  int interval = 0;  // in milliseconds

  NotifyEvent onTimer;

 private:
  friend class TimerList;
  void StartNative();
  bool startsWithWindow = false;
};

}  // namespace mavro
