#pragma once

#include <mavro>

namespace zendry {

// Says which program this is, and whose work is in it.
class AboutDlg : public mavro::Form {
  typedef AboutDlg This;

 public:
  AboutDlg();

  // clang-format off
	//!decl
	mavro::Image banner;
	mavro::Label name, version;
	mavro::RichView licences;
	mavro::Button okButton;
	//!end
  // clang-format on

 private:
  void Initialize();
};

}  // namespace zendry
