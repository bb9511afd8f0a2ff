#pragma once

#include <span>

#include "Action.h"

namespace zendry {

// Virtual key codes that the command tables use beside letters, which stand for themselves.
constexpr int cKeySpace = 0x20;
constexpr int cKeyUp = 0x26;
constexpr int cKeyDown = 0x28;
constexpr int cKeyF1 = 0x70;
constexpr int cKeyF2 = 0x71;
constexpr int cKeyF3 = 0x72;
constexpr int cKeyF4 = 0x73;
constexpr int cKeyF5 = 0x74;
constexpr int cKeyF7 = 0x76;
constexpr int cKeyF8 = 0x77;
constexpr int cKeyF9 = 0x78;
constexpr int cKeyF10 = 0x79;
constexpr int cKeyF11 = 0x7A;
constexpr int cKeyF12 = 0x7B;
constexpr int cKeySlash = 0xBF;

// Whether a row's command can be carried out yet. One that can't stands in its menu, grayed.
enum class Offered { cNow, cLater };

// One row of a command table.
struct CommandRow {
  int id = mavro::cSeparatorRow;
  const char* text = "";
  int hotkey = 0;
  Offered offered = Offered::cNow;
};

// Adds the rows in order; ids below 1 stand for the marker rows of mavro::RowId. A command that is
// offered later has no target, so that nothing handles it.
void AddCommands(mavro::ActionList& list, std::span<const CommandRow> rows);

// Whether somebody handles the command: what menus and tool bars offer.
inline bool IsHandled(const mavro::Action* action) {
  return action && action->target;
}

}  // namespace zendry
