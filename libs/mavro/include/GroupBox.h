#pragma once

#include "Core.h"

namespace mavro {

// A frame with a title around related controls. The coordinates of children count from its upper
// left corner; docked children are laid out inside the frame. The mnemonic of its title ("&") moves
// the focus to the first child.
class GroupBox : public Container {
 public:
  class Impl;
  GroupBox();
};

}  // namespace mavro
