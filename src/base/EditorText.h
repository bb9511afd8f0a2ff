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
  // Copies the bytes from `start` up to `end`, which is not past the text, and nothing behind them.
  virtual void CopyRange(int start, int end, char* to) const = 0;

  bool parsed = false;  // the tags reflect the text; whoever changes the text clears it
};

}  // namespace zendry
