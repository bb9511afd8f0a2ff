#pragma once

#include "Button.h"
#include "Edit.h"
#include "Form.h"
#include "Label.h"

namespace mavro {

class SciEditor;

// Asks for the number of a line. Shown modally by AskGoToLine.
class GoToLineDlg : public Form {
  typedef GoToLineDlg This;

 public:
  // `shownLine` counts from 1; the field shows it, selected.
  explicit GoToLineDlg(int shownLine);

  // The number that the field begins with; 0 if there is none or it is negative.
  int Line() const { return line; }

 private:
  // clang-format off
	//!decl
	Label label;
	Edit number;
	Button goTo, cancel;
	//!end
  // clang-format on

  void Initialize();
  void OnCreated(NotifyArgs& args);
  void OnDestroyed(NotifyArgs& args);

  int line = 0;
};

// Asks for a line of the editor and shows it, unfolded, with the caret at its start. A number past
// the end means the last line; a number below 1, or none, changes nothing. Does nothing if the
// editor has no window yet.
void AskGoToLine(SciEditor& editor);

}  // namespace mavro
