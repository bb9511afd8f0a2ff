#include "debug/DebugDlg.h"

#include <algorithm>
#include <vector>

#include "base/ControlBytes.h"
#include "debug/Debugger.h"

namespace zendry {

namespace {

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
  Initialize();
  output.readOnly = true;
  output.monospaced = true;
  output.maxLines = cMostLines;
  output.accessibleName = "Output";
  for (const std::string& used : Used()) command.items.Add(used);
  focusControl = &command;
}

// The first button is an OK button for the Enter key.
void DebugDlg::Initialize() {
  using mavro::Button, mavro::Dock;
  // clang-format off
	//!init
	this->SetBounds(0, 0, 640, 420);
	this->text = "Debug Commander";
	//!<Memo>
	output.dock = Dock::cFill;
	this->Add(&output);
	//!<Panel>
	bottom.dock = Dock::cBootom;
	bottom.height = 80;
	bottom.onResize.Add_H(this, &This::OnBottomResized);
	this->Add(&bottom);
	//!<Label>
	label.SetBounds(10, 10, 620, 20);
	label.text = "Debuger command:";
	bottom.Add(&label);
	//!<ComboBox>
	command.SetBounds(10, 40, 432, 30);
	bottom.Add(&command);
	//!<Button>
	execute.SetBounds(452, 40, 84, 30);
	execute.text = "Execute";
	execute.kind = Button::cOk;
	execute.onClick.Add_H(this, &This::OnExecute);
	bottom.Add(&execute);
	//!<Button>
	close.SetBounds(546, 40, 84, 30);
	close.text = "Close";
	close.kind = Button::cCancel;
	bottom.Add(&close);
	//!end
  // clang-format on
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
