#pragma once

#include "EditorLanguage.h"

namespace mavro {

// Colours are blue-green-red integers.

// How light a colour is seen, 0 to 255.
int Lightness(int colour);

// How well one colour is read on another: 1 is not at all, 21 is black on white.
double Contrast(int one, int other);

// A colour made for a light ground, for text on a dark one: the same hue, so light that it
// is read on `ground` nearly as well as on white.
int TextOnDark(int colour, int ground);

// A ground made for a light desktop, for a dark one: a touch of it over `ground`.
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
