#pragma once

#include <array>

#include "config/IdeConfig.h"

namespace zendry {

// What each new editor takes over. Filled by the configuration (fonts) and the session (the rest).
struct EditorSettings {
  int useTabs = 1;
  int tabSize = 4;
  int indentSize = 4;
  int useMonoFont = 0;
  int lineAboveOpenFolds = 0;  // otherwise one is below each closed fold
  int lineNumbers = 0;
  // What controls read, by FontUse; each can be shown.
  std::array<FontRec, 3> fonts = IdeFonts().fonts;
};

extern EditorSettings theEditorSettings;

}  // namespace zendry
