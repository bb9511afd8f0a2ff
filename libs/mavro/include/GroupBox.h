#pragma once

#include "Core.h"

namespace mavro {

// A frame with a title around what belongs together. Children are placed from its upper left
// corner; docked ones are laid out inside the frame. Its "&" takes the focus to the first child.
class GroupBox : public Container {
 public:
  class Impl;
  GroupBox();
};

}  // namespace mavro
