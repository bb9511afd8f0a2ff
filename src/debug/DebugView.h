#pragma once

#include <optional>
#include <string>

#include "debug/GdbListener.h"

namespace zendry {

// The dialogs that a command of the debugger opens.
enum class DebugDialog { cBreakpoints, cWatch, cCommander, cParameters };

// The tab in front: its file's full path and the caret's line, from 0.
struct CaretPlace {
  std::string file;
  int line = 0;
};

// The window as the debug session sees it. The main window implements it, tests fake it. Files are
// full paths with forward slashes. Lines count from 0, except those inside of GdbPlace, which count
// from 1. Texts may hold any bytes: the window marks control bytes before it shows them. A function
// may handle messages, and so bring the session's own calls.
class DebugView {
 public:
  virtual ~DebugView() = default;

  // Group: the text.

  // Opens the file at the line, sets the execution mark there and raises the window. False if the
  // file can't be shown; nothing has changed then and nothing was said.
  virtual bool ShowExecution(const std::string& file, int line) = 0;
  // Removes the execution mark from a file's tab, if it is open; from the tab in front if `file` is
  // empty.
  virtual void RemoveExecution(const std::string& file) = 0;
  // Adds a breakpoint's mark. Its handle, above 0, or -1 if the file isn't open or hasn't the line.
  virtual int AddBreakMark(const std::string& file, int line) = 0;
  virtual void RemoveBreakMark(const std::string& file, int handle) = 0;
  // The mark's line; cMarkGone if its line was deleted, cFileClosed if the file isn't open.
  static constexpr int cMarkGone = -1;
  static constexpr int cFileClosed = -2;
  virtual int BreakMarkLine(const std::string& file, int handle) = 0;
  // Empty if no text is in front.
  virtual std::optional<CaretPlace> Caret() = 0;
  virtual std::string ExpressionAtCaret() = 0;

  // Group: lists and tips. The session's models hold what is shown (Debugger::watches,
  // Debugger::breakpoints).

  // The list whose page is selected, 0 to 3; 0 if it is none.
  virtual int CurrentWatchList() = 0;
  // The list's rows have changed: all are shown anew.
  virtual void ShowWatches(int list) = 0;
  // The value of one row has changed.
  virtual void ShowWatchValue(int list, int row) = 0;
  virtual void SelectWatchPage(int list) = 0;
  // The breakpoints' numbers, places or conditions have changed.
  virtual void BreakpointsChanged() = 0;
  virtual void ClearStack() = 0;
  virtual void AddStackRow(const GdbFrame& frame) = 0;
  // True if the call stack that was listed last can be seen.
  virtual bool ShowsStack() = 0;
  // Brings the call stack's page to the front.
  virtual void ShowStackPage() = 0;
  // Shows "EXPRESSION = VALUE" where the mouse has rested.
  virtual void ShowValueTip(const std::string& text) = 0;
  // One line of gdb for its console; dropped if the console isn't open.
  virtual void AppendToConsole(const std::string& line) = 0;

  // Group: the frame.

  // Debugger::State() has changed, or what SendInput can reach: commands are grayed and ungrayed,
  // the stop button and the input line follow.
  virtual void RunStateChanged() = 0;
  // A sentence for the status line.
  virtual void Say(const std::string& text) = 0;
  virtual void OpenDialog(DebugDialog which) = 0;
};

}  // namespace zendry
