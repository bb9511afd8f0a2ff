#pragma once

#include <QObject>

#include "NativeWindow.h"

namespace mavro {

// Translates the Qt events of one window into messages, hands them to the window procedure, and
// lets Qt have the events whose receiver asked for default handling. Also watches the viewport of a
// scrolling widget, where its mouse events arrive. Owned by the window's widget.
class QtEvents final : public QObject {
 public:
  QtEvents(NativeWindow& its, QWidget* widget);
  bool eventFilter(QObject* watched, QEvent* event) override;
  // The window is gone: events that still arrive are Qt's alone.
  void Detach() { window = nullptr; }

 private:
  bool Send(unsigned message, Param wParam, Param lParam);
  void SendCrossing(unsigned message);
  bool OnKey(QEvent* event);
  bool OnMouse(QObject* watched, QEvent* event);
  bool OnWindow(QObject* watched, QEvent* event);

  NativeWindow* window;
};

}  // namespace mavro
