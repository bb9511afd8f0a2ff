#pragma once

#include <cstdint>
#include <string>

#include "base/PassedBodies.h"

namespace zendry {

// The live text of an open editor, as the tag parser reads it: unsaved text wins over the file.
class EditorText {
 public:
  virtual ~EditorText() = default;

  // Full path of the file that the editor shows.
  virtual std::string Path() const = 0;
  // Bytes of the text.
  virtual int Length() const = 0;
  // Copies the bytes from `start` up to `end` and nothing after them. `end` is not past the text.
  virtual void CopyRange(int start, int end, char* to) const = 0;

  // The tags reflect the text. The code that changes the text tells `bodies` before and clears this
  // after the change if they don't hold.
  bool parsed = false;
  PassedBodies bodies;
  uint64_t parsedAs = 0;  // the generation of the tags that the last parse made
};

}  // namespace zendry
