#include "QtEvents.h"

#include <QAbstractScrollArea>
#include <QCursor>
#include <QEvent>
#include <QGuiApplication>
#include <QWidget>

#include "QtInput.h"

namespace mavro {

QtEvents::QtEvents(NativeWindow& its, QWidget* widget) : QObject(widget), window(&its) {
  setObjectName("mavroEvents");
  widget->installEventFilter(this);
  if (auto* scrolling = qobject_cast<QAbstractScrollArea*>(widget))
    scrolling->viewport()->installEventFilter(this);
}

void QtEvents::Send(unsigned message, Param wParam, Param lParam) {
  SendMessage(window, message, wParam, lParam);
}

// Sends the present mouse position, and which buttons are held.
void QtEvents::SendCrossing(unsigned message) {
  const QPoint at = window->ClientWidget()->mapFromGlobal(QCursor::pos()) -
                    QPoint(window->ClientArea().left, window->ClientArea().top);
  Send(message, HeldButtons(QGuiApplication::mouseButtons()), PackPoint(at.x(), at.y()));
}

// Handles events that report a change of the window: Qt always gets them too.
void QtEvents::OnWindow(QObject* watched, QEvent* event) {
  const bool isForm = window->widget->isWindow();
  switch (event->type()) {
    case QEvent::Move:
      if (watched == window->widget) Send(WM_MOVE, 0, 0);
      break;
    case QEvent::Resize:
      if (watched == window->ClientWidget())
        Send(WM_SIZE, isForm && window->widget->isMaximized() ? cSizeMaximized : cSizeRestored,
             PackPoint(window->ClientWidth(), window->ClientHeight()));
      break;
    case QEvent::Enter:
      if (watched == window->widget) SendCrossing(WM_MOUSEENTER);
      break;
    case QEvent::Leave:
      if (watched == window->widget) SendCrossing(WM_MOUSELEAVE);
      break;
    case QEvent::WindowActivate:
      if (isForm && watched == window->widget) Send(WM_ACTIVATE, 1, 0);
      break;
    case QEvent::WindowDeactivate:
      if (isForm && watched == window->widget) Send(WM_ACTIVATE, 0, 0);
      break;
    case QEvent::WindowStateChange:
      if (isForm && watched == window->widget)
        Send(WM_SIZE,
             window->widget->isMinimized()   ? cSizeMinimized
             : window->widget->isMaximized() ? cSizeMaximized
                                             : cSizeRestored,
             PackPoint(window->ClientWidth(), window->ClientHeight()));
      break;
    default:
      break;
  }
}

bool QtEvents::eventFilter(QObject* watched, QEvent* event) {
  if (!window) return false;
  if (event->type() == QEvent::Close && watched == window->widget && window->widget->isWindow()) {
    event->ignore();
    Send(WM_CLOSE, 0, 0);
    return true;
  }
  OnWindow(watched, event);
  return false;
}

}  // namespace mavro
