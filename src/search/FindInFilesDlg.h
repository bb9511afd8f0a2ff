#pragma once

#include "Button.h"
#include "Edit.h"
#include "FindBaseDlg.h"

namespace zendry {

// Which files are searched.
enum SearchTarget { cCurrentFile, cCurrentProject, cLibraryHeaders };

// Asks what to look for in files, and with what to replace it.
class FindInFilesDlg : public mavro::FindBaseDlg {
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
  void OnSearch(mavro::NotifyArgs& args);
  void OnDestroyed(mavro::NotifyArgs& args);

  const Mode mode;
  SearchTarget& target;
  mavro::Label withLabel, selectionLabel;
  mavro::Edit with;
  mavro::ComboBox selection;
  mavro::Button search, close;
};

}  // namespace zendry
