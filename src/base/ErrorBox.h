#pragma once

#include <string>

#include "SystemDialogs.h"

namespace zendry {

// Tells in a box of its own what could not be done.
inline void ShowError(const std::string& text) {
  mavro::Dialogs().message(text, "Error", mavro::cErrorIcon);
}

}  // namespace zendry
