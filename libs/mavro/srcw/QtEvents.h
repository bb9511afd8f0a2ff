#pragma once

#include <QObject>

#include "NativeWindow.h"

namespace mavro {

// Translates the events of one window (moved, sized, activated, asked to close) into messages. Also
// watches the viewport of a scrolling widget, which holds the children. QtInput reports input and
// the focus. Owned by the window's widget.
class QtEvents final : public QObject {
 public:
  QtEvents(NativeWindow& its, QWidget* widget);
  bool eventFilter(QObject* watched, QEvent* event) override;
  // Called when the window is gone: Qt alone gets the events that still arrive.
  void Detach() { window = nullptr; }

 private:
  void Send(unsigned message, Param wParam, Param lParam);
  void SendCrossing(unsigned message);
  void OnWindow(QObject* watched, QEvent* event);

  NativeWindow* window;
};

}  // namespace mavro
