#pragma once

#include <mavro>
#include <string>

namespace zendry {

class Debugger;

// gdb's console: a command goes to gdb as it is, and what gdb prints is shown.
class DebugDlg : public mavro::Form {
  typedef DebugDlg This;

 public:
  explicit DebugDlg(Debugger& itsDebugger);  // not owned

  // Shows a line of gdb.
  void AppendLine(const std::string& line);

  // clang-format off
	//!decl
	mavro::Memo output;
	mavro::Panel bottom;
	mavro::Label label;
	mavro::ComboBox command;
	mavro::Button execute, close;
	//!end
  // clang-format on

 private:
  void Initialize();
  void OnExecute(mavro::NotifyArgs& args);
  void OnBottomResized(mavro::NotifyArgs& args);
  void Keep(const std::string& used);

  Debugger& debugger;
};

}  // namespace zendry
