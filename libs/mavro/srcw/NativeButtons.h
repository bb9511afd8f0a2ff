#pragma once

#include "Label.h"
#include "NativeWindow.h"

namespace mavro {

// What WM_COMMAND of a button says in its high word.
enum ButtonCode { BN_CLICKED = 0 };

// A line of text that takes no input.
class NativeLabel : public NativeWindow {
 public:
  using NativeWindow::NativeWindow;
  virtual void SetAlign(Align align) = 0;
  // The window that the text names: it gets the focus by the text's mnemonic and its name from the
  // text. Null for none; a buddy that is destroyed is forgotten.
  virtual void SetBuddy(NativeWindow* buddy) = 0;
};

// A push button.
class NativeButton : public NativeWindow {
 public:
  using NativeWindow::NativeWindow;
  // Looks as the button that Enter presses.
  virtual void SetDefault(bool on) = 0;
  // Drawn flat until the mouse is over it.
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
