#include "IdleWatch.h"

#include <sys/epoll.h>
#include <sys/timerfd.h>
#include <unistd.h>

#include <algorithm>
#include <cstdint>
#include <utility>
#include <vector>

#include "Descriptor.h"
#include "IdleHook.h"

namespace mavro {

struct IdleWatch::Entry {
  int descriptor;
  Handler handler;
  bool isAlive = true;
};

namespace {

// All that is watched, and one descriptor that becomes readable when one of them does.
struct Registry {
  std::vector<std::shared_ptr<void>> order;
  std::vector<std::function<void()>> calls;
  Descriptor wake;
};

// Never destroyed: a global object may hold a watch up to the end.
Registry& TheRegistry() {
  static Registry& registry = *new Registry;
  return registry;
}

// A handler may add and remove watches.
void CallAll() {
  const std::vector<std::function<void()>> calls = TheRegistry().calls;
  for (const std::function<void()>& call : calls) call();
}

void SetSlot(void (*hook)(), int wakeDescriptor) {
  IdleSlot& slot = TheIdleSlot();
  slot.hook = hook;
  slot.wakeDescriptor = wakeDescriptor;
  if (slot.changed) slot.changed();
}

}  // namespace

// Without a descriptor for all, the loop wakes for the last one.
IdleWatch::IdleWatch(int descriptor, Handler handler)
    : entry(std::make_shared<Entry>(Entry{descriptor, std::move(handler)})) {
  Registry& registry = TheRegistry();
  registry.order.push_back(entry);
  registry.calls.emplace_back([entry = entry] {
    if (entry->isAlive) entry->handler();
  });
  const bool isFirst = !registry.wake.IsOpen();
  if (isFirst) registry.wake = Descriptor(epoll_create1(EPOLL_CLOEXEC));
  epoll_event event = {};
  event.events = EPOLLIN;
  const bool isWatched = epoll_ctl(registry.wake.Number(), EPOLL_CTL_ADD, descriptor, &event) == 0;
  if (isFirst || !isWatched) SetSlot(CallAll, isWatched ? registry.wake.Number() : descriptor);
}

IdleWatch::~IdleWatch() {
  entry->isAlive = false;
  Registry& registry = TheRegistry();
  const auto found = std::find(registry.order.begin(), registry.order.end(), entry);
  registry.calls.erase(registry.calls.begin() + (found - registry.order.begin()));
  registry.order.erase(found);
  epoll_ctl(registry.wake.Number(), EPOLL_CTL_DEL, entry->descriptor, nullptr);
  if (!registry.order.empty()) return;
  SetSlot(nullptr, -1);
  registry.wake.Close();
}

IdleTimer::IdleTimer() = default;

IdleTimer::~IdleTimer() {
  Stop();
}

void IdleTimer::Start(int milliseconds, IdleWatch::Handler handler) {
  Stop();
  constexpr long cMillisecond = 1'000'000;
  descriptor = timerfd_create(CLOCK_MONOTONIC, TFD_CLOEXEC | TFD_NONBLOCK);
  itimerspec time = {};
  time.it_value.tv_sec = milliseconds / 1000;
  // A time of 0 would switch the timer off.
  time.it_value.tv_nsec = std::max(1L, (milliseconds % 1000) * cMillisecond);
  timerfd_settime(descriptor, 0, &time, nullptr);
  watch = std::make_unique<IdleWatch>(descriptor, [this, handler = std::move(handler)] {
    uint64_t expirations = 0;
    if (read(descriptor, &expirations, sizeof expirations) <= 0) return;
    const IdleWatch::Handler due = handler;
    Stop();
    due();
  });
}

void IdleTimer::Stop() {
  watch.reset();
  if (descriptor >= 0) close(std::exchange(descriptor, -1));
}

}  // namespace mavro
