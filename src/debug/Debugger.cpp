#include "debug/Debugger.h"

namespace zendry {

namespace {

using mavro::cAltKey;
using mavro::cControlKey;
using mavro::cShiftKey;

using enum Offered;

constexpr CommandRow cRows[] = {
    {cBreakpointCommand, "Set/Remove Breakpoint", cKeyF9, cLater},
    {cClearBreakpointsCommand, "Clear All Breakpoints", cControlKey | cShiftKey | cKeyF9, cLater},
    {cAddWatchCommand, "Add To Watch", cShiftKey | cKeyF9, cLater},
    {cClearWatchesCommand, "Clear Current Watches", 0, cLater},
    {mavro::cSeparatorRow},
    {cStepIntoCommand, "Step &Into", cKeyF8, cLater},
    {cStepOutCommand, "Step Out", cShiftKey | cKeyF8, cLater},
    {cStepOverCommand, "Step &Over", cKeyF10, cLater},
    {cRunToCursorCommand, "Run To Cursor", cControlKey | cKeyF10, cLater},
    {mavro::cSeparatorRow},
    {cRunCommand, "&Run", cKeyF5, cLater},
    {cRunPlainCommand, "&Run Without Debugging", cControlKey | cKeyF5, cLater},
    {cStopDebugCommand, "Stop Debugging", cShiftKey | cKeyF5, cLater},
    {mavro::cSeparatorRow},
    {cViewBreakpointsCommand, "View Breakpoints", cControlKey | cAltKey | 'B', cLater},
    {cViewStackCommand, "View Call Stack", cControlKey | cAltKey | 'C', cLater},
    {cCommanderCommand, "Open Debug Commander", 0, cLater},
    {cParametersCommand, "Set program parameters", 0, cLater},
};

}  // namespace

Debugger theDebugger;

Debugger::Debugger() : CommandList(cRows) {}

void Debugger::CarryOut(int) {}

void Debugger::PrintTip(const std::string& expression) {
  tipText = expression;
}

}  // namespace zendry
