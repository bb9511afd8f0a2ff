#pragma once

#include <vector>

#include "Form.h"
#include "Menu.h"
#include "SysImpl.h"

namespace mavro {

class NativeForm;

// The platform half of a form: activation, closing, dialog commands and modal disabling.
class Form::Impl : public Container::Impl {
 public:
  Impl();

  void Create() override;
  void AfterCreate() override;
  void Destroy() override;
  void OnCommand(int code, Param handle) override;
  int OnMenuCommand(int source, int id) override;
  Param WndProc(unsigned message, Param wParam, Param lParam) override;

  // Handles a close request: asks onClose and closes unless it refuses.
  void RequestClose();
  // DisableOthers disables the program's other enabled windows; EnableOthers enables those that
  // still exist.
  void DisableOthers();
  void EnableOthers();
  // The form below a modal one: its owner if that is on the screen and takes input, else another
  // form that does; null if there is none. Replaces `owner` if there is none with a window.
  NativeWindow* SettleOwner();
  // Runs once, when the form is first shown and active: fires onShow, then sets the focus.
  void FirstShow();

  bool firstShowDone = false;
  const std::vector<Accelerator>* accelerators = nullptr;  // the form's table; null for none
  bool staysOpen = false;  // the click that is being handled must not close the form

 private:
  Form& TheForm() const;
  Param OnSize(Param kind);
  void OnDialogCommand(int id);
  void CloseForGood();

  std::vector<NativeWindow*> disabledWindows;
};

// The window of the modal form that was run last and is still there, or null.
NativeWindow* TopModalWindow();

}  // namespace mavro
