#pragma once

#include "Label.h"
#include "NativeWindow.h"

namespace mavro {

// Codes in the high word of a button's WM_COMMAND.
enum ButtonCode { BN_CLICKED = 0 };

// A line of text that takes no input.
class NativeLabel : public NativeWindow {
 public:
  using NativeWindow::NativeWindow;
  virtual void SetAlign(Align align) = 0;
  // Sets the window that the text names: the text's mnemonic moves the focus to it, and its
  // accessible name is the text. Null for none; a buddy that is destroyed is forgotten.
  virtual void SetBuddy(NativeWindow* buddy) = 0;
};

// A push button.
class NativeButton : public NativeWindow {
 public:
  using NativeWindow::NativeWindow;
  // Gives the button the look of the one that Enter presses.
  virtual void SetDefault(bool on) = 0;
  // A flat button is drawn flat until the mouse is over it.
  virtual void SetHot(bool on) = 0;
  // A picture of a registered strip, -1 for none: beside the caption, or instead of it when
  // `alone`.
  virtual void SetPicture(int stripId, int index, bool alone) = 0;
};

// A box with a caption, checked or not.
class NativeCheckBox : public NativeWindow {
 public:
  using NativeWindow::NativeWindow;
  virtual void SetChecked(bool on) = 0;
  virtual bool IsChecked() const = 0;
};

}  // namespace mavro
