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
  watch.reset();
  if (descriptor >= 0) close(descriptor);
}

// A call that comes earlier than the system's timer sets that anew; for a later one it stays, and
// is set when it wakes.
void IdleTimer::Start(int milliseconds, IdleWatch::Handler newHandler) {
  handler = std::move(newHandler);
  due = std::chrono::steady_clock::now() + std::chrono::milliseconds(milliseconds);
  if (!watch) {
    descriptor = timerfd_create(CLOCK_MONOTONIC, TFD_CLOEXEC | TFD_NONBLOCK);
    watch = std::make_unique<IdleWatch>(descriptor, [this] { Pass(); });
  }
  if (!wakesAt || *wakesAt > due) Wake(due);
}

void IdleTimer::Stop() {
  handler = nullptr;
}

void IdleTimer::Wake(Time at) {
  constexpr long cSecond = 1'000'000'000;
  const auto since = std::chrono::duration_cast<std::chrono::nanoseconds>(at.time_since_epoch());
  itimerspec time = {};
  time.it_value.tv_sec = since.count() / cSecond;
  time.it_value.tv_nsec = since.count() % cSecond;
  timerfd_settime(descriptor, TFD_TIMER_ABSTIME, &time, nullptr);
  wakesAt = at;
}

void IdleTimer::Pass() {
  const Time now = std::chrono::steady_clock::now();
  if (!wakesAt || now < *wakesAt) return;
  uint64_t expirations = 0;
  if (read(descriptor, &expirations, sizeof expirations) <= 0) return;
  wakesAt.reset();
  if (!handler) return;
  if (now < due) return Wake(due);
  const IdleWatch::Handler call = std::exchange(handler, nullptr);
  call();
}

}  // namespace mavro
