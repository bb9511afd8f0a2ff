#include "frmedt/FontPropDlg.h"

#include "frmedt/PropClass.h"

namespace zendry {

namespace {

constexpr int cBoldFlag = 1, cItalicFlag = 2;  // of the group's items

}  // namespace

FontPropDlg::FontPropDlg(const std::string& fontText) {
  Initialize();
  const FontText parsed = FontText::Parse(fontText);
  sizeEdit.value = parsed.size;
  styleGroup.itemFlags = (parsed.isBold ? cBoldFlag : 0) | (parsed.isItalic ? cItalicFlag : 0);
  resizable = false;
  focusControl = &sizeEdit;
}

void FontPropDlg::Initialize() {
  using mavro::Button, mavro::Icons;
  // clang-format off
	//!init
	this->SetBounds(0, 0, 242, 119);
	this->text = "Font";
	this->onKeyPreview.Add_H(this, &This::OnKey);
	//!<CheckGroup>
	styleGroup.SetBounds(4, 3, 77, 72);
	styleGroup.text = "Style:";
	styleGroup.items.Add("Bold");
	styleGroup.items.Add("Italic");
	this->Add(&styleGroup);
	//!<Label>
	sizeLabel.SetBounds(105, 5, 32, 18);
	sizeLabel.text = "Size:";
	this->Add(&sizeLabel);
	//!<SpinEdit>
	sizeEdit.SetBounds(136, 4, 80, 22);
	sizeEdit.value = 12;
	this->Add(&sizeEdit);
	//!<Button>
	okButton.SetBounds(133, 40, 84, 34);
	okButton.text = "Ok";
	okButton.kind = Button::cOk;
	this->Add(&okButton);
	//!<Button>
	clearButton.SetBounds(88, 39, 36, 34);
	clearButton.toolTip = "Default font";
	clearButton.icon = Icons::icoClear;
	clearButton.onClick.Add_H(this, &This::Clear);
	this->Add(&clearButton);
	//!end
  // clang-format on
}

bool FontPropDlg::Ask(std::string& fontText) {
  const bool isAccepted = Run(true) == cOk;
  if (!isAccepted && !isCleared) return false;
  fontText = isCleared ? std::string() : FontSource();
  return true;
}

std::string FontPropDlg::FontSource() const {
  const int flags = styleGroup.itemFlags;
  std::string styles;
  if (flags & cBoldFlag) styles = ", Font::cBold";
  if (flags & cItalicFlag) styles += styles.empty() ? ", Font::cItalic" : "|Font::cItalic";
  return "Font(" + std::to_string(sizeEdit.value.Get()) + styles + ")";
}

void FontPropDlg::Clear(mavro::NotifyArgs&) {
  isCleared = true;
  Close();
}

// No button of the dialog cancels it.
void FontPropDlg::OnKey(mavro::NotifyArgs& args) {
  if (args.value != mavro::Key::cEscape) return;
  args.value = 0;
  Close();
}

}  // namespace zendry
