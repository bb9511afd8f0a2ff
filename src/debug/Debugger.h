#pragma once

#include <string>

#include "base/CommandTable.h"

namespace zendry {

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
  cParametersCommand = 1217
};

// The debug session and its commands.
class Debugger : public CommandList {
 public:
  Debugger();

  // Builds and a change of the mode check this first.
  bool IsRunning() const { return running; }
  // Asks the session for the value of the expression under the mouse; it is shown as a tip.
  void PrintTip(const std::string& expression);

  bool running = false;
  std::string tipText;  // the last expression asked for

 private:
  // Ignores commands that need a session that it doesn't have.
  void CarryOut(int id) override;
};

extern Debugger theDebugger;

}  // namespace zendry
