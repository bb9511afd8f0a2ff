#pragma once

#include "base/EditorText.h"

namespace zendry {

// The live text of an editor with its caret and lines, as lookups read it. Positions count bytes
// from 0, lines count from 0.
class CaretText : public EditorText {
 public:
  virtual int CaretPosition() const = 0;
  // The last line for a position after the text.
  virtual int LineFromPosition(int position) const = 0;
  // The position where a line begins; the end of the text for a line after the last one.
  virtual int PositionFromLine(int line) const = 0;
};

}  // namespace zendry
