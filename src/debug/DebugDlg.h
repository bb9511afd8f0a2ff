#pragma once

#include <mavro>
#include <string>

namespace zendry {

class Debugger;

// gdb's console: a command goes to gdb as it is, and what gdb prints is shown.
class DebugDlg : public mavro::Form {
 public:
  explicit DebugDlg(Debugger& itsDebugger);  // not owned

  // Shows a line of gdb.
  void AppendLine(const std::string& line);

  mavro::Memo output;
  mavro::Panel bottom;
  mavro::Label label;
  mavro::ComboBox command;
  mavro::Button execute, close;

 private:
  void OnExecute(mavro::NotifyArgs& args);
  void OnBottomResized(mavro::NotifyArgs& args);
  void Keep(const std::string& used);

  Debugger& debugger;
};

}  // namespace zendry
