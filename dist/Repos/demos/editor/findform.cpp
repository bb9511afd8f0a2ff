// SPDX-License-Identifier: MIT-0
#include "findform.h"

FindForm::FindForm(const std::string& last) {
  text = "Find";
  resizable = false;
  SetSize(340, 96);
  label.text = "&Text:";
  label.SetBounds(12, 14, 50, 20);
  what.SetBounds(64, 12, 264, 24);
  what.text = last;
  find.kind = Button::cOk;
  find.text = "Find";
  find.SetBounds(148, 54, 84, 30);
  cancel.kind = Button::cCancel;
  cancel.SetBounds(244, 54, 84, 30);
  Add(&label);
  Add(&what);
  Add(&find);
  Add(&cancel);
  focusControl = &what;
}
