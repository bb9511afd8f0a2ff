#pragma once

#include <string_view>

#include "Core.h"

namespace mavro {

// A text field of one line.
class Edit : public Control {
 public:
  class Impl;
  enum DataType { cNormal, cInteger, cFloat, cUpperCase, cPassword };

  Edit();
  // Selects the whole text.
  void SelectAll();
  // Checks the text, as Enter and the loss of the focus do: fires onValidate. True if the text is
  // valid; false also if a handler has destroyed the control.
  bool Valid();

  WriteProperty<int> dataType;
  WriteProperty<bool> readOnly;
  NotifyEvent onChange;  // the user has changed the text
  // Text: the text; value: 1 if the text fits `dataType`, else 0. Handlers may change the value.
  ItemEvent onValidate;

 protected:
  explicit Edit(SysImpl* newImpl);
};

// A text field of many lines. All bytes are kept unchanged; lines end with CR LF, LF or a lone CR.
// A typed line gets the same ending as the first line of the text, or CR LF in an empty text. A
// line that is too long is shown in several rows with a bar beside them; it is still one line of
// the text.
class Memo : public Edit {
 public:
  class Impl;
  Memo();

  // Adds text at the end. If the end was in view, it stays in view; caret and selection don't
  // change. The cost does not depend on the length of the present text.
  void Append(std::string_view added);
  void Clear();
  // Puts the caret at the start of a line (counted from 1) and scrolls it into view.
  void GoToLine(int line);
  int CaretLine() const;
  int CaretColumn() const;
  int LineCount() const;
  // Marks the background of a line until the next call; 0 removes the mark.
  void MarkLine(int line);

  NotifyEvent onCaretMoved;

  // The maximum number of lines; older ones are removed. 0 keeps all. For panels that show the
  // output of tools.
  int maxLines = 0;
  bool monospaced = false;  // set before the window exists
};

}  // namespace mavro
