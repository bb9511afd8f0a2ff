#include "QtLoop.h"

#include <poll.h>

#include <QAbstractButton>
#include <QAbstractEventDispatcher>
#include <QApplication>
#include <QElapsedTimer>
#include <QKeyEvent>
#include <QPaintEvent>
#include <QSocketNotifier>
#include <QWidget>
#include <QWindow>
#include <algorithm>
#include <memory>

#include "Action.h"
#include "Failures.h"
#include "FormImpl.h"
#include "IdleHook.h"
#include "MessageLoop.h"
#include "QtEnding.h"
#include "QtFlushed.h"
#include "QtInput.h"
#include "Virtual.h"

namespace mavro {

namespace {

bool activity = false;
bool woken = false;
std::unique_ptr<QSocketNotifier> wakeNotifier;

// Events after which the idle step need not run again.
bool IsQuiet(QEvent::Type type) {
  switch (type) {
    case QEvent::Paint:
    case QEvent::UpdateRequest:
    case QEvent::UpdateLater:
    case QEvent::LayoutRequest:
    case QEvent::MouseMove:
    case QEvent::HoverMove:
    case QEvent::HoverEnter:
    case QEvent::HoverLeave:
    case QEvent::Timer:
    case QEvent::MetaCall:
    case QEvent::DeferredDelete:
    case QEvent::CursorChange:
    case QEvent::ToolTip:
      return true;
    default:
      return false;
  }
}

bool IsInput(QEvent::Type type) {
  switch (type) {
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseMove:
    case QEvent::Wheel:
    case QEvent::Close:
      return true;
    default:
      return false;
  }
}

int HotKeyFlags(Qt::KeyboardModifiers modifiers) {
  int flags = 0;
  if (modifiers & Qt::ShiftModifier) flags |= cShiftKey;
  if (modifiers & Qt::ControlModifier) flags |= cControlKey;
  if (modifiers & Qt::AltModifier) flags |= cAltKey;
  return flags;
}

bool BelongsToActiveForm(const QWindow* window) {
  if (!activeForm || !activeForm->impl->hwnd) return false;
  return activeForm->impl->hwnd->widget->windowHandle() == window;
}

// From now on the focus is shown. A button gets the focus before its click is reported, so that
// text typed elsewhere is already committed.
void FocusByMnemonic(QWidget& widget) {
  widget.window()->setAttribute(Qt::WA_KeyboardFocusChange);
  if (qobject_cast<QAbstractButton*>(&widget) && widget.focusPolicy() & Qt::TabFocus)
    widget.setFocus(Qt::ShortcutFocusReason);
}

class LoopFilter final : public QObject {
 public:
  using QObject::QObject;

  bool eventFilter(QObject* watched, QEvent* event) override {
    if (!IsQuiet(event->type())) activity = true;
    if (event->type() == QEvent::Quit && watched == qApp) return EndWithSession();
    if (watched->isWidgetType()) {
      auto* widget = static_cast<QWidget*>(watched);
      if (event->type() == QEvent::Shortcut) FocusByMnemonic(*widget);
      if (event->type() == QEvent::FocusIn) FocusComes(*static_cast<QFocusEvent*>(event));
      if (event->type() == QEvent::Paint)
        NotePainted(*widget, static_cast<QPaintEvent*>(event)->region());
      return OfferInput(widget, event);
    }
    if (!IsInput(event->type()) || !watched->isWindowType()) return false;
    auto* window = static_cast<QWindow*>(watched);
    if (window->property(cBlockedProperty).toBool()) {
      event->ignore();
      if (event->type() == QEvent::MouseButtonPress) RaiseModalForm();
      return true;
    }
    if (event->type() != QEvent::KeyPress || QApplication::activePopupWidget()) return false;
    if (!BelongsToActiveForm(window)) return false;
    auto* key = static_cast<QKeyEvent*>(event);
    const int virtualKey = VirtualKeyOf(key->key());
    return virtualKey != 0 && PreTranslateKey(virtualKey, HotKeyFlags(key->modifiers()));
  }
};

void IdleSlotChanged() {
  const IdleSlot& slot = TheIdleSlot();
  if (wakeNotifier) {
    wakeNotifier->setEnabled(false);
    wakeNotifier.release()->deleteLater();
  }
  if (!slot.hook || slot.wakeDescriptor < 0) return;
  wakeNotifier = std::make_unique<QSocketNotifier>(slot.wakeDescriptor, QSocketNotifier::Read);
  // The notifier is off until the idle pass has read the pipe: it would repeat the same event again
  // and again.
  QObject::connect(wakeNotifier.get(), &QSocketNotifier::activated, [] {
    woken = true;
    wakeNotifier->setEnabled(false);
  });
}

void ProcessPaintsOnly() {
  if (wakeNotifier) wakeNotifier->setEnabled(false);
  QAbstractEventDispatcher::instance()->processEvents(QEventLoop::ExcludeUserInputEvents |
                                                      QEventLoop::X11ExcludeTimers);
  if (wakeNotifier) wakeNotifier->setEnabled(!woken);
}

bool PollNow(int descriptor, int milliseconds) {
  pollfd entry{descriptor, POLLIN, 0};
  return poll(&entry, 1, milliseconds) > 0;
}

// The windows paint between two checks of the descriptor: at most this often during a stream of
// output, at least this often otherwise.
constexpr int cPaintInterval = 30;

bool WaitWhilePainting(int descriptor, int milliseconds) {
  static QElapsedTimer sincePaint;
  QElapsedTimer waited;
  waited.start();
  for (;;) {
    if (!sincePaint.isValid() || sincePaint.elapsed() >= cPaintInterval) {
      ProcessPaintsOnly();
      sincePaint.start();
    }
    const int left =
        milliseconds < 0
            ? cPaintInterval
            : std::clamp(milliseconds - static_cast<int>(waited.elapsed()), 0, cPaintInterval);
    if (PollNow(descriptor, left)) return true;
    if (milliseconds >= 0 && waited.elapsed() >= milliseconds) return false;
  }
}

}  // namespace

void InstallQtLoop(QObject* application) {
  application->installEventFilter(new LoopFilter(application));
  QObject::connect(qApp, &QApplication::focusChanged, application,
                   [](QWidget*, QWidget* now) { FocusMoved(now); });
  TheIdleSlot().changed = IdleSlotChanged;
  IdleSlotChanged();
  SetBlockingWait(WaitWhilePainting);
  QObject::connect(qApp, &QObject::destroyed, [] {
    wakeNotifier.reset();
    TheIdleSlot().changed = nullptr;
    SetBlockingWait(nullptr);
  });
}

// A box of the toolkit is above the modal form, and keeps the keyboard itself.
void RaiseModalForm() {
  RunLater([] {
    NativeWindow* top = TopModalWindow();
    if (top && !QApplication::activeModalWidget()) top->Raise();
  });
}

void RunLater(std::function<void()> job) {
  QMetaObject::invokeMethod(qApp, std::move(job), Qt::QueuedConnection);
}

bool DispatchWaiting() {
  const bool any = QAbstractEventDispatcher::instance()->processEvents(QEventLoop::AllEvents);
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  return any;
}

void WaitAndDispatch() {
  AwaitScreen();
  QAbstractEventDispatcher::instance()->processEvents(QEventLoop::WaitForMoreEvents);
}

bool TakeWake() {
  if (wakeNotifier) wakeNotifier->setEnabled(true);
  return std::exchange(woken, false);
}

bool TakeActivity() {
  return std::exchange(activity, false);
}

}  // namespace mavro
