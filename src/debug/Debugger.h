#pragma once

#include <memory>
#include <string>

#include "base/CommandTable.h"
#include "debug/Breakpoints.h"
#include "debug/GdbCommands.h"
#include "debug/Watches.h"

namespace zendry {

class Builder;
class DebugSession;
class DebugView;
class Project;
class Shell;

enum DebuggerCommand {
  cBreakpointCommand = 1201,
  cClearBreakpointsCommand = 1202,
  cAddWatchCommand = 1203,
  cClearWatchesCommand = 1204,
  cStepIntoCommand = 1205,
  cStepOutCommand = 1206,
  cStepOverCommand = 1208,
  cRunToCursorCommand = 1209,
  cRunCommand = 1210,
  cRunPlainCommand = 1211,
  cStopDebugCommand = 1212,
  cViewBreakpointsCommand = 1213,
  cViewStackCommand = 1215,
  cCommanderCommand = 1216,
  cParametersCommand = 1217,
  cPauseCommand = 1218
};

// What a debug session does at the moment.
enum class DebugState {
  cNotRunning,
  cStarting,  // gdb reads the program, or the program's terminal opens
  cRunning,   // the program runs, gdb doesn't listen
  cPaused,    // the program has stopped and can go on
  cEnding     // the program has ended or is being stopped; gdb goes next
};

// The debug session and its commands. All functions may be called at any time: what can't be done
// in the present state isn't done, some of it with a beep. None of them waits: gdb's answers come
// later from the idle pass and are reported to the DebugView.
class Debugger : public CommandList {
 public:
  Debugger();
  ~Debugger() override;

  // Whom the session works for; none is owned. Before this call, commands do nothing.
  void Bind(Project& project, Builder& builder, Shell& shell, DebugView& view);
  // The window goes: ends the session, says nothing to it any more.
  void Unbind();

  // Group: state.

  // Builds and a change of the mode check this first.
  bool IsRunning() const { return running; }
  DebugState State() const;
  // True if gdb has answered everything. For tests and measurements.
  bool IsQuiet() const;
  // True if a line can be sent to the program, because it has no terminal of its own.
  bool TakesInput() const;

  // Group: running.

  enum class With { cGdb, cNothing };
  // Builds what is stale, then starts the program, with gdb only in debug mode. A paused program
  // goes on.
  void Run(With with);
  // Starts up to `main` if nothing runs.
  void Step(GdbStep kind);
  void RunToCursor();
  // Pauses the running program until the user lets it go on.
  void Pause();
  // Ends program and gdb, at once and in any state.
  void Stop();
  // Writes a line to a program that has no terminal of its own; see TakesInput.
  void SendInput(const std::string& text);

  // Group: breakpoints; lines count from 0.

  // Adds or removes the breakpoint of a line. Sets the project's mode to debug.
  void Toggle(const std::string& file, int line);
  // Takes the lines of a file's breakpoints from their marks, and drops those whose marks are gone.
  void Reconcile(const std::string& file);
  // The same for all files.
  void ReconcileAll();
  void RemoveBreakpoint(int index);
  void ClearAll();
  void SetCondition(int index, const std::string& condition);
  // A file was opened in a tab: its marks are set again.
  void FileOpened(const std::string& file);
  // A tab is about to go, with its marks.
  void FileClosing(const std::string& file);

  // Group: watches, by list (0 to 3) and row.

  // Appends an expression. Says "Watch contains: " and answers false if the list has it; also false
  // for an empty text.
  bool AddExpression(int list, const std::string& text);
  // An expression was edited in place. An empty text removes the row; the row after the last one
  // adds. False, and nothing has changed, if another row has the text.
  bool ChangeExpression(int list, int row, const std::string& text);
  // Removes all rows of the list in front.
  void ClearCurrent();
  void ClearWatches(int list);
  // Another list came to the front, or its values are wanted again.
  void RefreshDisplays();

  // Group: the rest.

  // Asks for the value of the expression under the mouse; it comes by DebugView::ShowValueTip,
  // unless the mouse has moved on by then. An empty text: nothing is under the mouse. Does nothing
  // unless the program is paused.
  void PrintTip(const std::string& expression);
  // Lists the call stack and brings its page to the front. As long as it can be seen, it is listed
  // anew at each stop.
  void ViewCallStack();
  // The call stack has come to the front again: lists it anew if it is that of an earlier stop.
  void FollowStack();
  // A click on a row of the call stack: its frame becomes the one in which expressions are read.
  void SelectFrame(int level);
  // A command from gdb's console. gdb's lines come by DebugView::AppendToConsole.
  void Execute(const std::string& command);
  const std::string& Params() const;
  void SetParams(const std::string& params);
  // The project is another one: ends the session, forgets breakpoints and watches.
  void Reset();

  Breakpoints breakpoints;
  Watches watches;
  bool running = false;
  std::string tipText;  // the last expression asked for

 private:
  void CarryOut(int id) override;

  std::unique_ptr<DebugSession> session;  // once bound
};

extern Debugger theDebugger;

}  // namespace zendry
