#include "frmedt/SelectDlg.h"

namespace zendry {

SelectDlg::SelectDlg(const std::vector<std::string>& classNames) {
  Initialize();
  formList.AddColumn("forms", 200);
  for (const std::string& name : classNames) formList.AddRow(name);
  if (!classNames.empty()) formList.Select(0);
  formList.accessibleName = "Forms";
  focusControl = &formList;
}

void SelectDlg::Initialize() {
  using mavro::Button, mavro::Dock;
  // clang-format off
	//!init
	this->SetBounds(0, 0, 220, 192);
	this->text = "Choose a form";
	this->onKeyPreview.Add_H(this, &This::OnKey);
	//!<ListView>
	formList.dock = Dock::cFill;
	formList.onChoose.Add_H(this, &This::OnChosen);
	this->Add(&formList);
	//!<Panel>
	buttonPanel.dock = Dock::cBootom;
	buttonPanel.height = 38;
	this->Add(&buttonPanel);
	//!<Button>
	okButton.SetBounds(120, 2, 84, 34);
	okButton.kind = Button::cOk;
	buttonPanel.Add(&okButton);
	//!end
  // clang-format on
}

int SelectDlg::Choose() {
  return Run(true) == cOk ? formList.selectedIndex.Get() : -1;
}

void SelectDlg::OnChosen(mavro::NotifyArgs&) {
  result = cOk;
  Close();
}

// No button of the dialog cancels it.
void SelectDlg::OnKey(mavro::NotifyArgs& args) {
  if (args.value != mavro::Key::cEscape) return;
  args.value = 0;
  Close();
}

}  // namespace zendry
