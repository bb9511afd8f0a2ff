#pragma once

#include "Keys.h"

namespace mavro {

// Virtual key codes by the names of the window system that the framework's rules use.
enum VirtualKey {
  VK_BACK = Key::cBackspace,
  VK_TAB = Key::cTab,
  VK_RETURN = Key::cEnter,
  VK_ESCAPE = Key::cEscape,
  VK_SPACE = Key::cSpace,
  VK_PRIOR = Key::cPageUp,
  VK_NEXT = Key::cPageDown,
  VK_END = Key::cEnd,
  VK_HOME = Key::cHome,
  VK_LEFT = Key::cLeft,
  VK_UP = Key::cUp,
  VK_RIGHT = Key::cRight,
  VK_DOWN = Key::cDown,
  VK_INSERT = Key::cInsert,
  VK_DELETE = Key::cDelete,
  VK_F1 = Key::cF1
};

// The virtual key code of a toolkit key; 0 for keys that have none.
int VirtualKeyOf(int toolkitKey);
// Keys and mouse buttons held down now, as Modifiers bits.
int LiveModifiers();

}  // namespace mavro
