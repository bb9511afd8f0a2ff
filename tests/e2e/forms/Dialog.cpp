#include "Dialog.h"

enum Keys { cTab = 0x09, cF2 = 0x71, cF8 = 0x77, cF9 = 0x78 };

Dialog::Dialog(const std::string& title, bool withCancel) {
  text = title;
  SetBounds(200, 200, 320, 220);
  onKeyPreview.Add_H(this, &This::PreviewKey);
  onDestroy.Add_H(this, &This::Destroyed);
  edit.SetBounds(8, 8, 300, 28);
  edit.onKeyDown.Add_H(this, &This::EditKey);
  edit.onChange.Add_H(this, &This::EditChanged);
  Add(&edit);
  memo.SetBounds(8, 44, 300, 110);
  memo.onChange.Add_H(this, &This::MemoChanged);
  Add(&memo);
  ok.SetBounds(124, 166, 88, 36);
  ok.kind = Button::cOk;
  ok.onClick.Add_H(this, &This::PressOk);
  Add(&ok);
  if (!withCancel) return;
  cancel.SetBounds(220, 166, 88, 36);
  cancel.kind = Button::cCancel;
  Add(&cancel);
}

void Dialog::PreviewKey(NotifyArgs& args) {
  if (args.value == cTab && keepsTab) args.value = 0;
  if (args.value == cF8) keepsTab = true;
  if (args.value == cF9) Log("result " + std::to_string(result));
  if (args.value != cF2) return;
  Dialog inner("Inner", true);
  Log("inner gave " + std::to_string(inner.Run(true)));
}

void Dialog::EditKey(KeyArgs& args) {
  Log("edit key " + std::to_string(args.key));
}

void Dialog::EditChanged(NotifyArgs&) {
  Log("edit holds " + std::string(edit.text));
}

void Dialog::MemoChanged(NotifyArgs&) {
  Log("memo has lines " + std::to_string(memo.LineCount()));
}

void Dialog::PressOk(NotifyArgs&) {
  Log("ok pressed");
}

void Dialog::Destroyed(NotifyArgs&) {
  Log(std::string(text) + " destroyed");
}
