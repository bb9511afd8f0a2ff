#pragma once

#include "Core.h"
#include "Picture.h"

namespace mavro {

// Shows a picture at its top left corner; without one only its ground.
class Image : public Control {
 public:
  class Impl;
  Image();

  Picture& picture;
  WriteProperty<bool> stretch;       // fills the control
  WriteProperty<bool> autosize;      // the picture's own size, whatever `stretch` says
  WriteProperty<bool> proportional;  // what fills the control keeps its ratio
};

}  // namespace mavro
