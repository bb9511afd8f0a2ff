#pragma once

namespace mavro {

// Virtual key codes that the framework itself looks at. Letters and digits are their ASCII codes.
enum VirtualKey {
  VK_BACK = 0x08,
  VK_TAB = 0x09,
  VK_RETURN = 0x0D,
  VK_ESCAPE = 0x1B,
  VK_SPACE = 0x20,
  VK_PRIOR = 0x21,
  VK_NEXT = 0x22,
  VK_END = 0x23,
  VK_HOME = 0x24,
  VK_LEFT = 0x25,
  VK_UP = 0x26,
  VK_RIGHT = 0x27,
  VK_DOWN = 0x28,
  VK_INSERT = 0x2D,
  VK_DELETE = 0x2E,
  VK_F1 = 0x70
};

// The virtual key code of a toolkit key; 0 for keys that have none.
int VirtualKeyOf(int toolkitKey);
// Keys and mouse buttons held down now, as Modifiers bits.
int LiveModifiers();

}  // namespace mavro
