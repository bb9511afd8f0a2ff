#pragma once

#include <mavro>
#include <string>

namespace zendry {

// Asks for the buttons of a tool bar, one in each line, as their source text.
class ToolBarEditor : public mavro::Form {
  typedef ToolBarEditor This;

 public:
  // clang-format off
	//!decl
	mavro::Panel panel1;
	mavro::Label iconLabel;
	mavro::ComboBox iconBox;
	mavro::Button addButton, separatorButton, acceptButton;
	mavro::Memo linesMemo;
	//!end
  // clang-format on

  ToolBarEditor();

  // False if the user cancels. Else `items` is what the user has made of it: items that end with
  // CR LF each.
  bool Ask(std::string& items);

 private:
  void Initialize();
  void AddLine(const std::string& line);
  void OnIcon(mavro::ItemArgs& args);
  void OnAdd(mavro::NotifyArgs& args);
  void OnSeparator(mavro::NotifyArgs& args);
  void OnAccept(mavro::NotifyArgs& args);
  void OnKey(mavro::NotifyArgs& args);
};

}  // namespace zendry
