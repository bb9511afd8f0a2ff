#pragma once

#include <span>

#include "Action.h"

namespace zendry {

// Virtual key codes that the command tables use besides letters. The code of a letter is the letter
// itself.
constexpr int cKeySpace = 0x20;
constexpr int cKeyLeft = 0x25;
constexpr int cKeyUp = 0x26;
constexpr int cKeyRight = 0x27;
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

// Says if a command may be carried out while a build handles messages between two files. A command
// that would take away the project or its files during the build is refused, with a beep.
enum class WhileBuilding { cAllowed, cRefused };

// One row of a command table.
struct CommandRow {
  int id = mavro::cSeparatorRow;
  const char* text = "";
  int hotkey = 0;
  WhileBuilding whileBuilding = WhileBuilding::cAllowed;
};

// True, with a beep, while a build runs. For requests that don't come as a command, such as dropped
// files.
bool IsRefusedByBuild();

// A menu's commands, made from a table. Rows with an id below 1 are the marker rows of
// mavro::RowId.
class CommandList : public mavro::ActionList {
 public:
  // `theRows` must outlive it.
  explicit CommandList(std::span<const CommandRow> theRows);

  // Every command comes through here, from any sender. It is refused if a running build doesn't
  // allow it.
  void OnCommand(int id);

 private:
  virtual void CarryOut(int id) = 0;

  const std::span<const CommandRow> rows;
};

// True if the command has a handler. Menus and tool bars offer only such commands.
inline bool IsHandled(const mavro::Action* action) {
  return action && action->target;
}

}  // namespace zendry
