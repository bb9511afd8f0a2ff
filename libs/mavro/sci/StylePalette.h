#pragma once

#include "EditorLanguage.h"

namespace mavro {

// Colours are blue-green-red integers.

// The lightness of a colour as the eye sees it, 0 to 255.
int Lightness(int colour);

// The contrast of two colours: 1 can't be read, 21 is black on white.
double Contrast(int one, int other);

// Converts a text colour for light grounds to one for dark grounds: the same hue, so light that its
// text on `ground` is nearly as easy to read as on white.
int TextOnDark(int colour, int ground);

// Converts a ground for light desktops to one for dark desktops: a little of it over `ground`.
int GroundOnDark(int colour, int ground);

enum class Desktop { cLight, cDark };

// The colour of a pair for text on `ground`, and the one for a ground of text.
int InkOf(const ColourPair& pair, Desktop desktop, int ground);
int GroundOf(const ColourPair& pair, Desktop desktop);

// `share` of 255 of a colour over another.
int Blend(int under, int over, int share);

// The rows of braces, line numbers and guides, which every language has.
extern const StyleRow cCommonStyles[];

}  // namespace mavro
