#pragma once

#include "Core.h"

namespace mavro {

// A field for a number, which the user types or changes with the Up and Down keys, the wheel and
// two small buttons. A number outside the range becomes the nearest one inside: at once if it is
// assigned to a control that has a window, and on commit if the user types it.
class SpinEdit : public Control {
 public:
  class Impl;
  SpinEdit();

  // A min above max means the same range as the two exchanged.
  WriteProperty<int> min, max;
  WriteProperty<int> value;
  NotifyEvent onChange;  // by the user only, not by assignment; value: the number
};

}  // namespace mavro
