#pragma once

#include "ButtonGroup.h"
#include "FindBaseDlg.h"

namespace mavro {

// Replaces hits in an editor, one after the other or all at once.
class EditReplaceDlg : public EditorFindDlg {
 public:
  explicit EditReplaceDlg(SciEditor& itsEditor);

 protected:
  void Store() override;

 private:
  void OnReplace(NotifyArgs& args);
  void OnReplaceAll(NotifyArgs& args);

  Label withLabel;
  Edit with;
  RadioGroup where;
  Button replace, replaceAll, close;
};

// Shows the dialog. Does nothing if the editor has no window yet.
void AskAndReplace(SciEditor& editor);

}  // namespace mavro
