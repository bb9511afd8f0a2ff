#pragma once

#include "Core.h"

namespace mavro {

// Shows the progress of an operation. A bar with an empty range shows an operation of unknown
// length.
class ProgressBar : public Control {
 public:
  class Impl;
  ProgressBar();

  // The same as in TrackBar.
  WriteProperty<int> min, max;
  WriteProperty<int> value;
};

}  // namespace mavro
