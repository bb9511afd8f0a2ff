#pragma once

#include <mavro>
#include <string>
#include <vector>

#include "debug/DebugView.h"
#include "debug/Debugger.h"

namespace zendry {

class BreakEditor;
class CppEditor;
class DebugDlg;
class MainForm;

// The debug session's side of the main window: it shows what the session tells, in the window's
// panels and editors, and tells the session what the user does there.
class DebugWindow : public mavro::object, public DebugView {
 public:
  // Only keeps `itsForm`, which owns this; `Begin` is called once its panels exist, and `End`
  // before the first of them goes.
  explicit DebugWindow(MainForm& itsForm);
  void Begin();
  void End();

  // Group: what happens in the window.
  void TabOpened(const std::string& path);
  void TabClosing(const std::string& path);
  void MarginClicked(const CppEditor& editor, int line);
  // The session's state as the user sees it: by it commands are grayed.
  DebugState ShownState() const { return shownState; }
  // True if the value of the expression under the mouse can be shown now.
  bool WantsValueTips() const;

  // Group: calls from the session.
  bool ShowExecution(const std::string& file, int line) override;
  void RemoveExecution(const std::string& file) override;
  int AddBreakMark(const std::string& file, int line) override;
  void RemoveBreakMark(const std::string& file, int handle) override;
  int BreakMarkLine(const std::string& file, int handle) override;
  std::optional<CaretPlace> Caret() override;
  std::string ExpressionAtCaret() override;
  int CurrentWatchList() override;
  void ShowWatches(int list) override;
  void ShowWatchValue(int list, int row) override;
  void SelectWatchPage(int list) override;
  void BreakpointsChanged() override;
  void ClearStack() override;
  void AddStackRow(const GdbFrame& frame) override;
  bool ShowsStack() override;
  void ShowStackPage() override;
  void ShowValueTip(const std::string& text) override;
  void AppendToConsole(const std::string& line) override;
  void RunStateChanged() override;
  void Say(const std::string& text) override;
  void OpenDialog(DebugDialog which) override;

  // A line for the program, below its output; shown only as long as the program reads from there.
  mavro::Panel inputBar;
  mavro::Label inputLabel;
  mavro::Edit input;

 private:
  CppEditor* EditorOf(const std::string& file) const;
  // Of a file's breakpoints, or of all.
  void ShowBreakLooks(const std::string& ofFile);
  void AskWatch();
  void AskParameters();
  void OnActivated(mavro::NotifyArgs& args);
  void OnBottomPage(mavro::NotifyArgs& args);
  void OnStackRow(mavro::NotifyArgs& args);
  void OnInputKey(mavro::KeyArgs& args);
  void OnInputResized(mavro::NotifyArgs& args);

  MainForm& form;
  bool isActive = false;
  DebugState shownState = DebugState::cNotRunning;
  int stackFill = -1;  // the result list's count of clearings when the stack was put there
  std::vector<int> stackLevels;  // of its rows
  DebugDlg* console = nullptr;   // while it is open
  BreakEditor* breakEditor = nullptr;
};

}  // namespace zendry
