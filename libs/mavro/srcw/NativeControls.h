#pragma once

#include <memory>
#include <string>
#include <vector>

#include "NativeWindow.h"

namespace mavro {

// A menu of the toolkit. A chosen command arrives as WM_COMMAND with lParam 0 at the window the
// menu was shown for.
class NativeMenu {
 public:
  virtual ~NativeMenu() = default;
  virtual void AddItem(int id, const std::string& text) = 0;
  virtual void AddSeparator() = 0;
  // `submenu` is not owned and must outlive this menu.
  virtual void AddSubmenu(NativeMenu& submenu, const std::string& title) = 0;
  virtual void EnableItem(int id, bool on) = 0;
  virtual void CheckItem(int id, bool on) = 0;
  virtual void SetItemText(int id, const std::string& text) = 0;
  virtual void RemoveAt(int position) = 0;
  virtual void SetTitle(const std::string& title) = 0;
  // Shows the menu at a place of `receiver`'s client area and waits; the command is sent to
  // `receiver`.
  virtual void Popup(NativeWindow* receiver, int x, int y) = 0;
  // Sets the window that gets the commands while the menu is in a bar.
  virtual void SetReceiver(NativeWindow* receiver) = 0;
};

class NativeMenuBar {
 public:
  virtual ~NativeMenuBar() = default;
  virtual void AddMenu(NativeMenu& menu, const std::string& title) = 0;
};

std::unique_ptr<NativeMenu> MakeNativeMenu();
std::unique_ptr<NativeMenuBar> MakeNativeMenuBar(NativeWindow* form);

}  // namespace mavro
