#pragma once

#include <memory>
#include <string>
#include <vector>

#include "Handlers.h"
#include "Keys.h"

namespace mavro {

// Accelerator flags in the high bits of a hotkey; its low 16 bits are one of Key's codes.
enum HotKeyFlag { cShiftKey = 0x40000, cControlKey = 0x80000, cAltKey = 0x100000 };

using ActionHandler = void (object::*)(int id);

// One command. Menus, accelerator tables and tool bars are views of it. Owned by the list that made
// it.
struct Action {
  std::string text;  // menu text with its "&" mnemonic
  int hotkey = 0;    // HotKeyFlags and a key: cControlKey | 'N', or Key::cF5; 0 for none
  int id = 0;        // command id, above 2 and below 0x1000
  int image = -2;    // index in the tool bar's strip; -2 when none was given
  int data = 0;
  object* target = nullptr;  // not owned; null means that nothing handles the command
  ActionHandler handler = nullptr;

  // Calls the handler with the command's id; false if there is none.
  bool Execute() const;
};

// The ids of rows that are not commands.
enum RowId { cSubmenuRow = -2, cSeparatorRow = -1, cEndSubmenuRow = 0 };

// A table of commands with one target and one handler, and the layout in which menus show them.
// A derived class sets the target in its constructor and then adds its rows in order.
class ActionList : public object {
 public:
  ActionList() = default;

  // Sets target and handler for the actions that are added from now on.
  template <class Target, class Class>
  void SetTarget(Target* newTarget, void (Class::*newHandler)(int)) {
    detail::CheckMayHandle<Class>();
    if constexpr (detail::cMayHandle<Class>) {
      target = static_cast<Class*>(newTarget);
      handler = static_cast<ActionHandler>(newHandler);
    }
  }

  // Adds a command. An id of 0 takes the next number of a counter shared by all lists, 101 first.
  // The returned action is owned by the list.
  Action* Add(int id, const std::string& text, int hotkey = 0, int image = -2);
  void AddSeparator();
  // Begins and ends a submenu. Nesting is resolved by Menu::Fill.
  void AddSubmenu(const std::string& title);
  void EndSubmenu();
  // Adds an action of another list; it keeps its own target and owner.
  void AddRow(Action* action);

  // The commands of this list, in the order added; owned.
  const std::vector<std::unique_ptr<Action>>& Actions() const { return actions; }
  // The menu layout: commands of this and of other lists, and marker rows; not owned.
  const std::vector<Action*>& Rows() const { return rows; }
  // The command with this id, or null.
  Action* Find(int id) const;

 private:
  std::vector<std::unique_ptr<Action>> actions;
  std::vector<std::unique_ptr<Action>> submenus;  // the title rows, kept apart from the commands
  std::vector<Action*> rows;
  int data = 0;
  object* target = nullptr;
  ActionHandler handler = nullptr;
};

// The right-hand column of a menu item: a tab and, say, "Ctrl+N"; empty for no hotkey.
std::string HotKeyText(int hotkey);

}  // namespace mavro
