#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <optional>

namespace mavro {

// Wakes the message loop when a descriptor becomes readable, and calls a handler in each idle pass
// as long as it lives. The handler must not block; it may destroy this object and make others. The
// descriptor is not owned and must stay open as long as it is watched.
class IdleWatch {
 public:
  using Handler = std::function<void()>;

  IdleWatch(int descriptor, Handler handler);
  ~IdleWatch();
  IdleWatch(const IdleWatch&) = delete;
  IdleWatch& operator=(const IdleWatch&) = delete;

 private:
  struct Entry;
  std::shared_ptr<Entry> entry;
};

// Calls a handler once, in the idle pass after a time has passed. For programs without a window
// too. Destroying it or starting it again drops what was due. Starting and stopping cost next to
// nothing, so that each short work may be watched.
class IdleTimer {
 public:
  IdleTimer();
  ~IdleTimer();
  IdleTimer(const IdleTimer&) = delete;
  IdleTimer& operator=(const IdleTimer&) = delete;

  // Calls the handler once, no sooner than after this time.
  void Start(int milliseconds, IdleWatch::Handler handler);
  // Drops the call; no effect if none is due.
  void Stop();
  // True as long as a call is due.
  bool IsRunning() const { return handler != nullptr; }

 private:
  using Time = std::chrono::steady_clock::time_point;

  void Wake(Time at);
  void Pass();

  int descriptor = -1;  // a timer of the system, which may wake too early
  std::unique_ptr<IdleWatch> watch;
  std::optional<Time> wakesAt;
  Time due;
  IdleWatch::Handler handler;
};

}  // namespace mavro
