#pragma once

#include "Core.h"

namespace mavro {

enum class Align : int { cLeft, cCenter, cRight };

// A line of text that takes no input. Its "&" gives the next control a mnemonic.
class Label : public Control {
 public:
  class Impl;
  Label();
  WriteProperty<Align> align;
};

}  // namespace mavro
