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

// The commands in one menu of a control, and their dispatch by id.
class ActionMenu : public object {
 public:
  // Attaches the menu to a control, or detaches it if the control is null.
  virtual void Attach(Control* control) = 0;

  // Calls the first action with this id. Returns 1 if it was handled, 0 if nothing handles it, and
  // the number of actions if none has the id.
  int Dispatch(int id);
  // True if a hotkey of the command may act; false while its item is gray.
  virtual bool IsEnabled(int id) const;
  // An item of an action has been added to the menu or removed from it. The same action may have
  // several items; it can be called as long as one of them remains.
  virtual void ActionAdded(Action* action);
  virtual void ActionRemoved(Action* action);

  std::vector<Action*> actions;  // one entry per item, added when the item is created; not owned
  Control* attached = nullptr;
};

// One row of a menu: a command, or a separator when `action` is null.
class MenuItem : public object {
 public:
  explicit MenuItem(Menu* owner, Action* itsAction = nullptr) : action(itsAction), menu(owner) {}

  // Called by the menu. Enable enables or grays the row, Insert makes it in the native menu, and
  // Detach marks it as not inserted.
  virtual void Enable(bool on);
  virtual void Insert(ActionMenu* into);
  virtual void Detach();
  // Removes the row's commands from the menu that it was inserted into.
  virtual void Withdraw();
  // Shows or hides a check mark before the row.
  void Check(bool on);
  // Changes the text of the action and of the row.
  void SetText(const std::string& newText);
  bool IsSeparator() const;

  bool isSubmenu = false;
  Action* action = nullptr;
  bool enabled = true;
  bool checked = false;
  bool inserted = false;
  Menu* menu;  // the menu that contains it; null for a top-level one
};

// A menu with its items, shown as one entry of a menu bar, as a submenu or as a popup.
class Menu : public MenuItem {
 public:
  Menu();
  explicit Menu(Menu* owner);
  ~Menu() override;

  // Adds the rows of a command table; its marker rows begin and end submenus.
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
  // Grays or enables all items of one action in this menu and its submenus.
  void EnableAction(const Action* which, bool on);

  // The item of a command in this menu or its submenus, or null.
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

// A menu whose commands can also be called by hotkeys of a form.
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
  // Makes the native bar and the accelerators for a form; null destroys both.
  void Attach(Control* control) override;
  bool IsEnabled(int id) const override;

  std::vector<Menu*> menus;

 private:
  void Show(Menu& menu);
  std::unique_ptr<NativeMenuBar> bar;
};

// A popup menu. It is built on first use and kept.
class ContextMenu : public ActionMenu {
 public:
  ContextMenu();
  ~ContextMenu() override;
  // Shows the popup at the point where the control was last clicked; the command is sent to that
  // control.
  void Attach(Control* control) override;

  Menu root;
};

}  // namespace mavro
