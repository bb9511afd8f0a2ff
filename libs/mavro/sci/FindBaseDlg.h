#pragma once

#include <string>

#include "Button.h"
#include "Edit.h"
#include "Form.h"
#include "GroupBox.h"
#include "Label.h"
#include "ListBox.h"
#include "SearchState.h"

namespace mavro {

// What the dialogs of find and replace have in common: the text with its history, two switches and
// a line that says what was found. They show theSearch and change it.
class FindBaseDlg : public Form {
 public:
  // `shown` is the first text to look for; empty for the last one that was looked for.
  explicit FindBaseDlg(const std::string& shown);

 protected:
  static constexpr int cMargin = 15;
  static constexpr int cFieldLeft = 110;
  static constexpr int cFieldWidth = 330;
  static constexpr int cButtonLeft = 455;
  static constexpr int cButtonWidth = 100;
  static constexpr int cDialogWidth = 570;

  // Text or switches have changed; theSearch has them.
  virtual void OnTermChanged() {}
  // Takes the text and the switches into theSearch.
  virtual void Store();
  // Says something below the fields; long texts are cut.
  void Say(const std::string& said) { note.text = said; }
  // Places the fields of this class, from `top` down to the note at `noteTop`.
  void Place(int top, int switchTop, int noteTop);
  void PlaceButton(Button& button, int top);

  Label findLabel;
  ComboBox findWhat;
  CheckBox matchCase, wholeWord;
  Label note;

 private:
  void OnTyped(NotifyArgs& args);
  void OnChosen(ItemArgs& args);
  void OnSwitched(NotifyArgs& args);
  void Changed();
};

class SciEditor;

// What the dialogs over an editor add: expressions, going on at the other end, and marks on all
// hits as long as the dialog is open.
class EditorFindDlg : public FindBaseDlg {
 public:
  EditorFindDlg(SciEditor& itsEditor, const std::string& shown);

 protected:
  void OnTermChanged() override;
  void Store() override;
  // Places the switches and the dialog itself, at the upper right of the editor's window.
  void PlaceSwitches(int top);
  void PlaceOverEditor();
  // Selects the next hit where the dialog doesn't hide it, and says what there is.
  void FindAndShow();
  // Marks the hits and says how many there are; `before` goes before that.
  void ShowHits(const std::string& before = "");
  void KeepBelow();
  // Remembers the text; false, with the reason in the note, if it can't be looked for.
  bool Accept();

  SciEditor& editor;
  CheckBox regExp, wrap;

 private:
  void OnShown(NotifyArgs& args);
  void OnDestroyed(NotifyArgs& args);
  void OnSwitch(NotifyArgs& args);
};

}  // namespace mavro
