#include "debug/Debugger.h"

#include "debug/DebugSession.h"

namespace zendry {

namespace {

using mavro::cAltKey;
using mavro::cControlKey;
using mavro::cShiftKey;

constexpr CommandRow cRows[] = {
    {cBreakpointCommand, "Set/Remove Breakpoint", cKeyF9},
    {cClearBreakpointsCommand, "Clear All Breakpoints", cControlKey | cShiftKey | cKeyF9},
    {cAddWatchCommand, "Add To Watch", cShiftKey | cKeyF9},
    {cClearWatchesCommand, "Clear Current Watches", 0},
    {mavro::cSeparatorRow},
    {cStepIntoCommand, "Step &Into", cKeyF8},
    {cStepOutCommand, "Step Out", cShiftKey | cKeyF8},
    {cStepOverCommand, "Step &Over", cKeyF10},
    {cRunToCursorCommand, "Run To Cursor", cControlKey | cKeyF10},
    {mavro::cSeparatorRow},
    {cRunCommand, "&Run", cKeyF5},
    {cRunPlainCommand, "&Run Without Debugging", cControlKey | cKeyF5},
    {cPauseCommand, "Pause", cControlKey | cShiftKey | cKeyF5},
    {cStopDebugCommand, "Stop Debugging", cShiftKey | cKeyF5},
    {mavro::cSeparatorRow},
    {cViewBreakpointsCommand, "View Breakpoints", cControlKey | cAltKey | 'B'},
    {cViewStackCommand, "View Call Stack", cControlKey | cAltKey | 'C'},
    {cCommanderCommand, "Open Debug Commander", 0},
    {cParametersCommand, "Set program parameters", 0},
};

}  // namespace

Debugger theDebugger;

Debugger::Debugger() : CommandList(cRows) {}

Debugger::~Debugger() = default;

void Debugger::CarryOut(int) {}

void Debugger::Bind(Project&, Builder&, Shell&, DebugView&) {}

void Debugger::Unbind() {}

DebugState Debugger::State() const {
  return DebugState::cNotRunning;
}

bool Debugger::TakesInput() const {
  return false;
}

void Debugger::Run(With) {}
void Debugger::Step(GdbStep) {}
void Debugger::RunToCursor() {}
void Debugger::Pause() {}
void Debugger::Stop() {}
void Debugger::SendInput(const std::string&) {}
void Debugger::Toggle(const std::string&, int) {}
void Debugger::Reconcile(const std::string&) {}
void Debugger::ReconcileAll() {}
void Debugger::RemoveBreakpoint(int) {}
void Debugger::ClearAll() {}
void Debugger::SetCondition(int, const std::string&) {}
void Debugger::FileOpened(const std::string&) {}
void Debugger::FileClosing(const std::string&) {}
bool Debugger::AddExpression(int, const std::string&) {
  return false;
}
bool Debugger::ChangeExpression(int, int, const std::string&) {
  return false;
}
void Debugger::ClearCurrent() {}
void Debugger::ClearWatches(int) {}
void Debugger::RefreshDisplays() {}

void Debugger::PrintTip(const std::string& expression) {
  tipText = expression;
}

void Debugger::ViewCallStack() {}
void Debugger::SelectFrame(int) {}
void Debugger::Execute(const std::string&) {}

const std::string& Debugger::Params() const {
  static const std::string none;
  return none;
}

void Debugger::SetParams(const std::string&) {}

void Debugger::Reset() {
  breakpoints.Clear();
  watches.Clear();
}

}  // namespace zendry
