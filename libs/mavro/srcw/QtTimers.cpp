#include <QHash>
#include <QObject>
#include <QTimerEvent>
#include <QWidget>

#include "NativeTimer.h"

namespace mavro {

namespace {

// The timers of one window. Owned by its widget.
class WindowTimers final : public QObject {
 public:
  explicit WindowTimers(NativeWindow& its) : QObject(its.widget), window(its) {
    setObjectName("mavroTimers");
  }

  void Start(int id, int milliseconds) {
    Stop(id);
    ids.insert(startTimer(milliseconds), id);
  }

  void Stop(int id) {
    const int running = ids.key(id, 0);
    if (running == 0) return;
    killTimer(running);
    ids.remove(running);
  }

 protected:
  void timerEvent(QTimerEvent* event) override {
    const auto found = ids.constFind(event->timerId());
    if (found != ids.constEnd()) SendMessage(&window, WM_TIMER, *found, 0);
  }

 private:
  NativeWindow& window;
  QHash<int, int> ids;  // by the toolkit's ids
};

WindowTimers* TimersOf(const NativeWindow& window) {
  return static_cast<WindowTimers*>(
      window.widget->findChild<QObject*>("mavroTimers", Qt::FindDirectChildrenOnly));
}

}  // namespace

void StartNativeTimer(NativeWindow& window, int id, int milliseconds) {
  WindowTimers* timers = TimersOf(window);
  if (!timers) timers = new WindowTimers(window);
  timers->Start(id, milliseconds);
}

void StopNativeTimer(NativeWindow& window, int id) {
  if (WindowTimers* timers = TimersOf(window)) timers->Stop(id);
}

}  // namespace mavro
