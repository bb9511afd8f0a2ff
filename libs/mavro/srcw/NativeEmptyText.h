#pragma once

#include <string>

#include "NativeWindow.h"

namespace mavro {

// Paints words in a list, tree or memo as long as it shows no text. Called once for a window; what
// paints them ends with it.
void ShowEmptyText(NativeWindow& window, const std::string& words);

}  // namespace mavro
