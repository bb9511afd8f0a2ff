#pragma once

#include "Core.h"
#include "Picture.h"

namespace mavro {

// Shows a picture at its top left corner; without a picture only its background.
class Image : public Control {
 public:
  class Impl;
  Image();

  Picture& picture;
  WriteProperty<bool> stretch;       // fills the control
  WriteProperty<bool> autosize;      // the picture keeps its own size, whatever `stretch` is
  WriteProperty<bool> proportional;  // a stretched picture keeps its ratio
};

}  // namespace mavro
