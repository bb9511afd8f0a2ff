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
  Initialize();
  place.path.text = folder;
  focusControl = &place.name;
}

void CopyProjectDlg::Initialize() {
  using mavro::Button;
  // clang-format off
	//!init
	this->SetBounds(0, 0, 387, 205);
	this->text = "Clone project";
	this->resizable = false;
	//!<Panel>
	place.SetBounds(0, 8, 387, 100);
	this->Add(&place);
	//!<Button>
	okButton.SetBounds(197, 163, 84, 30);
	okButton.kind = Button::cOk;
	okButton.onClick.Add_H(this, &This::OnOk);
	this->Add(&okButton);
	//!<Button>
	cancel.SetBounds(291, 163, 84, 30);
	cancel.kind = Button::cCancel;
	this->Add(&cancel);
	//!end
  // clang-format on
}

void CopyProjectDlg::OnOk(mavro::NotifyArgs&) {
  if (!HasProjectName(place)) StayOpen();
}

}  // namespace zendry
