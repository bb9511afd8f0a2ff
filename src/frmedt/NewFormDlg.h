#pragma once

#include <mavro>
#include <string>

namespace zendry {

// Asks for the class of a new form and for the place of its source.
class NewFormDlg : public mavro::Form {
  typedef NewFormDlg This;

 public:
  // clang-format off
	//!decl
	mavro::Label classLabel;
	mavro::Edit classEdit;
	mavro::Label fileLabel;
	mavro::Edit fileEdit;
	mavro::RadioGroup projectGroup, placeGroup;
	mavro::Button cancelButton, okButton;
	//!end
  // clang-format on

  // Without a current file, a new file is the only place.
  explicit NewFormDlg(bool hasCurrentFile);

  bool Ask() { return Run(true) == cOk; }
  std::string ClassName() const { return classEdit.text; }
  std::string FileName() const { return fileEdit.text; }
  bool IsForCurrentFile() const { return placeGroup.itemIndex == cCurrentFile; }

 private:
  enum Place { cNewFile, cCurrentFile };

  void Initialize();
  void OnPlace(mavro::NotifyArgs& args);
  void OnOk(mavro::NotifyArgs& args);
  void Refuse(const char* message, mavro::Edit& field);
};

}  // namespace zendry
