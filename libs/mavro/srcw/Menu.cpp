#include "Menu.h"

#include <algorithm>

#include "Assert.h"
#include "FormImpl.h"
#include "NativeControls.h"

namespace mavro {

int ActionMenu::Dispatch(int id) {
  for (const Action* action : actions)
    if (action->id == id) return action->Execute() ? 1 : 0;
  return static_cast<int>(actions.size());
}

bool ActionMenu::IsEnabled(int) const {
  return true;
}

void ActionMenu::ActionAdded(Action* action) {
  actions.push_back(action);
}

void ActionMenu::ActionRemoved(Action* action) {
  const auto found = std::find(actions.begin(), actions.end(), action);
  if (found != actions.end()) actions.erase(found);
}

bool MenuItem::IsSeparator() const {
  return !isSubmenu && (!action || action->text == "-");
}

void MenuItem::Enable(bool on) {
  enabled = on;
  if (inserted && !IsSeparator() && !isSubmenu) menu->hmenu->EnableItem(action->id, on);
}

void MenuItem::Check(bool on) {
  checked = on;
  if (inserted && !IsSeparator() && !isSubmenu) menu->hmenu->CheckItem(action->id, on);
}

void MenuItem::Insert(ActionMenu* into) {
  if (inserted) return;
  inserted = true;
  if (IsSeparator()) {
    menu->hmenu->AddSeparator();
    return;
  }
  menu->hmenu->AddItem(action->id, action->text + HotKeyText(action->hotkey));
  into->ActionAdded(action);
  if (!enabled) menu->hmenu->EnableItem(action->id, false);
  if (checked) menu->hmenu->CheckItem(action->id, true);
}

void MenuItem::Detach() {
  inserted = false;
}

void MenuItem::Withdraw() {
  if (inserted && !IsSeparator()) menu->attachedMenu->ActionRemoved(action);
}

void MenuItem::SetText(const std::string& newText) {
  action->text = newText;
  if (inserted) menu->hmenu->SetItemText(action->id, newText + HotKeyText(action->hotkey));
}

Menu::Menu() : Menu(nullptr) {}

Menu::Menu(Menu* owner) : MenuItem(owner) {
  isSubmenu = true;
}

Menu::~Menu() = default;

MenuItem* Menu::AddItem(Action* newAction) {
  items.push_back(std::make_unique<MenuItem>(this, newAction));
  if (inserted) items.back()->Insert(attachedMenu);
  return items.back().get();
}

MenuItem* Menu::AddSeparator() {
  return AddItem(nullptr);
}

Menu* Menu::AddMenu(const std::string& newTitle) {
  auto submenu = std::make_unique<Menu>(this);
  Menu* result = submenu.get();
  result->title = newTitle;
  items.push_back(std::move(submenu));
  if (inserted) result->Insert(attachedMenu);
  return result;
}

// A submenu deeper than the stack is refused; its rows are added to the level above.
void Menu::Fill(ActionList& list) {
  constexpr int cDepth = 10;
  Menu* stack[cDepth] = {this};
  int depth = 0;
  for (Action* row : list.Rows()) switch (row->id) {
      case cSeparatorRow:
        stack[depth]->AddSeparator();
        break;
      case cEndSubmenuRow:
        if (depth == 0) return;
        stack[--depth]->AddSeparator();
        break;
      case cSubmenuRow:
        if (depth + 1 >= cDepth) break;
        stack[depth + 1] = stack[depth]->AddMenu(row->text);
        ++depth;
        break;
      default:
        if (!row->text.empty()) stack[depth]->AddItem(row);
    }
}

MenuItem* Menu::GetMenu(int i) const {
  MAVRO_ASSERT(i >= 0 && i < GetMenuCount());
  return items[static_cast<size_t>(i)].get();
}

void Menu::SetTitle(const std::string& newTitle) {
  title = newTitle;
  if (hmenu) hmenu->SetTitle(newTitle);
}

void Menu::Remove(int i) {
  MenuItem* item = GetMenu(i);
  item->Withdraw();
  if (hmenu && item->inserted) hmenu->RemoveAt(i);
  items.erase(items.begin() + i);
}

void Menu::Clear() {
  while (!items.empty()) Remove(GetMenuCount() - 1);
}

void Menu::Enable(bool on) {
  enabled = on;
  for (const auto& item : items) item->Enable(on);
}

void Menu::EnableAction(const Action* which, bool on) {
  for (const auto& item : items) {
    if (item->isSubmenu)
      static_cast<Menu*>(item.get())->EnableAction(which, on);
    else if (item->action == which)
      item->Enable(on);
  }
}

const MenuItem* Menu::FindItem(int id) const {
  for (const auto& item : items) {
    if (item->isSubmenu) {
      if (const MenuItem* found = static_cast<const Menu*>(item.get())->FindItem(id)) return found;
    } else if (item->action && item->action->id == id) {
      return item.get();
    }
  }
  return nullptr;
}

void Menu::Insert(ActionMenu* into) {
  if (inserted) return;
  inserted = true;
  attachedMenu = into;
  hmenu = MakeNativeMenu();
  hmenu->SetTitle(title);
  for (const auto& item : items) item->Insert(into);
  if (menu && menu->hmenu) menu->hmenu->AddSubmenu(*hmenu, title);
}

void Menu::Withdraw() {
  for (const auto& item : items) item->Withdraw();
}

void Menu::Detach() {
  for (const auto& item : items) item->Detach();
  hmenu.reset();
  attachedMenu = nullptr;
  inserted = false;
}

AccelMenu::~AccelMenu() = default;

void AccelMenu::Attach(Control* ctrl) {
  accelerators.clear();
  if (!ctrl) {
    if (attached) static_cast<Form::Impl*>(attached->impl)->accelerators = nullptr;
    attached = nullptr;
    actions.clear();
    return;
  }
  MAVRO_ASSERT_AS(ctrl->impl->type >= SysImpl::cForm, "ctrl->impl.type>=cForm");
  attached = ctrl;
  FillTable();
}

void AccelMenu::FillTable() {
  accelerators.clear();
  for (const Action* action : actions)
    if (action->hotkey != 0)
      accelerators.push_back(
          {action->hotkey & ~0xFFFF, action->hotkey & 0xFFFF, action->id & 0xFFFF});
  static_cast<Form::Impl*>(attached->impl)->accelerators =
      accelerators.empty() ? nullptr : &accelerators;
}

void AccelMenu::ActionAdded(Action* action) {
  ActionMenu::ActionAdded(action);
  if (attached) FillTable();
}

void AccelMenu::ActionRemoved(Action* action) {
  ActionMenu::ActionRemoved(action);
  if (attached) FillTable();
}

MenuBar::MenuBar() = default;

MenuBar::~MenuBar() {
  if (attached) Attach(nullptr);
}

void MenuBar::Add(Menu* menu) {
  menus.push_back(menu);
  if (attached) Show(*menu);
}

void MenuBar::Show(Menu& menu) {
  menu.Insert(this);
  bar->AddMenu(*menu.hmenu, menu.title);
}

void MenuBar::Attach(Control* ctrl) {
  if (!ctrl) {
    bar.reset();
    for (Menu* menu : menus) menu->Detach();
    AccelMenu::Attach(nullptr);
    return;
  }
  MAVRO_ASSERT_AS(ctrl->impl->hwnd, "ctrl->impl.hwnd");
  MAVRO_ASSERT_AS(ctrl->impl->type > SysImpl::cContainer, "ctrl->impl.type>cContainer");
  bar = MakeNativeMenuBar(ctrl->impl->hwnd);
  for (Menu* menu : menus) Show(*menu);
  AccelMenu::Attach(ctrl);
}

bool MenuBar::IsEnabled(int id) const {
  for (const Menu* menu : menus)
    if (const MenuItem* item = menu->FindItem(id)) return item->enabled;
  return true;
}

ContextMenu::ContextMenu() = default;
ContextMenu::~ContextMenu() = default;

void ContextMenu::Attach(Control* control) {
  if (!control) {
    attached = nullptr;
    return;
  }
  root.Insert(this);
  attached = control;
  root.hmenu->Popup(control->impl->hwnd, control->impl->mouseX, control->impl->mouseY);
}

}  // namespace mavro
