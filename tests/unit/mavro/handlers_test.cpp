#include "Handlers.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "Events.h"

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

struct CrossingRecorder : object {
  std::string calls;
  void Mouse(MouseArgs& args) { calls += "mouse " + std::to_string(args.x) + "; "; }
  void Notify(NotifyArgs& args) { calls += "notify " + std::to_string(args.value) + "; "; }
  void Handle(MouseArgs& args) { args.handled = true; }
};

TEST(CrossingEvent, HandlersOfBothKinds_RunFirstAddedFirst) {
  CrossingEvent event;
  CrossingRecorder recorder;
  EXPECT_FALSE(event.HasHandlers());
  event.Add_H(&recorder, &CrossingRecorder::Notify);
  event.Add_H(&recorder, &CrossingRecorder::Mouse);
  event.Add_H(&recorder, &CrossingRecorder::Handle);
  event.Add_H(&recorder, &CrossingRecorder::Notify);
  EXPECT_TRUE(event.HasHandlers());
  MouseArgs mouse;
  mouse.x = 5;
  NotifyArgs notify{nullptr, 7};
  EXPECT_TRUE(event.Fire(mouse, notify));
  EXPECT_EQ(recorder.calls, "notify 7; mouse 5; notify 7; ");
  EXPECT_TRUE(mouse.handled);
}

TEST(CrossingEvent, DestroyedByAHandler_StopsAndSaysSo) {
  struct Owner : object {
    std::unique_ptr<CrossingEvent> event = std::make_unique<CrossingEvent>();
    bool reachedSecond = false;
    void Destroy(MouseArgs&) { event.reset(); }
    void Second(NotifyArgs&) { reachedSecond = true; }
  } owner;
  owner.event->Add_H(&owner, &Owner::Destroy);
  owner.event->Add_H(&owner, &Owner::Second);
  MouseArgs mouse;
  NotifyArgs notify;
  EXPECT_FALSE(owner.event->Fire(mouse, notify));
  EXPECT_FALSE(owner.reachedSecond);
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
