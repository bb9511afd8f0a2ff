#include "base/KeyName.h"

#include <algorithm>

#include "Action.h"

namespace zendry {

// The key is what comes after the tab in the text of a menu.
std::string KeyName(const mavro::Action* action) {
  const std::string text = action ? mavro::HotKeyText(action->hotkey) : "";
  return text.substr(std::min(text.size(), text.find('\t') + 1));
}

}  // namespace zendry
