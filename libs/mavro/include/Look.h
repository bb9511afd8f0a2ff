#pragma once

#include <string>
#include <vector>

namespace mavro {

// The colours of the program's windows: the desktop's, or light or dark ones of our own.
enum class Theme : int { cSystem, cLight, cDark };

// Gives all windows the colours of a theme, now and later. It holds until the next call.
void SetTheme(Theme theme);
Theme CurrentTheme();

// Sets the size in points of the letters of menus, tabs, trees, lists and bars, which make room for
// them; 0 means the desktop's size. Fields and captions at fixed places keep the desktop's size. A
// size outside of cLeastLetters to cMostLetters becomes the nearest one inside.
constexpr int cLeastLetters = 6;
constexpr int cMostLetters = 24;
void SetInterfaceLetters(int points);

// The names of the font families of this machine, sorted; each name once.
std::vector<std::string> FontFaces();

}  // namespace mavro
