#pragma once

#include <QFrame>

#include "NativeWindow.h"

namespace mavro {

// A frame whose control takes part in painting it: WM_PAINT for each painting, and a message when
// the palette, the font or the enabled state changes.
class PaintedFrame : public QFrame {
 public:
  explicit PaintedFrame(QWidget* parent);
  // Sets the window to notify; null when it is gone.
  void Attach(NativeWindow* its) { window = its; }

 protected:
  void paintEvent(QPaintEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  void Report(unsigned message);
  NativeWindow* window = nullptr;
};

}  // namespace mavro
