#pragma once

#include <vector>

#include "Core.h"

namespace mavro {

class MenuBar;

// A yes or no that has a default until the program decides.
class Choice {
 public:
  explicit Choice(bool byDefault) : value(byDefault) {}
  Choice& operator=(bool wanted) {
    value = wanted;
    isMade = true;
    return *this;
  }
  operator bool() const { return value; }
  // Another default; nothing once the program has decided.
  void SetDefault(bool wanted) {
    if (!isMade) value = wanted;
  }

 private:
  bool value;
  bool isMade = false;
};

// A top-level window. Made and configured like any control; Run makes the windows and shows them.
class Form : public Container {
 public:
  class Impl;
  enum WindowType { cNormal, cToolWindow, cNoTitleBar };
  enum Result { cNone = -1, cOk = 1, cCancel = 2 };

  // `newOwner` closes this form with itself; without one the application's main form does. A modal
  // form whose owner is not on the screen when it runs gets one that is.
  explicit Form(Form* newOwner = nullptr);
  ~Form() override;

  // Shows the form. A modal one disables the program's other windows and returns when it is closed;
  // the first form runs the message loop until the last form has gone; any other returns at once.
  // A form that is shown already comes to the front. Answers `result`.
  int Run(bool isModal);
  // Shows the form beside the program's others: Run(false).
  void Show() { Run(false); }
  // The same as a close request from the window manager; onClose may refuse.
  void Close();
  // Called by a handler of a button's onClick: the click does not close the form, and nothing is
  // stored through data links. For answers that can't be taken yet; onClose could not refuse them,
  // since it is only told of what a button closes.
  void StayOpen();
  // Whether the form is where its user can see it, and has been painted there.
  bool IsOnScreen() const;
  // Has the form fill its screen, or gives it its own place back; before it runs: has it begin so.
  void Maximize(bool on);
  // Whether the form fills its screen, also by its user's doing.
  bool IsMaximized() const;
  // Where the form is, or would be if it didn't fill its screen.
  Rect NormalBounds() const;
  // Where a control is the one to have the focus when the form first shows; the form itself: the
  // first that takes keys.
  Control* focusControl;

  int windowType = cNormal;
  bool center = true;
  bool resizable = true;
  bool noTitle = false;
  // Enter and Escape press the buttons that stand for OK and Cancel. By default in every form but
  // the first, and in the first when it is modal.
  Choice autoDialogKeys;
  // Files can be dropped anywhere on the form, its controls included, as it is when it runs; else
  // controls that take text take the files' names.
  bool acceptFiles = false;
  int result = cNone;

  NotifyEvent onClose, onDestroy, onShow, onChangeState, onActivate, onKeyPreview;
  // Files of this machine were dropped on a form that accepts them; told by the message loop after
  // the drop, unless another form is modal by then.
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
