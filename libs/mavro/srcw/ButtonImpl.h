#pragma once

#include "Button.h"
#include "NativeButtons.h"
#include "SysImpl.h"

namespace mavro {

// The platform half that buttons of every look share.
class AnyButton::Impl : public SysImpl {
 public:
  void Create() override;
  void Destroy() override;
  // A click of the button's window, or one asked for by code 0 without a window.
  void OnCommand(int code, Param handle) override;
  // Enter is passed on: it presses the OK button of the form.
  Param OnNotify(NotifyHeader* header) override;

 protected:
  virtual void OnClick();

 private:
  bool destroying = false;
};

class Button::Impl : public AnyButton::Impl {
 public:
  void Create() override;

  void KindChanged();
  void IconChanged();
  void HotChanged();
  void SetImage(int newStrip, int newIndex);

  int kind = cNone;
  int icon = -1;
  bool hot = false;

 protected:
  // Fires onClick, then closes the form if the button answers with a result.
  void OnClick() override;

 private:
  bool FinishTypingInForm();
  NativeButton* Window() const { return static_cast<NativeButton*>(hwnd); }
  void ShowPicture();

  std::string givenCaption;  // set by the kind, so that another kind may replace it
  int imageStrip = 0;
  int imageIndex = -1;
};

class CheckBox::Impl : public AnyButton::Impl {
 public:
  void Create() override;
  void PrepareStyle() override;
  void CheckedChanged();

  bool checked = false;

 protected:
  void OnClick() override;

 private:
  NativeCheckBox* Window() const { return static_cast<NativeCheckBox*>(hwnd); }
};

}  // namespace mavro
