#pragma once

#include "Core.h"

namespace mavro {

// A number to type in, or to step through by the keys up and down, the wheel and two small buttons.
// What lies outside the range becomes the nearest number inside it: at once when it is assigned to
// a control that has a window, and when it is committed while the user types.
class SpinEdit : public Control {
 public:
  class Impl;
  SpinEdit();

  // A range whose ends are the wrong way round is the same range.
  WriteProperty<int> min, max;
  WriteProperty<int> value;
  NotifyEvent onChange;  // by the user only, not by assignment; value: the number
};

}  // namespace mavro
