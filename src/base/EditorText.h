#pragma once

#include <string>

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

  bool parsed = false;  // the tags reflect the text; the code that changes the text clears it
};

}  // namespace zendry
