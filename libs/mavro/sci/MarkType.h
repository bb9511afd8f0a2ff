#pragma once

#include "EditorLanguage.h"

namespace mavro {

// The sign in the margin beside a marked line.
enum class MarkSign { cNone, cError, cArrow, cDisc, cRing };

// The look of lines with a marker: a ground of this colour under the text, and a sign beside it.
struct MarkType {
  int number = 0;  // up to 7
  ColourPair ground = {};
  MarkSign sign = MarkSign::cNone;
  bool enabled = true;
  bool exclusive = true;  // at most one line of the text has it
  bool hasGround = true;
};

}  // namespace mavro
