#pragma once

#include "Core.h"

namespace mavro {

// A line of text that takes no input. Its "&" gives the next control a mnemonic.
class Label : public Control {
 public:
  class Impl;
  enum Align { cLeft, cCenter, cRight };
  Label();
  WriteProperty<int> align;
};

}  // namespace mavro
