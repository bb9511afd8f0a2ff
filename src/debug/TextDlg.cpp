#include "debug/TextDlg.h"

namespace zendry {

namespace {

constexpr int cPlace = 200;  // on the screen, for left and top

}  // namespace

TextDlg::TextDlg(const std::string& caption, const std::string& preset) {
  Initialize();
  SetLocation(cPlace, cPlace);
  text = caption;
  edit.text = preset;
  edit.accessibleName = caption;
  focusControl = &edit;
}

void TextDlg::Initialize() {
  using mavro::Button;
  // clang-format off
	//!init
	this->SetBounds(0, 0, 300, 118);
	this->resizable = false;
	this->center = false;
	this->onShow.Add_H(this, &This::OnShown);
	//!<Edit>
	edit.SetBounds(15, 15, 270, 26);
	this->Add(&edit);
	//!<Button>
	okButton.SetBounds(107, 73, 84, 30);
	okButton.kind = Button::cOk;
	okButton.onClick.Add_H(this, &This::OnOk);
	this->Add(&okButton);
	//!<Button>
	cancel.SetBounds(201, 73, 84, 30);
	cancel.kind = Button::cCancel;
	this->Add(&cancel);
	//!end
  // clang-format on
}

bool TextDlg::Ask() {
  return Run(true) == cOk;
}

void TextDlg::OnShown(mavro::NotifyArgs&) {
  edit.SelectAll();
}

void TextDlg::OnOk(mavro::NotifyArgs&) {
  accepted = edit.text;
}

}  // namespace zendry
