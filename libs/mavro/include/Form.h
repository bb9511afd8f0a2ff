#pragma once

#include <vector>

#include "Core.h"

namespace mavro {

class MenuBar;

// A bool with a default that holds until the program sets a value.
class Choice {
 public:
  explicit Choice(bool byDefault) : value(byDefault) {}
  Choice& operator=(bool wanted) {
    value = wanted;
    isMade = true;
    return *this;
  }
  operator bool() const { return value; }
  // Changes the default; no effect after the program has set a value.
  void SetDefault(bool wanted) {
    if (!isMade) value = wanted;
  }

 private:
  bool value;
  bool isMade = false;
};

// A top-level window. It is made and configured like any control; Run makes the windows and shows
// them.
class Form : public Container {
 public:
  class Impl;
  enum WindowType { cNormal, cToolWindow, cNoTitleBar };
  enum Result { cNone = -1, cOk = 1, cCancel = 2 };

  // This form is closed when `newOwner` closes, or when the main form does if that is null. If the
  // owner of a modal form is not on the screen when the form runs, the form gets an owner that is.
  explicit Form(Form* newOwner = nullptr);
  ~Form() override;

  // Shows the form. For a modal form, disables the program's other windows and returns when the
  // form is closed. For the first form, runs the message loop until the last form is gone. For any
  // other form, returns at once. A form that is already shown comes to the front. Returns `result`.
  int Run(bool isModal);
  // Shows the form beside the program's others: Run(false).
  void Show() { Run(false); }
  // The same as a close request from the window manager; onClose may refuse.
  void Close();
  // For a handler of a button's onClick: the click then does not close the form, and nothing is
  // stored through data links. Use it for input that can't be accepted yet; onClose can't refuse
  // the close that a button starts, it is only notified.
  void StayOpen();
  // True if the user can see the form and it has been painted.
  bool IsOnScreen() const;
  // Makes the form fill its screen, or restores its own bounds. Before the form runs: sets how it
  // is first shown.
  void Maximize(bool on);
  // True if the form fills its screen, no matter whether the program or the user did it.
  bool IsMaximized() const;
  // The bounds of the form, or those it would have if it didn't fill its screen.
  Rect NormalBounds() const;
  // The control that has the focus when the form is first shown; if it is the form itself, the
  // first control that takes keys.
  Control* focusControl;

  int windowType = cNormal;
  bool center = true;
  bool resizable = true;
  bool noTitle = false;
  // Enter and Escape press the OK and Cancel buttons. By default true in every form except the
  // first, and in the first if it is modal.
  Choice autoDialogKeys;
  // True if files can be dropped anywhere on the form, also on its controls; read when the form
  // runs. If false, controls that take text insert the names of the files.
  bool acceptFiles = false;
  int result = cNone;

  NotifyEvent onClose, onDestroy, onShow, onChangeState, onActivate, onKeyPreview;
  // Files of this machine were dropped on a form that accepts them. Fired by the message loop after
  // the drop, but not if another form is modal by then.
  FilesEvent onDropFiles;

  bool modal = false;
  Form* owner = nullptr;
  std::vector<Form*> ownedForms;
  ActionMenu* menuBar = nullptr;  // not owned
  int icon = 100;                 // resource id of the window's icon

 private:
  bool beginsMaximized = false;
};

// The form that was last activated, or null; and how many forms have a window.
extern Form* activeForm;
extern int formCount;

}  // namespace mavro
