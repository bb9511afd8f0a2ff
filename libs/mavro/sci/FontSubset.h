#pragma once

#include <cstdint>
#include <functional>
#include <set>
#include <string>
#include <vector>

namespace mavro {

// Gives a table of a font file by its tag of four letters; empty if the font has none.
using FontTable = std::function<std::string(const char* tag)>;

// The facts of a font that a document needs. Lengths are in thousandths of the letters' size.
struct FontFacts {
  int ascent = 0, descent = 0;  // the descent is negative
  int left = 0, bottom = 0, right = 0, top = 0;
  std::vector<int> widths;  // by glyph
};

// Reads them; false if a table is missing or cut off.
bool ReadFontFacts(const FontTable& table, FontFacts& facts);

// A font file with the outlines of some glyphs only, and of those that they are made of. All glyphs
// keep their numbers; the outlines of the others are empty. Empty if the font has no such outlines
// or is damaged.
std::string SubsetFont(const FontTable& table, std::set<uint16_t> glyphs);

}  // namespace mavro
