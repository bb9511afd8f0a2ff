#pragma once

#include "Button.h"
#include "Edit.h"
#include "FindBaseDlg.h"

namespace zendry {

// Which files are searched.
enum SearchTarget { cCurrentFile, cCurrentProject, cLibraryHeaders };

// Asks what to look for in files, and with what to replace it.
class FindInFilesDlg : public mavro::FindBaseDlg {
  typedef FindInFilesDlg This;

 public:
  enum class Mode { cFind, cReplace };
  // `newTarget` is shown first and takes the choice. `shown` is the text to look for; empty for
  // the last one.
  FindInFilesDlg(Mode newMode, SearchTarget& newTarget, const std::string& shown);

  // Shows the dialog; true if the user wants the search. Its words are in mavro::theSearch.
  bool Ask();

 protected:
  void Store() override;

 private:
  // clang-format off
	//!decl
	mavro::Label findLabel;
	mavro::ComboBox findWhat;
	mavro::Label withLabel;
	mavro::Edit with;
	mavro::Label selectionLabel;
	mavro::ComboBox selection;
	mavro::CheckBox matchCase, wholeWord;
	mavro::Button search, close;
	mavro::Label note;
	//!end
  // clang-format on

  void Initialize();
  void LeaveOutReplacement();
  void OnSearch(mavro::NotifyArgs& args);
  void OnDestroyed(mavro::NotifyArgs& args);

  const Mode mode;
  SearchTarget& target;
};

}  // namespace zendry
