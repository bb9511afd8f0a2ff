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
 public:
  explicit CopyProjectDlg(const std::string& folder);

  PrjPanel place;
  mavro::Button ok, cancel;

 private:
  void OnOk(mavro::NotifyArgs& args);
};

// Says what is missing; false if there is no name.
bool HasProjectName(const PrjPanel& place);

}  // namespace zendry
