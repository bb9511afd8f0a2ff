#pragma once

#include "CustomCtrl.h"

namespace mavro {

// An area that the program draws: a drawing that stays in onDraw, on BackBuffer(); marks that
// change often in onPaint, over a copy of it. If it has handlers for keys when its window is made,
// it takes part in the Tab order, gets all keys, and a press of the left button focuses it;
// `wantsKeys` asks for the same without such handlers.
class PaintBox : public CustomCtrl {
 public:
  class Impl;
  PaintBox();

  // The left button was pressed and released inside the control. A double click fires it once.
  NotifyEvent onClick;

 protected:
  explicit PaintBox(SysImpl* newImpl);
};

}  // namespace mavro
