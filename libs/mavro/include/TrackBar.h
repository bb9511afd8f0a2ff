#pragma once

#include "Core.h"

namespace mavro {

// A slider between two numbers.
class TrackBar : public Control {
 public:
  class Impl;
  TrackBar();

  // A min above max means the same range as the two exchanged. Once the window exists, a value
  // outside the range becomes the nearest number inside.
  WriteProperty<int> min, max;
  WriteProperty<int> value;
  WriteProperty<Orientation> orientation;
  NotifyEvent onChange;  // by the user only, not by assignment; value: the number
};

}  // namespace mavro
