#pragma once

#include "ButtonGroup.h"
#include "FindBaseDlg.h"

namespace mavro {

// Looks for a text in an editor. It stays open, so that one hit after the other can be looked at.
class FindTextDlg : public EditorFindDlg {
 public:
  explicit FindTextDlg(SciEditor& itsEditor);

 protected:
  void Store() override;

 private:
  void OnFind(NotifyArgs& args);

  RadioGroup direction;
  Button find, close;
};

// Shows the dialog; a selection within a line is the text to look for. Does nothing if the editor
// has no window yet.
void AskAndFind(SciEditor& editor);

}  // namespace mavro
