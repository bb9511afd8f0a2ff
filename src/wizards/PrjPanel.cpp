#include "wizards/PrjPanel.h"

#include "SystemDialogs.h"

namespace zendry {

PrjPanel::PrjPanel() {
  pathLabel.text = "Project path";
  pathLabel.SetBounds(12, 2, 80, 18);
  path.SetBounds(12, 20, 312, 20);
  path.accessibleName = "Project path";
  browse.text = "...";
  browse.hint = "Choose the folder";
  browse.accessibleName = "Choose the folder";
  browse.SetBounds(324, 17, 26, 24);
  browse.onClick.Add_H(this, &PrjPanel::OnBrowse);
  nameLabel.text = "Project name:";
  nameLabel.SetBounds(12, 46, 92, 18);
  name.SetBounds(12, 64, 312, 20);
  name.accessibleName = "Project name";
  for (mavro::Control* control :
       std::initializer_list<mavro::Control*>{&pathLabel, &path, &browse, &nameLabel, &name})
    Add(control);
}

std::string PrjPanel::Folder() const {
  std::string folder = path.text;
  if (!folder.empty() && !folder.ends_with('/')) folder += '/';
  return folder;
}

void PrjPanel::OnBrowse(mavro::NotifyArgs&) {
  const std::string chosen = mavro::Dialogs().chooseFolder("Project path", path.text);
  if (!chosen.empty()) path.text = chosen.ends_with('/') ? chosen : chosen + "/";
}

bool HasProjectName(const PrjPanel& place) {
  if (!place.name.text.Get().empty()) return true;
  mavro::Information("Enter project name!");
  return false;
}

CopyProjectDlg::CopyProjectDlg(const std::string& folder) {
  constexpr int cWidth = 387, cHeight = 205;
  constexpr int cButtonWidth = 84, cButtonHeight = 30, cGap = 10, cMargin = 12;
  text = "Clone project";
  resizable = false;
  SetSize(cWidth, cHeight);
  place.SetBounds(0, 8, cWidth, 100);
  place.path.text = folder;
  ok.kind = mavro::Button::cOk;
  cancel.kind = mavro::Button::cCancel;
  const int top = cHeight - cMargin - cButtonHeight;
  const int right = cWidth - cMargin - cButtonWidth;
  ok.SetBounds(right - cGap - cButtonWidth, top, cButtonWidth, cButtonHeight);
  cancel.SetBounds(right, top, cButtonWidth, cButtonHeight);
  ok.onClick.Add_H(this, &CopyProjectDlg::OnOk);
  Add(&place);
  Add(&ok);
  Add(&cancel);
  focusControl = &place.name;
}

void CopyProjectDlg::OnOk(mavro::NotifyArgs&) {
  if (!HasProjectName(place)) StayOpen();
}

}  // namespace zendry
