#pragma once

#include <cstdint>

namespace mavro {

// A colour: 0xRRGGBB, a system colour that follows the current palette, or "the parent's colour".
class Color {
 public:
  // System colours, numbered so that no plain colour equals one.
  enum System : int32_t {
    cWindow = INT32_MIN,
    cWindowText,
    cControl,
    cControlText,
    cControlShadow
  };
  // Plain colours by name.
  enum Plain : int32_t {
    cBlack = 0x000000,
    cBlue = 0x0000FF,
    cCyan = 0x00FFFF,
    cDarkGray = 0x404040,
    cGray = 0x808080,
    cGreen = 0x00FF00,
    cLightGray = 0xC0C0C0,
    cMagenta = 0xFF00FF,
    cOrange = 0xFFA500,
    cPink = 0xFFC0CB,
    cRed = 0xFF0000,
    cWhite = 0xFFFFFF,
    cYellow = 0xFFFF00
  };

  constexpr Color() = default;
  constexpr Color(Plain plain) : value(plain) {}
  constexpr Color(System system) : value(system) {}
  constexpr explicit Color(int32_t rgb) : value(rgb) {}

  // True for the value that means the parent's colour.
  constexpr bool IsDefault() const { return value == -1; }
  constexpr bool IsSystem() const { return value < -1; }
  constexpr int32_t Value() const { return value; }
  friend constexpr bool operator==(Color, Color) = default;

 private:
  int32_t value = -1;
};

}  // namespace mavro
