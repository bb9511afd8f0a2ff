#include "debug/DebugDlg.h"

#include <algorithm>
#include <vector>

#include "base/ControlBytes.h"
#include "debug/Debugger.h"

namespace zendry {

namespace {

constexpr int cWidth = 640;
constexpr int cHeight = 420;
constexpr int cMargin = 10;
constexpr int cLabelHeight = 20;
constexpr int cButtonWidth = 84;
constexpr int cButtonHeight = 30;
constexpr int cMostLines = 10000;
constexpr size_t cMostCommands = 30;

// The commands of all consoles of this run, the last one first.
std::vector<std::string>& Used() {
  static std::vector<std::string> used;
  return used;
}

}  // namespace

DebugDlg::DebugDlg(Debugger& itsDebugger) : debugger(itsDebugger) {
  text = "Debug Commander";
  SetSize(cWidth, cHeight);
  output.dock = mavro::Dock::cFill;
  output.readOnly = true;
  output.monospaced = true;
  output.maxLines = cMostLines;
  output.accessibleName = "Output";
  bottom.dock = mavro::Dock::cBootom;
  bottom.height = cLabelHeight + cButtonHeight + 3 * cMargin;
  label.text = "Debuger command:";
  execute.kind = mavro::Button::cOk;  // for the Enter key
  execute.text = "Execute";
  close.kind = mavro::Button::cCancel;
  close.text = "Close";
  for (const std::string& used : Used()) command.items.Add(used);
  execute.onClick.Add_H(this, &DebugDlg::OnExecute);
  bottom.onResize.Add_H(this, &DebugDlg::OnBottomResized);
  for (mavro::Control* control :
       std::initializer_list<mavro::Control*>{&label, &command, &execute, &close})
    bottom.Add(control);
  Add(&output);
  Add(&bottom);
  focusControl = &command;
}

void DebugDlg::AppendLine(const std::string& line) {
  output.Append(MarkControlBytes(line) + "\n");
}

void DebugDlg::OnBottomResized(mavro::NotifyArgs&) {
  const int top = cLabelHeight + 2 * cMargin;
  const int right = bottom.width - cMargin;
  const int buttons = 2 * (cButtonWidth + cMargin);
  label.SetBounds(cMargin, cMargin, right - cMargin, cLabelHeight);
  command.SetBounds(cMargin, top, right - buttons - cMargin, cButtonHeight);
  execute.SetBounds(right - buttons + cMargin, top, cButtonWidth, cButtonHeight);
  close.SetBounds(right - cButtonWidth, top, cButtonWidth, cButtonHeight);
}

void DebugDlg::OnExecute(mavro::NotifyArgs&) {
  StayOpen();
  const std::string wanted = command.text;
  output.Clear();
  if (wanted.empty()) return;
  Keep(wanted);
  debugger.Execute(wanted);
}

// A command that is used again becomes the first of the list.
void DebugDlg::Keep(const std::string& used) {
  std::vector<std::string>& list = Used();
  std::erase(list, used);
  list.insert(list.begin(), used);
  if (list.size() > cMostCommands) list.pop_back();
  command.items.Clear();
  for (const std::string& item : list) command.items.Add(item);
  command.text = used;
}

}  // namespace zendry
