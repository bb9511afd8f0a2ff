#include "Timer.h"

#include <algorithm>

#include "Assert.h"
#include "NativeTimer.h"
#include "SysImpl.h"
#include "TimerList.h"

namespace mavro {

namespace {

// All timers by index; null for a destroyed timer.
std::vector<Timer*>& Timers() {
  static std::vector<Timer*> timers;
  return timers;
}

}  // namespace

Timer::Timer(Control* itsOwner) : index(static_cast<int>(Timers().size())), owner(itsOwner) {
  Timers().push_back(this);
}

Timer::~Timer() {
  Stop();
  Timers()[static_cast<size_t>(index)] = nullptr;
}

void Timer::Start(int milliseconds) {
  interval = std::max(milliseconds, 0);
  if (owner->impl->hwnd)
    StartNative();
  else
    startsWithWindow = true;
}

void Timer::StartNative() {
  startsWithWindow = false;
  id = index + 1;
  StartNativeTimer(*owner->impl->hwnd, id, interval);
}

void Timer::Stop() {
  startsWithWindow = false;
  if (id == -1) return;
  if (owner->impl->hwnd) StopNativeTimer(*owner->impl->hwnd, id);
  id = -1;
}

// A timer whose handler throws would do so again at the next tick: it stops.
void TimerList::Tick(int nIDEvent) {
  const auto& timers = Timers();
  const size_t ix = static_cast<size_t>(nIDEvent) - 1;
  MAVRO_ASSERT_AS(ix < timers.size() && timers[ix], "timers[nIDEvent-1]!=NULL");
  Timer* timer = timers[ix];
  MAVRO_ASSERT_AS(timer->id == nIDEvent, "id==ix+1");
  try {
    NotifyArgs args{timer, 0};
    timer->onTimer.Fire(args);
  } catch (...) {
    if (Timers()[ix]) Timers()[ix]->Stop();
    throw;
  }
}

void TimerList::WindowMade(Control* owner) {
  for (Timer* timer : Timers())
    if (timer && timer->owner == owner && timer->startsWithWindow) timer->StartNative();
}

void TimerList::WindowGoes(Control* owner) {
  for (Timer* timer : Timers())
    if (timer && timer->owner == owner) timer->Stop();
}

}  // namespace mavro
