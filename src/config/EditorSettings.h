#pragma once

#include <array>

#include "config/IdeConfig.h"

namespace zendry {

// The settings of each new editor. Filled by the configuration (fonts) and the session (the rest).
struct EditorSettings {
  int useTabs = 1;
  int tabSize = 4;
  int indentSize = 4;
  int useMonoFont = 0;
  int lineAboveOpenFolds = 0;  // 0: a line below each closed fold instead
  int lineNumbers = 0;
  int wrapLines = 0;
  int showWhiteSpace = 0;
  int showLineEnds = 0;
  // Changes that a save makes: no blanks at the ends of lines, and an end of the last line.
  int stripBlanks = 0;
  int endLastLine = 0;
  int closePairs = 1;  // brackets and quotes get their partners as they are typed
  // The fonts that controls use, indexed by FontUse; each can be shown.
  std::array<FontRec, 3> fonts = IdeFonts().fonts;
};

extern EditorSettings theEditorSettings;

}  // namespace zendry
