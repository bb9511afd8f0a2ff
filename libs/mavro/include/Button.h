#pragma once

#include "Core.h"

namespace mavro {

// The base class of all buttons.
class AnyButton : public Control {
 public:
  class Impl;
  NotifyEvent onClick;

 protected:
  explicit AnyButton(SysImpl* newImpl) : Control(newImpl) {}
};

// A push button. Its `kind` sets the standard caption; cOk and cCancel close the form with that
// result.
class Button : public AnyButton {
 public:
  class Impl;
  enum Kind { cNone, cOk, cCancel, cNo, cOpen, cSave, cPrint, cRun, cGo, cEdit, cSetup, cClose };

  Button();
  // Draws the button flat, with the picture at `index` of the strip instead of a caption.
  void SetImage(int stripId, int index);

  WriteProperty<int> kind;
  WriteProperty<int> icon;  // number of a stock icon, -1 for none
  WriteProperty<bool> hot;  // drawn flat until the mouse is over it
  // The command that a click sends to the form after onClick, as a menu item does. It goes to the
  // action with this id in the form's menuBar or menu. Actions have ids above 2; 0 for none.
  int cmd = 0;
};

// A box that is checked or not.
class CheckBox : public AnyButton {
 public:
  class Impl;
  CheckBox();
  WriteProperty<bool> checked;
};

}  // namespace mavro
