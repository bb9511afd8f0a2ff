#pragma once

#include <mavro>
#include <string>

namespace zendry {

// Asks for a list of strings, one in each line.
class ItemsDlg : public mavro::Form {
  typedef ItemsDlg This;

 public:
  // clang-format off
	//!decl
	mavro::Memo linesMemo;
	mavro::Panel buttonPanel;
	mavro::Button cancelButton, okButton;
	//!end
  // clang-format on

  ItemsDlg();

  // False if the user cancels. Else `items` is what the user has made of it: items that end with
  // CR LF each.
  bool Ask(std::string& items);

 private:
  void Initialize();
};

// The lines of a text, each with CR LF after it.
std::string LinesAsItems(std::string_view text);

}  // namespace zendry
