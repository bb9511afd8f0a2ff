#pragma once

#include <QAbstractEventDispatcher>
#include <QBasicTimer>
#include <QElapsedTimer>
#include <QObject>
#include <functional>

namespace mavro {

// Lets a job that shows something run at once, but not again before the eye can tell: a burst of
// requests then costs what the program does, not what the screen does.
class Pacer final : public QObject {
 public:
  // While a tool run blocks, the event loop passes without timers: a job that is due then runs with
  // the pass.
  explicit Pacer(std::function<void()> itsJob) : job(std::move(itsJob)) {
    connect(QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::awake, this, [this] {
      if (waiting.isActive() && IsDue()) RunNow();
    });
  }

  // Runs the job, now or as soon as a while has passed since it last ran.
  void Request() {
    if (IsDue())
      RunNow();
    else if (!waiting.isActive())
      waiting.start(static_cast<int>(cMilliseconds - last.elapsed()), Qt::PreciseTimer, this);
  }

  void RunNow() {
    waiting.stop();
    job();
    last.start();
  }

 protected:
  void timerEvent(QTimerEvent*) override { RunNow(); }

 private:
  static constexpr qint64 cMilliseconds = 30;

  bool IsDue() const { return !last.isValid() || last.elapsed() >= cMilliseconds; }

  std::function<void()> job;
  QBasicTimer waiting;
  QElapsedTimer last;
};

}  // namespace mavro
