#pragma once

#include "NativeWindow.h"

namespace mavro {

// Makes the window of a multi-line edit.
NativeWindow* MakeMemo(const CreateInfo& info);

}  // namespace mavro
