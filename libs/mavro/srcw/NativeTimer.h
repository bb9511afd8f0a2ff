#pragma once

#include "NativeWindow.h"

namespace mavro {

// Sends WM_TIMER with `id` to the window every `milliseconds`, until it is stopped or the window is
// gone. Starting a running id restarts it.
void StartNativeTimer(NativeWindow& window, int id, int milliseconds);
void StopNativeTimer(NativeWindow& window, int id);

}  // namespace mavro
