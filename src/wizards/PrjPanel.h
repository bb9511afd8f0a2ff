#pragma once

#include <mavro>
#include <string>

namespace zendry {

// Folder and name of a project, in the dialogs that make one.
class PrjPanel : public mavro::Panel {
 public:
  PrjPanel();

  // The folder as typed, ended by "/"; empty if nothing was typed.
  std::string Folder() const;

  mavro::Label pathLabel, nameLabel;
  mavro::Edit path;
  mavro::Button browse;
  mavro::Edit name;

 private:
  void OnBrowse(mavro::NotifyArgs& args);
};

// Clones the open project: asks for folder and name.
class CopyProjectDlg : public mavro::Form {
  typedef CopyProjectDlg This;

 public:
  explicit CopyProjectDlg(const std::string& folder);

  // clang-format off
	//!decl
	PrjPanel place;
	mavro::Button okButton, cancel;
	//!end
  // clang-format on

 private:
  void Initialize();
  void OnOk(mavro::NotifyArgs& args);
};

// Says what is missing; false if there is no name.
bool HasProjectName(const PrjPanel& place);

}  // namespace zendry
