#include "MessageLoop.h"

#include <utility>

#include "Application.h"
#include "Failures.h"
#include "FormImpl.h"
#include "Keys.h"

namespace mavro {

namespace {

int pendingQuits = 0;
int runningLoops = 0;
int drains = 0;  // running calls of ProcessMessages

// The hook is called again and again; its exceptions are reported once.
bool IdleStep() {
  static bool told = false;
  try {
    if (TheIdleSlot().hook) TheIdleSlot().hook();
  } catch (...) {
    if (!std::exchange(told, true)) ReportCurrentException(nullptr, 0);
  }
  TakeWake();
  return false;
}

void FirstShowStep() {
  try {
    if (activeForm) static_cast<Form::Impl*>(activeForm->impl)->FirstShow();
  } catch (...) {
    ReportCurrentException(nullptr, 0);
  }
}

bool TakeQuit() {
  if (pendingQuits == 0) return false;
  --pendingQuits;
  return true;
}

bool RunAccelerator(Form& form, int virtualKey, int hotkeyFlags) {
  const auto* table = static_cast<Form::Impl*>(form.impl)->accelerators;
  if (!table) return false;
  for (const Accelerator& row : *table)
    if (row.key == virtualKey && row.flags == hotkeyFlags &&
        (!form.menuBar || form.menuBar->IsEnabled(row.command))) {
      SendMessage(form.impl->hwnd, WM_COMMAND, row.command, 0);
      return true;
    }
  return false;
}

// The plus of many keyboards is the Shift of another sign.
bool TranslateAccelerator(Form& form, int virtualKey, int hotkeyFlags) {
  if (RunAccelerator(form, virtualKey, hotkeyFlags)) return true;
  const bool isShiftedPlus = virtualKey == Key::cPlus && (hotkeyFlags & cShiftKey);
  return isShiftedPlus && RunAccelerator(form, virtualKey, hotkeyFlags & ~cShiftKey);
}

}  // namespace

void PostQuit() {
  if (runningLoops > pendingQuits) ++pendingQuits;
}

// Handles messages, runs the idle step, waits. The idle step runs once after real activity, not
// after mere painting, mouse moves or timers, which may never stop. A child that has printed always
// gets an idle step.
void RunMessageLoop(Form* runner) {
  const NativeWindow* window = runner->impl->hwnd;
  const bool modal = runner->modal;
  bool idle = true;
  // A form that is opened while messages are being drained is a dialog like any other.
  const int outerDrains = std::exchange(drains, 0);
  ++runningLoops;
  while (!TakeQuit() && (modal ? IsWindow(window) : formCount > 0)) {
    if (TakeWake()) IdleStep();
    const bool any = DispatchWaiting();
    const bool active = TakeActivity();
    idle |= active;
    if (active) continue;
    if (idle) {
      idle = IdleStep();
      FirstShowStep();
    } else if (!any) {
      WaitAndDispatch();
      idle |= TakeActivity();
    }
  }
  --runningLoops;
  drains = outerDrains;
}

namespace {

bool OfferKey(int virtualKey, int hotkeyFlags) {
  if (!activeForm || !activeForm->impl->hwnd) return false;
  Form& form = *activeForm;
  if (drains > 0) {
    if (!form.owner) return TranslateAccelerator(form, virtualKey, hotkeyFlags);
    return DialogKey(form, virtualKey, hotkeyFlags);
  }
  if (TranslateAccelerator(form, virtualKey, hotkeyFlags)) return true;
  NotifyArgs args{&form, virtualKey};
  if (!form.onKeyPreview.Fire(args)) return true;
  if (args.value == 0) return false;
  return DialogKey(form, virtualKey, hotkeyFlags);
}

}  // namespace

bool PreTranslateKey(int virtualKey, int hotkeyFlags) {
  try {
    return OfferKey(virtualKey, hotkeyFlags);
  } catch (...) {
    ReportCurrentException(nullptr, WM_KEYDOWN);
  }
  return true;
}

void Application::ProcessMessages() {
  // A stream of messages must not delay a long operation for ever.
  constexpr int cMaxPasses = 100;
  ++drains;
  for (int pass = 0; pass < cMaxPasses && pendingQuits == 0; ++pass) {
    DispatchWaiting();
    if (!TakeActivity()) break;
  }
  --drains;
  if (TheIdleSlot().hook) TheIdleSlot().hook();
}

}  // namespace mavro
