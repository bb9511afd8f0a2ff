#pragma once

#include "ButtonGroup.h"
#include "FindBaseDlg.h"

namespace mavro {

// Looks for a text in an editor. It stays open, so that one hit after the other can be looked at.
class FindTextDlg : public EditorFindDlg {
  typedef FindTextDlg This;

 public:
  explicit FindTextDlg(SciEditor& itsEditor);

 protected:
  void Store() override;

 private:
  // clang-format off
	//!decl
	Label findLabel;
	ComboBox findWhat;
	CheckBox matchCase, wholeWord, regExp, wrap;
	RadioGroup direction;
	Button find, close;
	Label note;
	//!end
  // clang-format on

  void Initialize();
  void OnFind(NotifyArgs& args);
};

// Shows the dialog; a selection within a line is the text to look for. Does nothing if the editor
// has no window yet.
void AskAndFind(SciEditor& editor);

}  // namespace mavro
