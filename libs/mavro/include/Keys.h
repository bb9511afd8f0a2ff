#pragma once

namespace mavro {

// Names of keys, for KeyArgs::key, onKeyPreview and hotkeys. A letter or digit has its ASCII code,
// a letter that of the capital: 'A', '7'. cEnter is also the Enter key of the number pad; cMenu is
// the key for the context menu.
struct Key {
  static constexpr int cBackspace = 0x08, cTab = 0x09, cEnter = 0x0D, cEscape = 0x1B, cSpace = 0x20;
  static constexpr int cShift = 0x10, cControl = 0x11, cAlt = 0x12, cMenu = 0x5D;
  static constexpr int cPageUp = 0x21, cPageDown = 0x22, cEnd = 0x23, cHome = 0x24;
  static constexpr int cLeft = 0x25, cUp = 0x26, cRight = 0x27, cDown = 0x28;
  static constexpr int cInsert = 0x2D, cDelete = 0x2E;
  static constexpr int cF1 = 0x70, cF2 = 0x71, cF3 = 0x72, cF4 = 0x73, cF5 = 0x74, cF6 = 0x75;
  static constexpr int cF7 = 0x76, cF8 = 0x77, cF9 = 0x78, cF10 = 0x79, cF11 = 0x7A, cF12 = 0x7B;
  static constexpr int cSemicolon = 0xBA, cPlus = 0xBB, cComma = 0xBC, cMinus = 0xBD;
  static constexpr int cPeriod = 0xBE, cSlash = 0xBF, cBackquote = 0xC0;
};

}  // namespace mavro
