#pragma once

#include <memory>
#include <string>
#include <vector>

#include "Action.h"

namespace mavro {

class Control;
class Form;
class Menu;
class NativeMenu;
class NativeMenuBar;

// The commands that can be reached through one menu of a control, and their dispatch by id.
class ActionMenu : public object {
 public:
  // Ties the menu to a control, or unties it with null.
  virtual void Attach(Control* control) = 0;

  // Calls the first action with this id: 1 when it was handled, 0 when nothing handles it, the
  // number of actions when there is none with the id.
  int Dispatch(int id);
  // Whether a hotkey of the command may act: false while its item is gray.
  virtual bool IsEnabled(int id) const;
  // An item of an action has come into the menu or gone from it. The same action may stand in
  // several places; it is reached as long as one is left.
  virtual void ActionAdded(Action* action);
  virtual void ActionRemoved(Action* action);

  std::vector<Action*> actions;  // one entry an item, filled as items are created; not owned
  Control* attached = nullptr;
};

// One row of a menu: a command, or a separator when `action` is null.
class MenuItem : public object {
 public:
  explicit MenuItem(Menu* owner, Action* itsAction = nullptr) : action(itsAction), menu(owner) {}

  // Called by the menu: grays the row, makes it in the native menu, forgets it there.
  virtual void Enable(bool on);
  virtual void Insert(ActionMenu* into);
  virtual void Detach();
  // Takes the row's commands out of the menu that it was inserted into.
  virtual void Withdraw();
  // Shows a mark before the row, or takes it away.
  void Check(bool on);
  // Changes the action's text and what the menu shows.
  void SetText(const std::string& newText);
  bool IsSeparator() const;

  bool isSubmenu = false;
  Action* action = nullptr;
  bool enabled = true;
  bool checked = false;
  bool inserted = false;
  Menu* menu;  // the menu it stands in; null for a top-level one
};

// A menu with its items, shown as one entry of a menu bar, as a submenu or as a popup.
class Menu : public MenuItem {
 public:
  Menu();
  explicit Menu(Menu* owner);
  ~Menu() override;

  // Adds the rows of a command table; submenus nest through its marker rows.
  void Fill(ActionList& list);
  MenuItem* AddItem(Action* action);
  MenuItem* AddSeparator();
  Menu* AddMenu(const std::string& newTitle);
  int GetMenuCount() const { return static_cast<int>(items.size()); }
  MenuItem* GetMenu(int i) const;
  void SetTitle(const std::string& newTitle);
  void Remove(int i);
  void Clear();

  // Grays or enables all items.
  void Enable(bool on) override;
  void Insert(ActionMenu* into) override;
  void Detach() override;
  void Withdraw() override;
  // Grays or enables the items of one action wherever it stands below this menu.
  void EnableAction(const Action* which, bool on);

  // The item of a command in this menu or below, or null.
  const MenuItem* FindItem(int id) const;

  std::string title;
  std::vector<std::unique_ptr<MenuItem>> items;
  ActionMenu* attachedMenu = nullptr;
  std::unique_ptr<NativeMenu> hmenu;
};

// One entry of a form's accelerator table.
struct Accelerator {
  int flags = 0;  // HotKeyFlag bits
  int key = 0;    // virtual key code
  int command = 0;
};

// A menu whose commands are reached by hotkeys of a form as well.
class AccelMenu : public ActionMenu {
 public:
  ~AccelMenu() override;
  void Attach(Control* control) override;
  void ActionAdded(Action* action) override;
  void ActionRemoved(Action* action) override;

  std::vector<Accelerator> accelerators;

 private:
  void FillTable();
};

// The menu bar of a form.
class MenuBar : public AccelMenu {
 public:
  MenuBar();
  ~MenuBar() override;
  // Adds a top-level menu, also while the bar is attached; not owned.
  void Add(Menu* menu);
  // With a form makes the native bar and the accelerators; with null takes both down.
  void Attach(Control* control) override;
  bool IsEnabled(int id) const override;

  std::vector<Menu*> menus;

 private:
  void Show(Menu& menu);
  std::unique_ptr<NativeMenuBar> bar;
};

// A popup menu. Built on first use, kept for the next.
class ContextMenu : public ActionMenu {
 public:
  ContextMenu();
  ~ContextMenu() override;
  // Shows the popup where the control was last clicked; the command arrives at that control.
  void Attach(Control* control) override;

  Menu root;
};

}  // namespace mavro
