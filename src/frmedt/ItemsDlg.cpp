#include "frmedt/ItemsDlg.h"

#include <algorithm>

namespace zendry {

ItemsDlg::ItemsDlg() {
  Initialize();
  linesMemo.accessibleName = text.Get();
  focusControl = &linesMemo;
}

void ItemsDlg::Initialize() {
  using mavro::Button, mavro::Dock;
  // clang-format off
	//!init
	this->SetBounds(0, 0, 400, 300);
	this->text = "Items";
	//!<Memo>
	linesMemo.dock = Dock::cFill;
	this->Add(&linesMemo);
	//!<Panel>
	buttonPanel.dock = Dock::cBootom;
	buttonPanel.height = 44;
	this->Add(&buttonPanel);
	//!<Button>
	cancelButton.SetBounds(200, 5, 84, 34);
	cancelButton.text = "Cancel";
	cancelButton.kind = Button::cCancel;
	buttonPanel.Add(&cancelButton);
	//!<Button>
	okButton.SetBounds(300, 5, 84, 34);
	okButton.text = "OK";
	okButton.kind = Button::cOk;
	buttonPanel.Add(&okButton);
	//!end
  // clang-format on
}

bool ItemsDlg::Ask(std::string& items) {
  linesMemo.text = items;
  if (Run(true) != cOk) return false;
  items = LinesAsItems(linesMemo.text);
  return true;
}

std::string LinesAsItems(std::string_view text) {
  std::string items;
  while (!text.empty()) {
    const size_t end = std::min(text.find_first_of("\r\n"), text.size());
    items.append(text.substr(0, end)).append("\r\n");
    text.remove_prefix(end);
    if (text.starts_with("\r\n")) text.remove_prefix(1);
    if (!text.empty()) text.remove_prefix(1);
  }
  return items;
}

}  // namespace zendry
