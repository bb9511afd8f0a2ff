#pragma once

#include <QObject>

#include "NativeWindow.h"

namespace mavro {

// Translates what has happened to one window (moved, sized, activated, asked to close) into
// messages. Also watches the viewport of a scrolling widget, which is what children stand in. Input
// and the focus are told by QtInput. Owned by the window's widget.
class QtEvents final : public QObject {
 public:
  QtEvents(NativeWindow& its, QWidget* widget);
  bool eventFilter(QObject* watched, QEvent* event) override;
  // The window is gone: events that still arrive are Qt's alone.
  void Detach() { window = nullptr; }

 private:
  void Send(unsigned message, Param wParam, Param lParam);
  void SendCrossing(unsigned message);
  void OnWindow(QObject* watched, QEvent* event);

  NativeWindow* window;
};

}  // namespace mavro
