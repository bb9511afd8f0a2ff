#include "frmedt/ToolBarEditor.h"

#include "frmedt/ItemsDlg.h"
#include "frmedt/PropClass.h"

namespace zendry {

namespace {

constexpr size_t cIconPrefix = 3;  // "ico", before the words that the tool tip begins with

}  // namespace

ToolBarEditor::ToolBarEditor() {
  Initialize();
  for (const std::string& icon : SplitOptions(thePropIcon.ref)) iconBox.items.Add(icon);
  iconBox.selectedIndex = mavro::Icons::icoNew;
  linesMemo.accessibleName = text.Get();
  focusControl = &iconBox;
}

void ToolBarEditor::Initialize() {
  using mavro::Button, mavro::Dock, mavro::Icons;
  // clang-format off
	//!init
	this->SetBounds(0, 0, 321, 400);
	this->text = "Tool bar items";
	this->onKeyPreview.Add_H(this, &This::OnKey);
	//!<Panel>
	panel1.dock = Dock::cTop;
	panel1.height = 66;
	this->Add(&panel1);
	//!<Label>
	iconLabel.SetBounds(5, 6, 89, 18);
	iconLabel.text = "Select icon";
	panel1.Add(&iconLabel);
	//!<ComboBox>
	iconBox.SetBounds(5, 23, 100, 24);
	iconBox.text = "cNew";
	iconBox.chooseOnly = true;
	iconBox.onSelChanged.Add_H(this, &This::OnIcon);
	panel1.Add(&iconBox);
	//!<Button>
	addButton.SetBounds(109, 16, 58, 34);
	addButton.text = "+";
	addButton.toolTip = "Add a button with this icon";
	addButton.icon = Icons::icoNew;
	addButton.onClick.Add_H(this, &This::OnAdd);
	panel1.Add(&addButton);
	//!<Button>
	separatorButton.SetBounds(172, 16, 27, 34);
	separatorButton.text = "|";
	separatorButton.toolTip = "Add a separator";
	separatorButton.onClick.Add_H(this, &This::OnSeparator);
	panel1.Add(&separatorButton);
	//!<Button>
	acceptButton.SetBounds(212, 16, 84, 34);
	acceptButton.text = "Accept";
	acceptButton.kind = Button::cSave;
	acceptButton.onClick.Add_H(this, &This::OnAccept);
	panel1.Add(&acceptButton);
	//!<Memo>
	linesMemo.dock = Dock::cFill;
	this->Add(&linesMemo);
	//!end
  // clang-format on
}

bool ToolBarEditor::Ask(std::string& items) {
  linesMemo.text = items;
  if (Run(true) != cOk) return false;
  items = LinesAsItems(linesMemo.text);
  return true;
}

void ToolBarEditor::AddLine(const std::string& line) {
  const bool ends = linesMemo.text.empty() || linesMemo.text.ends_with("\n");
  linesMemo.Append((ends ? "" : "\r\n") + line + "\r\n");
}

void ToolBarEditor::OnIcon(mavro::ItemArgs& args) {
  addButton.icon = args.row;
}

void ToolBarEditor::OnAdd(mavro::NotifyArgs&) {
  const std::string icon = iconBox.text;
  if (icon.size() > cIconPrefix)
    AddLine("Icons::" + icon + ", \"" + icon.substr(cIconPrefix) + "\"");
}

void ToolBarEditor::OnSeparator(mavro::NotifyArgs&) {
  AddLine("_separator_");
}

void ToolBarEditor::OnAccept(mavro::NotifyArgs&) {
  result = cOk;
  Close();
}

// No button of the dialog cancels it.
void ToolBarEditor::OnKey(mavro::NotifyArgs& args) {
  if (args.value != mavro::Key::cEscape) return;
  args.value = 0;
  Close();
}

}  // namespace zendry
