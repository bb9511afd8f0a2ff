#include "Action.h"

#include <array>

namespace mavro {

namespace {

int lastAutomaticId = 100;
Action separatorRow{"", 0, cSeparatorRow};
Action endSubmenuRow{"", 0, cEndSubmenuRow};

std::string KeyName(int key) {
  static constexpr std::array<const char*, 9> cNavigation = {
      "Space", "PgUp", "PgDn", "End", "Home", "Left", "Up", "Right", "Dn"};
  static constexpr const char* cPunctuation = ";+<->/`";
  if ((key >= '0' && key <= '9') || (key >= 'A' && key <= 'Z'))
    return std::string(1, static_cast<char>(key));
  if (key == 0x09) return "Tab";
  if (key >= 0x70 && key <= 0x7B) return "F" + std::to_string(key - 0x70 + 1);
  if (key >= 0xBA && key <= 0xC0) return std::string(1, cPunctuation[key - 0xBA]);
  if (key >= 0x20 && key <= 0x28) return cNavigation[static_cast<size_t>(key - 0x20)];
  return "";
}

}  // namespace

bool Action::Execute() const {
  if (!target || !handler) return false;
  (target->*handler)(id);
  return true;
}

Action* ActionList::Add(int id, const std::string& text, int hotkey, int image) {
  if (id == 0) id = ++lastAutomaticId;
  actions.push_back(
      std::make_unique<Action>(Action{text, hotkey, id, image, data, target, handler}));
  rows.push_back(actions.back().get());
  return rows.back();
}

void ActionList::AddSeparator() {
  rows.push_back(&separatorRow);
}

void ActionList::AddSubmenu(const std::string& title) {
  submenus.push_back(std::make_unique<Action>(Action{title, 0, cSubmenuRow}));
  rows.push_back(submenus.back().get());
}

void ActionList::EndSubmenu() {
  rows.push_back(&endSubmenuRow);
}

void ActionList::AddRow(Action* action) {
  rows.push_back(action);
}

Action* ActionList::Find(int id) const {
  for (const auto& action : actions)
    if (action->id == id) return action.get();
  return nullptr;
}

std::string HotKeyText(int hotkey) {
  if (hotkey == 0) return "";
  std::string text;
  if (hotkey & cControlKey) text += "+Ctrl";
  if (hotkey & cAltKey) text += "+Alt";
  if (hotkey & cShiftKey) text += "+Shift";
  text += "+" + KeyName(hotkey & 0xFFFF);
  text[0] = '\t';
  return text;
}

}  // namespace mavro
