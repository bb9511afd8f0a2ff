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

// Whether a command may be carried out while a build handles messages between two files. What would
// take the project or its files away from under the build is refused, with a beep.
enum class WhileBuilding { cAllowed, cRefused };

// One row of a command table.
struct CommandRow {
  int id = mavro::cSeparatorRow;
  const char* text = "";
  int hotkey = 0;
  Offered offered = Offered::cNow;
  WhileBuilding whileBuilding = WhileBuilding::cAllowed;
};

// True, with a beep, while a build runs: for what arrives by another way than a command, such as
// files that are dropped.
bool IsRefusedByBuild();

// A menu's commands, made from a table. Rows with an id below 1 stand for the marker rows of
// mavro::RowId. A command that is offered later has no target, so that nothing handles it.
class CommandList : public mavro::ActionList {
 public:
  // `theRows` must outlive it.
  explicit CommandList(std::span<const CommandRow> theRows);

  // The way of every command, whoever sends it: asks whether a build that runs allows it.
  void OnCommand(int id);

 private:
  virtual void CarryOut(int id) = 0;

  const std::span<const CommandRow> rows;
};

// Whether somebody handles the command: what menus and tool bars offer.
inline bool IsHandled(const mavro::Action* action) {
  return action && action->target;
}

}  // namespace zendry
