#pragma once

#include <mavro>
#include <string>
#include <vector>

namespace zendry {

// Lets the user choose one of the forms of a source.
class SelectDlg : public mavro::Form {
  typedef SelectDlg This;

 public:
  // clang-format off
	//!decl
	mavro::ListView formList;
	mavro::Panel buttonPanel;
	mavro::Button okButton;
	//!end
  // clang-format on

  explicit SelectDlg(const std::vector<std::string>& classNames);

  // The chosen row; -1 if the user cancels.
  int Choose();

 private:
  void Initialize();
  void OnChosen(mavro::NotifyArgs& args);
  void OnKey(mavro::NotifyArgs& args);
};

}  // namespace zendry
