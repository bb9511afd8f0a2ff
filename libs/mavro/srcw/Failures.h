#pragma once

#include <functional>

#include "NativeWindow.h"

namespace mavro {

// Reports an exception of a handler in one message box. `window` and `message` say where it came
// from; `window` is null if no window was involved.
//
// A failure that follows an action of the user is reported each time. A failure in painting,
// sizing, focus changes or the like is reported once per window and message: it would come back as
// soon as the box closes. While a box is open, further failures only go to standard error.
void ReportFailure(NativeWindow* window, unsigned message, const char* what);
// The same for the exception being handled; for use in a catch (...).
void ReportCurrentException(NativeWindow* window, unsigned message);

// False for painting that has failed before.
bool MayDispatch(const NativeWindow& window, unsigned message);

// Runs `job` from the message loop after the present handler has returned.
void RunLater(std::function<void()> job);

}  // namespace mavro
