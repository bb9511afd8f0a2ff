#pragma once

#include "Bitmap.h"
#include "PrintDevice.h"

namespace mavro {

// Shows pages as pictures. It measures as the printer does, so that the pages are the same.
class PreviewDevice : public PrintDevice {
 public:
  // The bitmap that the next page fills.
  virtual void SetTarget(const Bitmap& target) = 0;
};

}  // namespace mavro
