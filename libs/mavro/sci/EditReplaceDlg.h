#pragma once

#include "ButtonGroup.h"
#include "FindBaseDlg.h"

namespace mavro {

// Replaces hits in an editor, one after the other or all at once.
class EditReplaceDlg : public EditorFindDlg {
  typedef EditReplaceDlg This;

 public:
  explicit EditReplaceDlg(SciEditor& itsEditor);

 protected:
  void Store() override;

 private:
  // clang-format off
	//!decl
	Label findLabel;
	ComboBox findWhat;
	Label withLabel;
	Edit with;
	CheckBox matchCase, wholeWord, regExp, wrap;
	RadioGroup where;
	Button replace, replaceAll, close;
	Label note;
	//!end
  // clang-format on

  void Initialize();
  void OnReplace(NotifyArgs& args);
  void OnReplaceAll(NotifyArgs& args);
};

// Shows the dialog. Does nothing if the editor has no window yet.
void AskAndReplace(SciEditor& editor);

}  // namespace mavro
