#pragma once

#include "Core.h"

namespace mavro {

// How far something has got. A bar whose range is empty shows that something is going on, without
// an end in sight.
class ProgressBar : public Control {
 public:
  class Impl;
  ProgressBar();

  // As those of TrackBar.
  WriteProperty<int> min, max;
  WriteProperty<int> value;
};

}  // namespace mavro
