#pragma once

#include "NativeWindow.h"

namespace mavro {

// The window of a form: a frame with room for a menu bar above its client area.
class NativeForm : public NativeWindow {
 public:
  using NativeWindow::NativeWindow;
  // A dialog of fixed size, or a window the user can size; with a window to stay above.
  virtual void SetFrame(bool fixedSize, int windowType, NativeWindow* above) = 0;
  // Puts the middle of the form over the middle of `above`, or of the screen for null.
  virtual void CenterOver(NativeWindow* above) = 0;
  virtual void SetIcon(int resourceId) = 0;
  // From now on the form is notified of files dropped anywhere on it.
  virtual void AcceptFiles() = 0;
  // True if the screen shows the form; it is painted as soon as it does.
  virtual bool IsOnScreen() const = 0;
  virtual void Maximize(bool on) = 0;
  virtual bool IsMaximized() const = 0;
  // The bounds of the form while it doesn't fill its screen.
  virtual Rect NormalBounds() const = 0;
};

}  // namespace mavro
