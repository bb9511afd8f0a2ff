#pragma once

#include <string_view>

#include "NativeWindow.h"

namespace mavro {

// Codes in the high word of an edit's WM_COMMAND.
enum EditCode {
  EN_CHANGE = 0x300,     // the user has changed the text
  EN_CARETMOVED = 0x700  // the caret of a memo has moved
};

// A line of text to type in.
class NativeEdit : public NativeWindow {
 public:
  using NativeWindow::NativeWindow;
  virtual void SetReadOnly(bool on) = 0;
  // Sets an Edit::DataType: which text may be typed and how it is shown.
  virtual void SetDataType(int dataType) = 0;
  virtual void SelectAll() = 0;
};

// Many lines of text. Lines and columns count from 1.
class NativeMemo : public NativeEdit {
 public:
  using NativeEdit::NativeEdit;
  // Adds bytes at the end. They may show a moment later, together with the next ones.
  virtual void Append(std::string_view bytes) = 0;
  virtual void GoToLine(int line) = 0;
  virtual int CaretLine() const = 0;
  virtual int CaretColumn() const = 0;
  virtual int LineCount() const = 0;
  virtual void MarkLine(int line) = 0;
  // Sets how many of the last lines Append keeps; 0 for all.
  virtual void SetMaxLines(int count) = 0;
  virtual void SetMonospaced() = 0;
};

}  // namespace mavro
