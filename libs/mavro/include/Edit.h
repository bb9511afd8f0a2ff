#pragma once

#include <string_view>

#include "Core.h"

namespace mavro {

// A line of text to type in.
class Edit : public Control {
 public:
  class Impl;
  enum DataType { cNormal, cInteger, cFloat, cUpperCase, cPassword };

  Edit();
  // Selects the whole text.
  void SelectAll();
  // Checks the text as Enter and leaving the control do: fires onValidate. Answers whether the text
  // is valid; false also when a handler has destroyed the control.
  bool Valid();

  WriteProperty<int> dataType;
  WriteProperty<bool> readOnly;
  NotifyEvent onChange;  // the user has changed the text
  // The text, and as value 1 if it suits `dataType`, else 0; handlers may change the value.
  ItemEvent onValidate;

 protected:
  explicit Edit(SysImpl* newImpl);
};

// Many lines of text. Bytes go in and come out unchanged; lines end with CR LF, LF or a lone CR. A
// line that is typed ends as the text's first one does, in an empty text with CR LF. A line too
// long to show stands in parts below each other with a bar beside them; it stays one line of the
// text.
class Memo : public Edit {
 public:
  class Impl;
  Memo();

  // Adds text at the end and keeps the end in view if it was; caret and selection stay. The cost
  // does not grow with what is there.
  void Append(std::string_view added);
  void Clear();
  // Puts the caret at the start of a line, counted from 1, and brings it into view.
  void GoToLine(int line);
  int CaretLine() const;
  int CaretColumn() const;
  int LineCount() const;
  // Marks a line's ground until the next call; 0 takes the mark away.
  void MarkLine(int line);

  NotifyEvent onCaretMoved;

  // Limits how many of the last lines are kept; 0 keeps all. For panels that tools print into.
  int maxLines = 0;
  bool monospaced = false;  // set before the window exists
};

}  // namespace mavro
