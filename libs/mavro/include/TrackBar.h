#pragma once

#include "Core.h"

namespace mavro {

// A slider between two numbers.
class TrackBar : public Control {
 public:
  class Impl;
  TrackBar();

  // A range whose ends are the wrong way round is the same range; a value outside it becomes the
  // nearest number inside once the window exists.
  WriteProperty<int> min, max;
  WriteProperty<int> value;
  WriteProperty<Orientation> orientation;
  NotifyEvent onChange;  // by the user only, not by assignment; value: the number
};

}  // namespace mavro
