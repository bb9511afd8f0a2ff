#pragma once

#include <string>

#include "SystemDialogs.h"

namespace zendry {

// Shows in a message box what could not be done.
inline void ShowError(const std::string& text) {
  mavro::Dialogs().message(text, "Error", mavro::cErrorIcon);
}

}  // namespace zendry
