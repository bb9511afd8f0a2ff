#pragma once

#include <functional>
#include <map>
#include <string>

namespace zendry {

// The user's choices for the window's look and for the care of open files, from "zendry.ini".
struct WindowSettings {
  enum ThemeChoice { cDesktop, cLight, cDark };              // key "theme": system, light, dark
  enum ReloadChoice { cAsk, cLoadIfNothingIsLost, cLeave };  // key "reload": ask, load, leave

  int theme = cDesktop;
  int letters = 0;     // "ui-font": points of the letters of menus and lists; 0: the desktop's
  bool rescue = true;  // "rescue": unsaved work has copies
  int reload = cAsk;   // when another program has changed an open file

  bool operator==(const WindowSettings&) const = default;
};

extern WindowSettings theWindowSettings;

// Reads the settings; what has no meaning counts as not set. `value` gives the value of a key, or
// an empty text.
WindowSettings ReadWindowSettings(const std::function<std::string(const std::string& key)>& value);
// The keys with their values.
std::map<std::string, std::string> WindowSettingValues(const WindowSettings& settings);

}  // namespace zendry
