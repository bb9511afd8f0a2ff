#pragma once

#include "NativeWindow.h"
#include "TrackBar.h"

namespace mavro {

// What WM_COMMAND of a spin edit or track bar says in its high word.
enum RangeCode { RN_CHANGE = 1 };  // the user has changed the value

// A number in a range: an edit with two small buttons, a slider or a progress bar.
class NativeRange : public NativeWindow {
 public:
  using NativeWindow::NativeWindow;
  // The ends are in order and the value lies between them. Tells nobody.
  virtual void SetRange(int low, int high, int value) = 0;
  virtual int Value() const = 0;
  // Takes what has been typed so far; tells of a change.
  virtual void Commit() {}
  virtual void SetOrientation(Orientation) {}
};

}  // namespace mavro
