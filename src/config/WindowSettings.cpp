#include "config/WindowSettings.h"

#include <array>

#include "base/ParseInt.h"

namespace zendry {

namespace {

using Words = std::array<const char*, 3>;

constexpr Words cThemes = {"system", "light", "dark"};
constexpr Words cReloads = {"ask", "load", "leave"};
constexpr int cLeastLetters = 6, cMostLetters = 24;

int IndexOf(const Words& words, const std::string& word) {
  for (size_t i = 0; i < words.size(); ++i)
    if (word == words[i]) return static_cast<int>(i);
  return 0;
}

const char* WordOf(const Words& words, int index) {
  const auto at = static_cast<size_t>(index);
  return words[at < words.size() ? at : 0];
}

}  // namespace

WindowSettings theWindowSettings;

WindowSettings ReadWindowSettings(const std::function<std::string(const std::string& key)>& value) {
  WindowSettings settings;
  settings.theme = IndexOf(cThemes, value("theme"));
  settings.letters = ParseInt(value("ui-font"));
  if (settings.letters < cLeastLetters || settings.letters > cMostLetters) settings.letters = 0;
  settings.rescue = value("rescue") != "0";
  settings.reload = IndexOf(cReloads, value("reload"));
  return settings;
}

std::map<std::string, std::string> WindowSettingValues(const WindowSettings& settings) {
  return {{"theme", WordOf(cThemes, settings.theme)},
          {"ui-font", std::to_string(settings.letters)},
          {"rescue", settings.rescue ? "1" : "0"},
          {"reload", WordOf(cReloads, settings.reload)}};
}

}  // namespace zendry
