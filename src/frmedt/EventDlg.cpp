#include "frmedt/EventDlg.h"

namespace zendry {

namespace {

// Places in the tool bar.
enum ToolRow { cGoToSourceRow, cAddNewRow, cDisconnectRow, cSeparatorRow, cRemoveRow };

}  // namespace

EventDlg::EventDlg(const std::vector<std::string>& names, const std::string& bound) {
  Initialize();
  for (const std::string& name : names) comboBox1.items.Add(name);
  comboBox1.selectedIndex = comboBox1.items.IndexOf(bound);
  comboBox1.text = bound;
  comboBox1.accessibleName = "Handler";
  resizable = false;
  focusControl = &comboBox1;
}

void EventDlg::Initialize() {
  using mavro::Button, mavro::Dock, mavro::Icons;
  // clang-format off
	//!init
	this->SetBounds(0, 0, 206, 136);
	this->text = "Event handler";
	this->onShow.Add_H(this, &This::OnShown);
	//!<ToolBar>
	toolBar.dock = Dock::cTop;
	toolBar.height = 32;
	toolBar.items.Add(Icons::icoBack, "Go to source");
	toolBar.items.Add(Icons::icoAdd, "Add new");
	toolBar.items.Add(Icons::icoRemove, "Disconnect");
	toolBar.items.Add(_separator_);
	toolBar.items.Add(Icons::icoClear, "Remove handler method");
	toolBar.onClick.Add_H(this, &This::OnTool);
	this->Add(&toolBar);
	//!<ComboBox>
	comboBox1.SetBounds(4, 36, 181, 24);
	this->Add(&comboBox1);
	//!<Button>
	cancelButton.SetBounds(5, 67, 84, 34);
	cancelButton.kind = Button::cCancel;
	this->Add(&cancelButton);
	//!<Button>
	okButton.SetBounds(101, 67, 84, 34);
	okButton.kind = Button::cOk;
	this->Add(&okButton);
	//!end
  // clang-format on
}

bool EventDlg::Ask() {
  command = cBind;
  return Run(true) == cOk;
}

// What can be done depends on whether there is a handler, as the dialog opens.
void EventDlg::OnShown(mavro::NotifyArgs&) {
  const bool isBound = !comboBox1.text.empty();
  for (const int row : {cGoToSourceRow, cDisconnectRow, cRemoveRow}) toolBar.Enable(row, isBound);
  toolBar.Enable(cAddNewRow, !isBound);
}

void EventDlg::OnTool(mavro::NotifyArgs& args) {
  command = args.value;
  result = cOk;
  Close();
}

}  // namespace zendry
