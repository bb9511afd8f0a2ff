#pragma once

#include <string>

#include "Button.h"
#include "Edit.h"
#include "Form.h"

namespace zendry {

// Asks for one line of text.
class TextDlg : public mavro::Form {
  typedef TextDlg This;

 public:
  // `preset` is in the field at first, selected.
  TextDlg(const std::string& caption, const std::string& preset);

  // Runs the dialog; true if the user has accepted a text.
  bool Ask();
  const std::string& Accepted() const { return accepted; }

 private:
  // clang-format off
	//!decl
	mavro::Edit edit;
	mavro::Button okButton, cancel;
	//!end
  // clang-format on

  void Initialize();
  void OnShown(mavro::NotifyArgs& args);
  void OnOk(mavro::NotifyArgs& args);

  std::string accepted;
};

}  // namespace zendry
