#include "FormImpl.h"

#include <algorithm>

#include "Application.h"

#include "DataLink.h"
#include "MessageLoop.h"
#include "NativeForm.h"

namespace mavro {

Form* activeForm = nullptr;
int formCount = 0;

namespace {

constexpr int cIdOk = 1;
constexpr int cFirstCommandId = 3;
constexpr uint32_t cFixedDialogStyle = 0x80C800C0;
constexpr uint32_t cTitledStyle = 0x12CF0000;
constexpr uint32_t cUntitledStyle = 0x92CB0000;

// Every form that has a window, in the order of creation; modal disabling visits them.
std::vector<NativeWindow*>& FormWindows() {
  static std::vector<NativeWindow*> windows;
  return windows;
}

// The windows of the modal forms that are running, the innermost last.
std::vector<NativeWindow*>& ModalWindows() {
  static std::vector<NativeWindow*> windows;
  return windows;
}

bool CanBePressed(const Control& control) {
  const NativeWindow* window = control.impl->hwnd;
  return window && window->IsShown() && window->IsEnabled();
}

// Finds, depth first, the controls whose buttons close a form with `result`.
void FindModalResults(Control* control, int result, std::vector<Control*>& found) {
  for (Control* child : control->children) {
    if (child->impl->modalResult == result) found.push_back(child);
    FindModalResults(child, result, found);
  }
}

bool TakesInput(const Form& form) {
  return form.impl->hwnd && form.state == cShown && form.impl->hwnd->IsEnabled();
}

// Destroys the windows of the forms that a form owns, and of those that they own.
void DestroyOwned(Form& form) {
  const std::vector<Form*> owned = std::move(form.ownedForms);
  form.ownedForms.clear();
  for (Form* ownedForm : owned) {
    DestroyOwned(*ownedForm);
    ownedForm->impl->Destroy();
    ownedForm->owner = nullptr;
  }
}

}  // namespace

Form::Impl::Impl() : Container::Impl(cForm) {}

Form& Form::Impl::TheForm() const {
  return *static_cast<Form*>(owner);
}

void Form::Impl::Create() {
  Form& form = TheForm();
  const bool fixed = form.modal && !form.resizable;
  style = fixed ? cFixedDialogStyle : form.noTitle ? cUntitledStyle : cTitledStyle;
  if (form.windowType == Form::cToolWindow) exStyle |= 0x80;
  CreateNative(fixed ? "#32770" : "mavForm", 0);
  auto* window = static_cast<NativeForm*>(hwnd);
  NativeWindow* above = form.modal ? SettleOwner() : form.owner ? form.owner->impl->hwnd : nullptr;
  window->SetFrame(fixed, form.noTitle ? Form::cNoTitleBar : form.windowType, above);
  window->SetIcon(form.icon);
  if (form.acceptFiles) window->AcceptFiles();
  if (form.modal && form.center) window->CenterOver(above);
  FormWindows().push_back(hwnd);
  firstShowDone = false;
  ++formCount;
  if (form.menuBar) form.menuBar->Attach(&form);
}

void Form::Impl::AfterCreate() {
  Rect& bounds = OwnerBounds();
  const Rect real = hwnd->Bounds();
  bounds.width = real.width;
  bounds.height = real.height;
  Container::Impl::AfterCreate();
}

void Form::Impl::Destroy() {
  if (!hwnd) return;
  Form& form = TheForm();
  if (form.menuBar) form.menuBar->Attach(nullptr);
  if (form.result == Form::cOk) SaveDataLinks(&form);
  if (activeForm == &form) activeForm = nullptr;
  --formCount;
  if (form.modal) {
    std::erase(ModalWindows(), hwnd);
    EnableOthers();
    PostQuit();
  } else if (formCount == 0) {
    PostQuit();
  }
  auto& windows = FormWindows();
  windows.erase(std::remove(windows.begin(), windows.end(), hwnd), windows.end());
  hwnd->Show(false);
  SysImpl::Destroy();
}

void Form::Impl::OnCommand(int code, Param) {
  OnMenuCommand(0, code);
}

int Form::Impl::OnMenuCommand(int source, int id) {
  Form& form = TheForm();
  if (source == 1) {
    form.result = id;
    return 1;
  }
  if (source == 2) {
    hwnd->Focus();
    NotifyArgs args{&form, 1};
    if (!form.onClose.Fire(args)) return 1;
    CloseForGood();
    return 1;
  }
  ActionMenu* commands = form.menuBar ? form.menuBar : form.menu;
  return commands ? commands->Dispatch(id) : 0;
}

Param Form::Impl::WndProc(unsigned message, Param wParam, Param lParam) {
  Form& form = TheForm();
  switch (message) {
    case WM_SIZE:
      return OnSize(wParam);
    case WM_ACTIVATE: {
      const bool comes = wParam == 1 || wParam == 2;
      if (comes && hwnd->IsEnabled()) activeForm = &form;
      if (comes && !hwnd->IsEnabled()) RaiseModalForm();
      NotifyArgs args{&form, static_cast<int>(wParam)};
      if (!form.onActivate.Fire(args)) return 0;
      return DefaultProc(hwnd, message, wParam, lParam);
    }
    case WM_CLOSE:
      RequestClose();
      return 0;
    case WM_DROPFILES: {
      const auto* over = reinterpret_cast<NativeWindow*>(lParam);
      FilesArgs args{&form, IsWindow(over) ? over->creationData : nullptr,
                     std::move(*reinterpret_cast<std::vector<std::string>*>(wParam))};
      form.onDropFiles.Fire(args);
      return 0;
    }
    case WM_COMMAND:
      if (lParam == 0 && wParam < cFirstCommandId && wParam > 0) {
        OnDialogCommand(static_cast<int>(wParam));
        return 0;
      }
      return Container::Impl::WndProc(message, wParam, lParam);
    default:
      return Container::Impl::WndProc(message, wParam, lParam);
  }
}

// A maximised window reports its size but no change of state.
Param Form::Impl::OnSize(Param kind) {
  Form& form = TheForm();
  if (kind != cSizeMaximized && !FireNotify(form.onChangeState, static_cast<int>(kind))) return 0;
  if (kind == cSizeMinimized) return DefaultProc(hwnd, WM_SIZE, kind, 0);
  const Rect real = hwnd->Bounds();
  OwnerBounds().width = real.width;
  OwnerBounds().height = real.height;
  form.layoutPending = true;
  if (form.state != cNoWindow) RunPendingLayout(&form);
  return SysImpl::WndProc(WM_SIZE, kind, 0);
}

// Handles Enter and Escape. If the button of the key can't be pressed, the key does nothing:
// closing the form another way must not store what the button would have stored. A focused direct
// child that returns zero has used Enter itself.
void Form::Impl::OnDialogCommand(int id) {
  Form& form = TheForm();
  if (id == cIdOk)
    for (Control* child : form.children)
      if (child->IsFocused()) {
        NotifyHeader header{child->impl->hwnd, child->impl->hwnd->id, cIdOk};
        if (child->impl->OnNotify(&header) == 0) return;
        break;
      }
  std::vector<Control*> buttons;
  FindModalResults(&form, id, buttons);
  const auto button = std::find_if(buttons.begin(), buttons.end(),
                                   [](const Control* control) { return CanBePressed(*control); });
  if (button == buttons.end() && !buttons.empty()) return;
  form.result = id;
  if (form.autoDialogKeys && button != buttons.end()) (*button)->impl->OnCommand(0, 0);
}

void Form::Impl::RequestClose() {
  Form& form = TheForm();
  hwnd->Focus();
  NotifyArgs args{&form, 1};
  if (!form.onClose.Fire(args) || !hwnd || args.value == 0) return;
  CloseForGood();
}

void Form::Impl::CloseForGood() {
  Form& form = TheForm();
  if (!hwnd || form.state == cClosing) return;
  SetStateTree(&form, cClosing);
  DestroyOwned(form);
  Destroy();
  NotifyArgs args{&form, 0};
  if (!form.onDestroy.Fire(args)) return;
  SetStateTree(&form, cNoWindow);
}

void Form::Impl::DisableOthers() {
  for (NativeWindow* window : FormWindows())
    if (window != hwnd && window->IsEnabled()) {
      window->Enable(false);
      disabledWindows.push_back(window);
    }
}

NativeWindow* Form::Impl::SettleOwner() {
  Form& form = TheForm();
  Form* above = form.owner;
  if (!above || !TakesInput(*above)) above = activeForm;
  for (size_t i = FormWindows().size(); i > 0 && !(above && TakesInput(*above)); --i)
    above = static_cast<Form*>(FormWindows()[i - 1]->creationData);
  if (!above || !TakesInput(*above)) above = form.owner;
  if (!above || !above->impl->hwnd) return nullptr;
  if (!form.owner || !form.owner->impl->hwnd) {
    if (form.owner) std::erase(form.owner->ownedForms, &form);
    form.owner = above;
    above->ownedForms.push_back(&form);
  }
  return above->impl->hwnd;
}

NativeWindow* TopModalWindow() {
  return ModalWindows().empty() ? nullptr : ModalWindows().back();
}

void Form::Impl::EnableOthers() {
  for (NativeWindow* window : disabledWindows)
    if (IsWindow(window)) window->Enable(true);
  disabledWindows.clear();
}

namespace {

Control* FirstFocusable(Control* control) {
  if (!control->impl->childrenTakeKeys) return nullptr;
  for (Control* child : control->children) {
    if (child->impl->hwnd && child->impl->hwnd->TakesFocus()) return child;
    if (Control* found = FirstFocusable(child)) return found;
  }
  return nullptr;
}

}  // namespace

void Form::Impl::FirstShow() {
  if (firstShowDone) return;
  firstShowDone = true;
  Form& form = TheForm();
  if (!FireNotify(form.onShow) || !hwnd) return;
  Control* focused = form.focusControl;
  if (focused == &form)
    if (Control* first = FirstFocusable(&form)) focused = first;
  if (focused->impl->hwnd) focused->impl->hwnd->Focus(FocusBy::cFirst);
}

Form* Control::GetForm() {
  Control* top = this;
  while (top->parent) top = top->parent;
  return dynamic_cast<Form*>(top);
}

Form::Form(Form* newOwner)
    : Container(new Impl), focusControl(this), autoDialogKeys(formCount > 0) {
  owner = newOwner ? newOwner : theApplication.mainForm;
  if (owner) {
    auto& siblings = owner->ownedForms;
    if (std::find(siblings.begin(), siblings.end(), this) == siblings.end())
      siblings.push_back(this);
  }
  backColor = Color(Color::cControl);
}

Form::~Form() {
  if (impl->hwnd) impl->Destroy();
  if (owner) std::erase(owner->ownedForms, this);
  for (Form* owned : ownedForms) owned->owner = nullptr;
  if (theApplication.mainForm == this) theApplication.mainForm = nullptr;
}

int Form::Run(bool isModal) {
  auto* form = static_cast<Impl*>(impl);
  if (state == cShown) {
    form->hwnd->Raise();
    return result;
  }
  modal = isModal;
  if (!modal && !theApplication.mainForm) theApplication.mainForm = this;
  if (state == cNoWindow) {
    result = cNone;
    CreateControl();
  }
  SetStateTree(this, cAboutToShow);
  if (beginsMaximized) Maximize(true);
  form->Show(true);
  if (modal && impl->hwnd) {
    autoDialogKeys.SetDefault(true);
    ModalWindows().push_back(impl->hwnd);
    form->DisableOthers();
  }
  if (modal || formCount == 1) RunMessageLoop(this);
  return result;
}

void Form::StayOpen() {
  result = cNone;
  static_cast<Impl*>(impl)->staysOpen = true;
}

bool Form::IsOnScreen() const {
  return impl->hwnd && static_cast<const NativeForm*>(impl->hwnd)->IsOnScreen();
}

void Form::Maximize(bool on) {
  beginsMaximized = on;
  if (impl->hwnd) static_cast<NativeForm*>(impl->hwnd)->Maximize(on);
}

bool Form::IsMaximized() const {
  return impl->hwnd ? static_cast<const NativeForm*>(impl->hwnd)->IsMaximized() : beginsMaximized;
}

Rect Form::NormalBounds() const {
  return impl->hwnd ? static_cast<const NativeForm*>(impl->hwnd)->NormalBounds() : Bounds();
}

void Form::Close() {
  if (impl->hwnd) SendMessage(impl->hwnd, WM_CLOSE, 0, 0);
}

}  // namespace mavro
