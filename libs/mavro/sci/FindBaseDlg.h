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

// The controls that the form of each dialog of find and replace has, wherever it places them.
struct FindFields {
  ComboBox* what = nullptr;
  CheckBox* matchCase = nullptr;
  CheckBox* wholeWord = nullptr;
  Label* note = nullptr;  // a line that says what was found
};

// What the dialogs of find and replace have in common: the text with its history, and two switches.
// They show theSearch and change it.
class FindBaseDlg : public Form {
 public:
  FindBaseDlg() { resizable = false; }

 protected:
  // Takes the fields of the form and fills them; once, before the dialog runs. `shown` is the first
  // text to look for; empty for the last one that was looked for.
  void Begin(const FindFields& its, const std::string& shown);
  // Text or switches have changed; theSearch has them.
  virtual void OnTermChanged() {}
  // Takes the text and the switches into theSearch.
  virtual void Store();
  // Says something below the fields; long texts are cut.
  void Say(const std::string& said) { fields.note->text = said; }

 private:
  void OnTyped(NotifyArgs& args);
  void OnChosen(ItemArgs& args);
  void OnSwitched(NotifyArgs& args);
  void Changed();

  FindFields fields;
};

class SciEditor;

// What the dialogs over an editor add: expressions, going on at the other end, and marks on all
// hits as long as the dialog is open.
class EditorFindDlg : public FindBaseDlg {
 public:
  explicit EditorFindDlg(SciEditor& itsEditor) : editor(itsEditor) {}

 protected:
  // The same with the two further switches.
  void Begin(const FindFields& its, CheckBox& itsRegExp, CheckBox& itsWrap,
             const std::string& shown);
  void OnTermChanged() override;
  void Store() override;
  // Places the dialog at the upper right of the editor's window.
  void PlaceOverEditor();
  // Selects the next hit where the dialog doesn't hide it, and says what there is.
  void FindAndShow();
  // Marks the hits and says how many there are; `before` goes before that.
  void ShowHits(const std::string& before = "");
  void KeepBelow();
  // Remembers the text; false, with the reason in the note, if it can't be looked for.
  bool Accept();

  SciEditor& editor;

 private:
  void OnShown(NotifyArgs& args);
  void OnDestroyed(NotifyArgs& args);
  void OnSwitch(NotifyArgs& args);

  CheckBox* regExpBox = nullptr;
  CheckBox* wrapBox = nullptr;
};

}  // namespace mavro
