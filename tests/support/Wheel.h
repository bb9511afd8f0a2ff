#pragma once

#include <QtTest/qtestspontaneevent.h>
#include <QApplication>
#include <QWheelEvent>

#include "GuiDriver.h"

namespace test {

// Turns the mouse wheel over a place of a control, in eighths of a degree; a notch is 120, towards
// the user negative. Travels as the window system's does, through the form's window.
inline void TurnWheel(const mavro::Control& control, QPoint at, int turn) {
  QWidget* widget = WidgetOf(control);
  const QPointF place = widget->mapTo(widget->window(), at);
  QWheelEvent event(place, widget->mapToGlobal(at), QPoint(), QPoint(0, turn), Qt::NoButton,
                    Qt::NoModifier, Qt::NoScrollPhase, false);
  QSpontaneKeyEvent::setSpontaneous(&event);  // else nobody around is asked
  qApp->notify(widget->window()->windowHandle(), &event);
}

}  // namespace test
