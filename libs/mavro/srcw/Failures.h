#pragma once

#include <functional>

#include "NativeWindow.h"

namespace mavro {

// What a handler has thrown, told in one message box. `window` and `message` say where it came
// from; null where no window was asked.
//
// A failure that answers something the user did is told each time. One of painting, sizing, focus
// or the like is told once per window and message: it would come back as soon as the box closes.
// While a box is open further failures only go to standard error.
void ReportFailure(NativeWindow* window, unsigned message, const char* what);
// The same for the exception being handled; for use in a catch (...).
void ReportCurrentException(NativeWindow* window, unsigned message);

// False for painting that has failed before.
bool MayDispatch(const NativeWindow& window, unsigned message);

// Runs `job` from the message loop once what is being handled has returned.
void RunLater(std::function<void()> job);

}  // namespace mavro
