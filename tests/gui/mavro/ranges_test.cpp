#include <gtest/gtest.h>

#include <QLineEdit>
#include <QProgressBar>
#include <QSlider>
#include <QSpinBox>
#include <QWheelEvent>
#include <climits>
#include <memory>

#include "Button.h"
#include "EventLog.h"
#include "Form.h"
#include "GuiDriver.h"
#include "ProgressBar.h"
#include "SpinEdit.h"
#include "TrackBar.h"

namespace mavro {
namespace {

struct RangeForm : Form {
  test::EventLog log;
  SpinEdit spin;
  TrackBar track;
  ProgressBar progress;
  Button ok;

  RangeForm() {
    SetBounds(0, 0, 320, 220);
    spin.SetLocation(10, 10);
    track.SetLocation(10, 50);
    progress.SetLocation(10, 100);
    ok.SetLocation(10, 140);
    for (Control* control : std::initializer_list<Control*>{&spin, &track, &progress, &ok})
      Add(control);
    log.Listen("spin", spin.onChange);
    log.Listen("track", track.onChange);
  }

  static void Wheel(QWidget* widget, int notches) {
    QWheelEvent event(QPointF(5, 5), widget->mapToGlobal(QPointF(5, 5)), QPoint(),
                      QPoint(0, 120 * notches), Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase,
                      false);
    QCoreApplication::sendEvent(widget, &event);
  }
  void Type(const char* text) { QTest::keyClicks(test::WidgetOf(spin), text); }
};

TEST(SpinEdit, NewOne_HasTheUsualRange) {
  SpinEdit spin;
  EXPECT_EQ(spin.min, 0);
  EXPECT_EQ(spin.max, 100);
  EXPECT_EQ(spin.value, 0);
  EXPECT_EQ(spin.Bounds(), (Rect{0, 0, 80, 24}));
}

TEST(SpinEdit, Window_ShowsWhatWasSetBefore) {
  RangeForm form;
  form.spin.min = 200;
  form.spin.max = 500;
  form.spin.value = 300;
  test::RunForm(form, false, [&] {
    EXPECT_EQ(form.spin.text.Get(), "300");
    EXPECT_EQ(form.spin.value, 300);
    EXPECT_EQ(form.log.Take(), "");
    form.track.value = 60;
    form.progress.value = 40;
    test::Shot(form, "ranges");
  });
}

TEST(SpinEdit, Value_OutsideTheRange_BecomesTheNearest) {
  RangeForm form;
  form.spin.value = 1000;
  test::RunForm(form, false, [&] {
    EXPECT_EQ(form.spin.value, 100);
    form.spin.value = -5;
    EXPECT_EQ(form.spin.value, 0);
    form.spin.min = 10;
    EXPECT_EQ(form.spin.value, 10);
    EXPECT_EQ(form.log.Take(), "");
  });
}

TEST(SpinEdit, RangeTheWrongWayRound_IsTheSameRange) {
  RangeForm form;
  form.spin.min = 50;
  form.spin.max = 20;
  form.spin.value = 99;
  test::RunForm(form, false, [&] { EXPECT_EQ(form.spin.value, 50); });
}

TEST(SpinEdit, KeysAndWheel_Step) {
  RangeForm form;
  form.spin.value = 50;
  test::RunForm(form, false, [&] {
    form.spin.Focus();
    test::Key(form, Qt::Key_Up);
    test::Key(form, Qt::Key_Up);
    test::Key(form, Qt::Key_Down);
    RangeForm::Wheel(test::WidgetOf(form.spin), 1);
    EXPECT_EQ(form.spin.value, 52);
    EXPECT_EQ(form.log.Take(), "spin:51 spin:52 spin:51 spin:52 ");
  });
}

TEST(SpinEdit, Wheel_WithoutTheFocus_ChangesNothing) {
  RangeForm form;
  test::RunForm(form, false, [&] {
    form.ok.Focus();
    RangeForm::Wheel(test::WidgetOf(form.spin), 3);
    RangeForm::Wheel(test::WidgetOf(form.track), 3);
    EXPECT_EQ(form.spin.value, 0);
    EXPECT_EQ(form.track.value, 0);
  });
}

TEST(SpinEdit, Typing_IsTakenAndClampedWhenCommitted) {
  RangeForm form;
  test::RunForm(form, false, [&] {
    form.spin.Focus();
    test::WidgetOf(form.spin)->findChild<QLineEdit*>()->selectAll();
    form.Type("7");
    EXPECT_EQ(form.spin.value, 7);
    form.Type("77");
    EXPECT_EQ(form.spin.text.Get(), "777");
    form.ok.Focus();
    EXPECT_EQ(form.spin.text.Get(), "100");
    EXPECT_EQ(form.spin.value, 100);
    EXPECT_EQ(form.log.Take(), "spin:7 spin:77 spin:100 ");
  });
}

TEST(SpinEdit, Typing_TakesNumbersOnly) {
  RangeForm form;
  form.spin.min = -100;
  test::RunForm(form, false, [&] {
    form.spin.Focus();
    test::WidgetOf(form.spin)->findChild<QLineEdit*>()->selectAll();
    form.Type("-a1.x2");
    EXPECT_EQ(form.spin.value, -12);
  });
}

TEST(SpinEdit, Enter_CommitsAndPressesOk) {
  RangeForm form;
  form.autoDialogKeys = true;
  form.ok.kind = Button::cOk;
  const int result = test::RunForm(form, true, [&] {
    form.spin.Focus();
    test::WidgetOf(form.spin)->findChild<QLineEdit*>()->selectAll();
    form.Type("999");
    test::Key(form, Qt::Key_Return);
  });
  EXPECT_EQ(result, 1);
  EXPECT_EQ(form.spin.value, 100);
}

TEST(SpinEdit, Text_IsTheNumber) {
  RangeForm form;
  form.spin.text = "42";
  test::RunForm(form, false, [&] {
    EXPECT_EQ(form.spin.value, 42);
    form.spin.text = "no number";
    EXPECT_EQ(form.spin.text.Get(), "0");
    form.spin.text = "99999999999999999999";
    EXPECT_EQ(form.spin.text.Get(), "100");
    form.spin.text = "-\xFF";
    EXPECT_EQ(form.spin.text.Get(), "0");
  });
}

TEST(SpinEdit, WidestRange_StepsStopAtItsEnds) {
  RangeForm form;
  form.spin.min = INT_MIN;
  form.spin.max = INT_MAX;
  form.spin.value = INT_MAX;
  test::RunForm(form, false, [&] {
    form.spin.Focus();
    test::Key(form, Qt::Key_Up);
    EXPECT_EQ(form.spin.value, INT_MAX);
    form.spin.value = INT_MIN;
    test::Key(form, Qt::Key_PageDown);
    EXPECT_EQ(form.spin.value, INT_MIN);
  });
}

TEST(SpinEdit, EqualValue_SendsNothing) {
  RangeForm form;
  form.spin.value = 5;
  test::RunForm(form, false, [&] {
    auto* box = qobject_cast<QSpinBox*>(test::WidgetOf(form.spin));
    const QSignalBlocker silent(box);
    box->setValue(9);
    form.spin.value = 5;
    EXPECT_EQ(box->value(), 9);
  });
}

TEST(SpinEdit, Destroyed_InOnChange) {
  test::EventLog log;
  RangeForm form;
  auto spin = std::make_unique<SpinEdit>();
  log.Listen("gone", spin->onChange, [&](NotifyArgs&) { spin.reset(); });
  form.Add(spin.get());
  test::RunForm(form, false, [&] {
    spin->Focus();
    test::Key(form, Qt::Key_Up);
    EXPECT_EQ(log.Take(), "gone:1 ");
  });
}

TEST(TrackBar, Keys_MoveItAndTell) {
  RangeForm form;
  form.track.value = 10;
  test::RunForm(form, false, [&] {
    form.track.Focus();
    test::Key(form, Qt::Key_Right);
    test::Key(form, Qt::Key_End);
    test::Key(form, Qt::Key_Home);
    EXPECT_EQ(form.log.Take(), "track:11 track:100 track:0 ");
    form.track.value = 33;
    EXPECT_EQ(qobject_cast<QSlider*>(test::WidgetOf(form.track))->value(), 33);
    EXPECT_EQ(form.log.Take(), "");
  });
}

TEST(TrackBar, Orientation_BeforeAndWithTheWindow) {
  RangeForm form;
  form.track.orientation = cVertical;
  test::RunForm(form, false, [&] {
    auto* slider = qobject_cast<QSlider*>(test::WidgetOf(form.track));
    EXPECT_EQ(slider->orientation(), Qt::Vertical);
    form.track.Focus();
    test::Key(form, Qt::Key_Down);
    EXPECT_EQ(form.track.value, 1) << "down is towards the larger end, which lies below";
    form.track.orientation = cHorizontal;
    EXPECT_EQ(slider->orientation(), Qt::Horizontal);
  });
}

TEST(TrackBar, Value_OutsideTheRange_BecomesTheNearest) {
  RangeForm form;
  form.track.min = 10;
  form.track.max = -10;
  form.track.value = 99;
  test::RunForm(form, false, [&] { EXPECT_EQ(form.track.value, 10); });
}

TEST(TrackBar, Destroyed_InOnChange) {
  test::EventLog log;
  RangeForm form;
  auto track = std::make_unique<TrackBar>();
  log.Listen("gone", track->onChange, [&](NotifyArgs&) { track.reset(); });
  form.Add(track.get());
  test::RunForm(form, false, [&] {
    track->Focus();
    test::Key(form, Qt::Key_Right);
    EXPECT_EQ(log.Take(), "gone:1 ");
  });
}

TEST(ProgressBar, ShowsValueAndRange) {
  RangeForm form;
  form.progress.max = 10;
  form.progress.value = 4;
  test::RunForm(form, false, [&] {
    auto* bar = qobject_cast<QProgressBar*>(test::WidgetOf(form.progress));
    EXPECT_EQ(bar->value(), 4);
    EXPECT_EQ(bar->maximum(), 10);
    form.progress.value = 99;
    EXPECT_EQ(form.progress.value, 10);
    form.progress.value = -1;
    EXPECT_EQ(form.progress.value, 0);
  });
}

TEST(ProgressBar, EmptyRange_ShowsNoEnd) {
  RangeForm form;
  form.progress.min = form.progress.max = 7;
  test::RunForm(form, false, [&] {
    auto* bar = qobject_cast<QProgressBar*>(test::WidgetOf(form.progress));
    EXPECT_EQ(bar->minimum(), bar->maximum());
    form.progress.max = 20;
    EXPECT_EQ(bar->maximum(), 20);
    EXPECT_EQ(form.progress.value, 7);
  });
}

}  // namespace
}  // namespace mavro
