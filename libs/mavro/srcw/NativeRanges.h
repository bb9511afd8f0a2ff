#pragma once

#include "NativeWindow.h"
#include "TrackBar.h"

namespace mavro {

// Codes in the high word of a spin edit's or track bar's WM_COMMAND.
enum RangeCode { RN_CHANGE = 1 };  // the user has changed the value

// A number in a range: an edit with two small buttons, a slider or a progress bar.
class NativeRange : public NativeWindow {
 public:
  using NativeWindow::NativeWindow;
  // The ends are in order and the value is between them. Sends no notification.
  virtual void SetRange(int low, int high, int value) = 0;
  virtual int Value() const = 0;
  // Takes the text typed so far as the value; notifies the parent of a change.
  virtual void Commit() {}
  virtual void SetOrientation(Orientation) {}
};

}  // namespace mavro
