#pragma once

namespace mavro {

class Form;

// The loop that a form runs: handles messages until the quit message that ends it. `runner` is the
// form that started it.
void RunMessageLoop(Form* runner);
// Ends the innermost running loop once what is being handled has returned.
void PostQuit();

// A key that the queue holds, offered to accelerators, the key preview and dialog navigation before
// any window sees it. Answers whether it was used up.
bool PreTranslateKey(int virtualKey, int hotkeyFlags);

// Dialog navigation of the active form: Tab and Shift+Tab in child order, the arrow keys among
// the buttons of a container, Enter, Escape.
bool DialogKey(Form& form, int virtualKey, int hotkeyFlags);

// A form that a modal one blocks was clicked or activated: the keyboard goes back to the modal one.
void RaiseModalForm();

// The toolkit's queue. Handles what waits and answers whether there was anything.
bool DispatchWaiting();
void WaitAndDispatch();
// Whether the pipe of an attached child has become readable since the last call; it is watched
// again from now on.
bool TakeWake();
// Whether anything but painting, mouse movement and timers was handled since the last call.
bool TakeActivity();

}  // namespace mavro
