#pragma once

#include <mavro>
#include <string>

namespace zendry {

// Asks for the size and the style of a font. It has no field for a typeface, so that is lost.
class FontPropDlg : public mavro::Form {
  typedef FontPropDlg This;

 public:
  // clang-format off
	//!decl
	mavro::CheckGroup styleGroup;
	mavro::Label sizeLabel;
	mavro::SpinEdit sizeEdit;
	mavro::Button okButton, clearButton;
	//!end
  // clang-format on

  // `fontText` is a font as a form's source tells it.
  explicit FontPropDlg(const std::string& fontText);

  // False if the user cancels. Else `fontText` is the chosen font, empty for the default one.
  bool Ask(std::string& fontText);

 private:
  void Initialize();
  void Clear(mavro::NotifyArgs& args);
  void OnKey(mavro::NotifyArgs& args);
  std::string FontSource() const;

  bool isCleared = false;
};

}  // namespace zendry
