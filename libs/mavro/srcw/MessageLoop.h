#pragma once

namespace mavro {

class Form;

// Runs the loop of a form: handles messages until the quit message that ends it. `runner` is the
// form that started it.
void RunMessageLoop(Form* runner);
// Ends the innermost running loop after the present handler has returned.
void PostQuit();

// Offers a key of the queue to accelerators, the key preview and dialog navigation before any
// window sees it. True if one of them used it.
bool PreTranslateKey(int virtualKey, int hotkeyFlags);

// Dialog navigation of the active form: Tab and Shift+Tab in child order, the arrow keys among
// the buttons of a container, Enter, Escape.
bool DialogKey(Form& form, int virtualKey, int hotkeyFlags);

// Gives the keyboard back to the modal form, after a form that it blocks was clicked or activated.
void RaiseModalForm();

// Handles the waiting events of the toolkit's queue; true if there were any.
bool DispatchWaiting();
void WaitAndDispatch();
// True if the pipe of an attached child has become readable since the last call. Watches it again
// from now on.
bool TakeWake();
// True if anything but painting, mouse movement and timers was handled since the last call.
bool TakeActivity();

}  // namespace mavro
