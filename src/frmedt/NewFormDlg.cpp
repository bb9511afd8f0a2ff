#include "frmedt/NewFormDlg.h"

#include "frmedt/SourceNames.h"

namespace zendry {

NewFormDlg::NewFormDlg(bool hasCurrentFile) {
  Initialize();
  resizable = false;
  placeGroup.itemIndex = cCurrentFile;
  if (!hasCurrentFile) {
    placeGroup.items.Remove(cCurrentFile);
    placeGroup.itemIndex = cNewFile;
  }
  mavro::NotifyArgs args;
  OnPlace(args);
  focusControl = &classEdit;
}

void NewFormDlg::Initialize() {
  using mavro::Button;
  // clang-format off
	//!init
	this->SetBounds(0, 0, 355, 245);
	this->text = "New Dialog";
	//!<Label>
	classLabel.SetBounds(16, 8, 80, 16);
	classLabel.text = "Class name:";
	this->Add(&classLabel);
	//!<Edit>
	classEdit.SetBounds(16, 24, 118, 20);
	this->Add(&classEdit);
	//!<Label>
	fileLabel.SetBounds(156, 8, 80, 16);
	fileLabel.text = "File name";
	this->Add(&fileLabel);
	//!<Edit>
	fileEdit.SetBounds(156, 24, 164, 20);
	this->Add(&fileEdit);
	//!<RadioGroup>
	projectGroup.SetBounds(16, 52, 118, 84);
	projectGroup.text = "Form project:";
	projectGroup.items.Add("Compact");
	projectGroup.items.Add("Splited");
	projectGroup.itemIndex = 0;
	this->Add(&projectGroup);
	//!<RadioGroup>
	placeGroup.SetBounds(156, 52, 184, 84);
	placeGroup.text = "Form place:";
	placeGroup.items.Add("Create in a new file");
	placeGroup.items.Add("Insert into current file");
	placeGroup.itemIndex = 1;
	placeGroup.onChange.Add_H(this, &This::OnPlace);
	this->Add(&placeGroup);
	//!<Button>
	cancelButton.SetBounds(133, 149, 84, 36);
	cancelButton.text = "Cancel";
	cancelButton.kind = Button::cCancel;
	this->Add(&cancelButton);
	//!<Button>
	okButton.SetBounds(236, 149, 84, 36);
	okButton.kind = Button::cOk;
	okButton.onClick.Add_H(this, &This::OnOk);
	this->Add(&okButton);
	//!end
  // clang-format on
}

void NewFormDlg::OnPlace(mavro::NotifyArgs&) {
  const bool isNewFile = placeGroup.itemIndex == cNewFile;
  fileLabel.enabled = isNewFile;
  fileEdit.enabled = isNewFile;
}

// A class name that isn't one would make a source that nobody can open in the designer.
void NewFormDlg::OnOk(mavro::NotifyArgs&) {
  if (classEdit.text.empty()) return Refuse("Enter the class name", classEdit);
  if (!IsWord(ClassName())) return Refuse("The class name must be a C++ name", classEdit);
  if (!IsForCurrentFile() && fileEdit.text.empty()) Refuse("Enter the file name", fileEdit);
}

void NewFormDlg::Refuse(const char* message, mavro::Edit& field) {
  StayOpen();
  mavro::Information(message);
  field.Focus();
}

}  // namespace zendry
