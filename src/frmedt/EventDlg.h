#pragma once

#include <mavro>
#include <string>
#include <vector>

namespace zendry {

// Asks for the method that handles an event.
class EventDlg : public mavro::Form {
  typedef EventDlg This;

 public:
  // What the user wants to do with the event; the buttons' pictures have these numbers too.
  enum Command {
    cBind = 0,
    cRemoveMethod = mavro::Icons::icoClear,
    cAddNew = mavro::Icons::icoAdd,
    cDisconnect = mavro::Icons::icoRemove,
    cGoToSource = mavro::Icons::icoBack
  };

  // clang-format off
	//!decl
	mavro::ToolBar toolBar;
	mavro::ComboBox comboBox1;
	mavro::Button cancelButton, okButton;
	//!end
  // clang-format on

  // `names`: the methods that fit, `bound`: the one that is bound; may be empty, or none of them.
  EventDlg(const std::vector<std::string>& names, const std::string& bound);

  // False if the user cancels. Else `command` and the text of the box say what is wanted.
  bool Ask();
  std::string Handler() const { return comboBox1.text; }

  int command = cBind;

 private:
  void Initialize();
  void OnShown(mavro::NotifyArgs& args);
  void OnTool(mavro::NotifyArgs& args);
};

}  // namespace zendry
