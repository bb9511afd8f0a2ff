#include "Button.h"

#include "Assert.h"
#include "ButtonImpl.h"
#include "FormImpl.h"
#include "Menu.h"

namespace mavro {

namespace {

constexpr int cFirstCommand = 3;  // lower ones are the answers of dialogs
constexpr int cStockStrip = 1;    // the framework's own icons; number 0 means none

struct KindRow {
  const char* caption;
  int modalResult;
};

// The rows in the order of Button::Kind.
constexpr KindRow cKinds[] = {
    {"", 0},       {"OK", Form::cOk}, {"Cancel", Form::cCancel},
    {"&No", 0},    {"&Open", 0},      {"&Save", 0},
    {"&Print", 0}, {"&Run", 0},       {"&Go", 0},
    {"&Edit", 0},  {"Se&tup", 0},     {"&Close", 0},
};

// Sends a command to a form as its menu does; a disabled command does nothing. False if the command
// has destroyed the form.
bool SendCommand(Form* form, int id) {
  if (!form || id < cFirstCommand) return true;
  if (form->menuBar && !form->menuBar->IsEnabled(id)) return true;
  NativeWindow* window = form->impl->hwnd;
  if (window) SendMessage(window, WM_COMMAND, id, 0);
  return IsWindow(window);
}

// Closes a form with a result, as long as it exists: a handler that the first call fires may
// destroy it.
void CloseWith(Form& form, int result) {
  if (!form.impl->hwnd) return;
  form.impl->OnMenuCommand(1, result);
  form.impl->OnMenuCommand(2, 0);
}

Form::Impl& ImplOf(Form& form) {
  return *static_cast<Form::Impl*>(form.impl);
}

}  // namespace

void AnyButton::Impl::Create() {
  CreateNative("Button", cWantsKeys);
}

void AnyButton::Impl::Destroy() {
  destroying = true;
  SysImpl::Destroy();
  destroying = false;
}

void AnyButton::Impl::OnCommand(int code, Param handle) {
  if (handle == 0 && code != 0)
    SysImpl::OnCommand(code, handle);
  else if ((code >> 16) == BN_CLICKED && !destroying)
    OnClick();
}

Param AnyButton::Impl::OnNotify(NotifyHeader*) {
  return 1;
}

void AnyButton::Impl::OnClick() {
  NotifyArgs args{owner, 0};
  static_cast<AnyButton*>(owner)->onClick.Fire(args);
}

void Button::Impl::Create() {
  AnyButton::Impl::Create();
  Window()->SetDefault(kind == cOk);
  Window()->SetHot(hot);
  ShowPicture();
}

void Button::Impl::KindChanged() {
  MAVRO_ASSERT(kind >= cNone && kind <= cClose);
  const KindRow& row = cKinds[kind];
  const std::string now = GetText();
  if (now.empty() || now == givenCaption) SetText(row.caption);
  givenCaption = row.caption;
  modalResult = row.modalResult;
  if (hwnd) Window()->SetDefault(kind == cOk);
}

void Button::Impl::IconChanged() {
  ShowPicture();
}

void Button::Impl::HotChanged() {
  if (hwnd) Window()->SetHot(hot);
}

void Button::Impl::SetImage(int newStrip, int newIndex) {
  imageStrip = newStrip;
  imageIndex = newIndex;
  ShowPicture();
}

void Button::Impl::ShowPicture() {
  if (!hwnd) return;
  if (imageIndex >= 0)
    Window()->SetPicture(imageStrip, imageIndex, true);
  else
    Window()->SetPicture(cStockStrip, icon > 0 ? icon : -1, false);
}

// False if something that the user has typed is refused, or if the button is gone.
bool Button::Impl::FinishTypingInForm() {
  Form* form = owner->GetForm();
  Control* focused = form ? FocusedIn(*form) : nullptr;
  if (!focused || focused == owner) return true;
  const NativeWindow* window = hwnd;
  if (focused->impl->FinishTyping()) return IsWindow(window);
  if (IsWindow(window)) form->StayOpen();
  return false;
}

void Button::Impl::OnClick() {
  const int result = modalResult;
  const int command = static_cast<Button*>(owner)->cmd;
  if (Form* form = owner->GetForm()) ImplOf(*form).staysOpen = false;
  if (result == Form::cOk && !FinishTypingInForm()) return;
  NotifyArgs args{owner, 0};
  if (!static_cast<AnyButton*>(owner)->onClick.Fire(args)) return;
  Form* form = owner->GetForm();
  if (!SendCommand(form, command) || result == 0) return;
  if (form && !ImplOf(*form).staysOpen) CloseWith(*form, result);
}

void CheckBox::Impl::PrepareStyle() {
  style |= BS_AUTOCHECKBOX;
}

void CheckBox::Impl::Create() {
  AnyButton::Impl::Create();
  Window()->SetChecked(checked);
}

void CheckBox::Impl::CheckedChanged() {
  if (hwnd) Window()->SetChecked(checked);
}

void CheckBox::Impl::OnClick() {
  if (hwnd) checked = Window()->IsChecked();
  AnyButton::Impl::OnClick();
}

Button::Button()
    : AnyButton(new Impl),
      kind(impl, static_cast<PropertySetter>(&Impl::KindChanged), &static_cast<Impl*>(impl)->kind),
      icon(impl, static_cast<PropertySetter>(&Impl::IconChanged), &static_cast<Impl*>(impl)->icon),
      hot(impl, static_cast<PropertySetter>(&Impl::HotChanged), &static_cast<Impl*>(impl)->hot) {
  SetSize(84, 34);
}

void Button::SetImage(int stripId, int index) {
  static_cast<Impl*>(impl)->SetImage(stripId, index);
}

CheckBox::CheckBox()
    : AnyButton(new Impl),
      checked(impl, static_cast<PropertySetter>(&Impl::CheckedChanged),
              &static_cast<Impl*>(impl)->checked) {
  SetSize(120, 22);
}

}  // namespace mavro
