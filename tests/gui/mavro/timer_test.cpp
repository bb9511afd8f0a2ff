#include "Timer.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <memory>

#include "EventLog.h"
#include "Form.h"
#include "GuiDriver.h"
#include "IdleHook.h"
#include "ScriptedDialogs.h"
#include "TimerList.h"

namespace mavro {
namespace {

struct TimerForm : Form {
  Panel panel;
  Timer timer{&panel};
  int ticks = 0;
  TimerForm() {
    SetBounds(0, 0, 100, 100);
    Add(&panel);
    timer.onTimer.Add_H(this, &TimerForm::Tick);
  }
  void Tick(NotifyArgs& args) {
    EXPECT_EQ(args.sender, &timer);
    ++ticks;
  }
};

TEST(Timer, New_IsStopped) {
  Panel panel;
  Timer timer(&panel);
  EXPECT_EQ(timer.id, -1);
  EXPECT_FALSE(timer.IsRunning());
  timer.Stop();
  EXPECT_EQ(timer.id, -1);
}

TEST(Timer, Indexes_GrowAndHolesStay) {
  Panel panel;
  auto first = std::make_unique<Timer>(&panel);
  const int index = first->index;
  Timer second(&panel);
  EXPECT_EQ(second.index, index + 1);
  first.reset();
  EXPECT_DEATH(TimerList::Tick(index + 1), "timers\\[nIDEvent-1\\]!=NULL");
}

TEST(TimerDeath, TickOfNone_StopsAtTheAssertion) {
  Panel panel;
  Timer timer(&panel);
  EXPECT_DEATH(TimerList::Tick(1 << 20), "timers\\[nIDEvent-1\\]!=NULL");
  EXPECT_DEATH(TimerList::Tick(0), "timers\\[nIDEvent-1\\]!=NULL");
  EXPECT_DEATH(TimerList::Tick(timer.index + 1), "id==ix\\+1");
}

TEST(Timer, Running_HasTheIdOfItsPlaceAndTicks) {
  TimerForm form;
  test::RunForm(form, false, [&] {
    form.timer.Start(1);
    EXPECT_EQ(form.timer.id, form.timer.index + 1);
    EXPECT_EQ(form.timer.interval, 1);
    EXPECT_TRUE(test::WaitFor([&] { return form.ticks >= 3; }));
  });
}

TEST(Timer, Stopped_TicksNoMore) {
  TimerForm form;
  Timer witness(&form);
  test::EventLog log;
  log.Listen("tick", witness.onTimer);
  test::RunForm(form, false, [&] {
    form.timer.Start(1);
    EXPECT_TRUE(test::WaitFor([&] { return form.ticks >= 1; }));
    form.timer.Stop();
    EXPECT_EQ(form.timer.id, -1);
    const int before = form.ticks;
    witness.Start(1);
    int seen = 0;
    EXPECT_TRUE(test::WaitFor([&] { return !log.Take().empty() && ++seen > 3; }));
    EXPECT_EQ(form.ticks, before);
  });
}

TEST(Timer, StartedWithoutAWindow_TicksOnceThereIsOne) {
  TimerForm form;
  form.timer.Start(1);
  EXPECT_FALSE(form.timer.IsRunning());
  test::RunForm(form, false, [&] {
    EXPECT_TRUE(form.timer.IsRunning());
    EXPECT_TRUE(test::WaitFor([&] { return form.ticks >= 1; }));
  });
}

TEST(Timer, OwnerThatLosesItsWindow_StopsIt) {
  TimerForm form;
  test::RunForm(form, false, [&] {
    form.timer.Start(1);
    form.Remove(&form.panel);
    EXPECT_FALSE(form.timer.IsRunning());
    form.timer.Stop();
    form.Add(&form.panel);
    EXPECT_FALSE(form.timer.IsRunning());
    form.timer.Start(1);
    EXPECT_TRUE(test::WaitFor([&] { return form.ticks >= 1; }));
  });
  EXPECT_FALSE(form.timer.IsRunning());
}

TEST(Timer, HandlerThatDestroysItsTimer_IsSafe) {
  TimerForm form;
  struct Destroyer : object {
    std::unique_ptr<Timer> timer;
    void On(NotifyArgs&) { timer.reset(); }
  } destroyer;
  destroyer.timer = std::make_unique<Timer>(&form.panel);
  destroyer.timer->onTimer.Add_H(&destroyer, &Destroyer::On);
  test::RunForm(form, false, [&] {
    destroyer.timer->Start(1);
    EXPECT_TRUE(test::WaitFor([&] { return !destroyer.timer; }));
  });
}

TEST(Timer, HandlerThatThrows_StopsTheTimerWithOneMessage) {
  TimerForm form;
  struct Thrower : object {
    void On(NotifyArgs&) { throw std::runtime_error("tick failed"); }
  } thrower;
  form.timer.onTimer.Add_H(&thrower, &Thrower::On);
  test::ScriptedDialogs dialogs;
  test::RunForm(form, false, [&] {
    form.timer.Start(1);
    EXPECT_TRUE(test::WaitFor([&] { return !dialogs.texts.empty(); }));
    EXPECT_FALSE(form.timer.IsRunning());
    EXPECT_EQ(dialogs.texts.size(), 1u);
    EXPECT_NE(dialogs.texts[0].find("tick failed"), std::string::npos);
  });
}

TEST(Timer, BlockingRun_HoldsTicksBack) {
  TimerForm form;
  int ends[2];
  ASSERT_EQ(pipe(ends), 0);
  test::RunForm(form, false, [&] {
    form.timer.Start(1);
    EXPECT_TRUE(test::WaitFor([&] { return form.ticks >= 1; }));
    const int before = form.ticks;
    EXPECT_FALSE(WaitReadable(ends[0], 100));
    EXPECT_EQ(form.ticks, before);
    EXPECT_TRUE(test::WaitFor([&] { return form.ticks > before; }));
  });
  close(ends[0]);
  close(ends[1]);
}

// The idle step follows what the user does, not what a clock does.
TEST(Timer, Ticks_AreNoActivity) {
  static int passes;
  TimerForm form;
  test::RunForm(form, false, [&] {
    form.timer.Start(1);
    EXPECT_TRUE(test::WaitFor([&] { return form.ticks >= 2; }));
    passes = 0;
    TheIdleSlot().hook = [] { ++passes; };
    const int before = form.ticks;
    EXPECT_TRUE(test::WaitFor([&] { return form.ticks > before + 20; }));
    TheIdleSlot().hook = nullptr;
    EXPECT_LT(passes, 10);
  });
}

TEST(Timer, NegativeInterval_IsZero) {
  TimerForm form;
  test::RunForm(form, false, [&] {
    form.timer.Start(-5);
    EXPECT_EQ(form.timer.interval, 0);
    EXPECT_TRUE(test::WaitFor([&] { return form.ticks >= 2; }));
  });
}

}  // namespace
}  // namespace mavro
