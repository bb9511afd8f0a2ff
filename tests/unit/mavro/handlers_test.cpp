#include "Handlers.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

namespace mavro {
namespace {

struct Recorder : object {
  std::string calls;
  void First(NotifyArgs&) { calls += "first "; }
  void Second(NotifyArgs&) { calls += "second "; }
  void ClearValue(NotifyArgs& args) { args.value = 0; }
};

TEST(Event, Fire_NoHandlers_TouchesNothing) {
  NotifyEvent event;
  NotifyArgs args{nullptr, 1};
  EXPECT_FALSE(event.HasHandlers());
  EXPECT_TRUE(event.Fire(args));
  EXPECT_EQ(args.value, 1);
}

TEST(Event, WithoutHandlers_IsOnePointer) {
  EXPECT_EQ(sizeof(NotifyEvent), sizeof(void*));
}

TEST(Event, Fire_TwoHandlers_BothRunFirstAddedFirst) {
  NotifyEvent event;
  Recorder recorder;
  event.Add_H(&recorder, &Recorder::First);
  event.Add_H(&recorder, &Recorder::Second);
  NotifyArgs args;
  event.Fire(args);
  EXPECT_EQ(recorder.calls, "first second ");
}

TEST(Event, AddH_SameHandlerTwice_RunsTwice) {
  NotifyEvent event;
  Recorder recorder;
  event.Add_H(&recorder, &Recorder::First);
  event.Add_H(&recorder, &Recorder::First);
  NotifyArgs args;
  event.Fire(args);
  EXPECT_EQ(recorder.calls, "first first ");
}

TEST(Event, Fire_HandlerWritesArguments_SenderReadsThem) {
  NotifyEvent event;
  Recorder recorder;
  event.Add_H(&recorder, &Recorder::ClearValue);
  event.Add_H(&recorder, &Recorder::First);
  NotifyArgs args{nullptr, 1};
  event.Fire(args);
  EXPECT_EQ(args.value, 0);
  EXPECT_EQ(recorder.calls, "first ");
}

struct SelfDestroyer : object {
  std::unique_ptr<NotifyEvent> event = std::make_unique<NotifyEvent>();
  bool reachedSecond = false;
  void Destroy(NotifyArgs&) { event.reset(); }
  void Second(NotifyArgs&) { reachedSecond = true; }
};

TEST(Event, Fire_HandlerDestroysTheEvent_StopsAndSaysSo) {
  SelfDestroyer owner;
  owner.event->Add_H(&owner, &SelfDestroyer::Destroy);
  owner.event->Add_H(&owner, &SelfDestroyer::Second);
  NotifyArgs args;
  EXPECT_FALSE(owner.event->Fire(args));
  EXPECT_FALSE(owner.reachedSecond);
}

}  // namespace
}  // namespace mavro
