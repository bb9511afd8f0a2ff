#pragma once

#include <QAbstractEventDispatcher>
#include <QBasicTimer>
#include <QElapsedTimer>
#include <QObject>
#include <functional>

namespace mavro {

// Runs a job that shows something at once, but not again before the user could see a difference: a
// burst of requests then costs the program's own work, not that of the screen.
class Pacer final : public QObject {
 public:
  // While a tool run blocks, the event loop runs without timers: a job that is due runs with the
  // next pass of the loop.
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

  // Runs a job that is due or waits, at once.
  void Finish() {
    if (waiting.isActive()) RunNow();
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
