#include "SciImages.h"

#include <iterator>

namespace mavro {

const char* const cBookmarkImage = R"xpm(/* XPM */
static const char *image[] = {
"12 14 4 1",
"  c None",
". c #204A87",
"o c #729FCF",
"+ c #3465A4",
"  ........  ",
"  .ooo+++.  ",
"  .ooo+++.  ",
"  .ooo+++.  ",
"  .ooo+++.  ",
"  .ooo+++.  ",
"  .ooo+++.  ",
"  .ooo+++.  ",
"  .ooo+++.  ",
"  .ooo+++.  ",
"  .oo  ++.  ",
"  .o    +.  ",
"  .      .  ",
"            "
};
)xpm";

const char* const cErrorImage = R"xpm(/* XPM */
static const char *image[] = {
"13 13 4 1",
"  c None",
". c #A40000",
"+ c #CC2222",
"o c #FFFFFF",
"    .....    ",
"   .+++++.   ",
"  .+++++++.  ",
" .+oo+++oo+. ",
".++ooo+ooo++.",
".+++ooooo+++.",
".++++ooo++++.",
".+++ooooo+++.",
".++ooo+ooo++.",
" .+oo+++oo+. ",
"  .+++++++.  ",
"   .+++++.   ",
"    .....    "
};
)xpm";

const char* const cArrowImage = R"xpm(/* XPM */
static const char *image[] = {
"13 13 3 1",
"  c None",
". c #3A6B0A",
"+ c #73B81E",
"      .      ",
"      ..     ",
"      .+.    ",
"      .++.   ",
" .....++++.  ",
" .+++++++++. ",
" .++++++++++.",
" .+++++++++. ",
" .....++++.  ",
"      .++.   ",
"      .+.    ",
"      ..     ",
"      .      "
};
)xpm";

const char* const cDiscImage = R"xpm(/* XPM */
static const char *image[] = {
"13 13 3 1",
"  c None",
". c #A40000",
"+ c #DD3333",
"    .....    ",
"   .+++++.   ",
"  .+++++++.  ",
" .+++++++++. ",
".+++++++++++.",
".+++++++++++.",
".+++++++++++.",
".+++++++++++.",
".+++++++++++.",
" .+++++++++. ",
"  .+++++++.  ",
"   .+++++.   ",
"    .....    "
};
)xpm";

const char* const cRingImage = R"xpm(/* XPM */
static const char *image[] = {
"13 13 3 1",
"  c None",
". c #A40000",
"+ c #DD3333",
"    .....    ",
"   .+++++.   ",
"  .++   ++.  ",
" .+       +. ",
".++       ++.",
".+         +.",
".+         +.",
".+         +.",
".++       ++.",
" .+       +. ",
"  .++   ++.  ",
"   .+++++.   ",
"    .....    "
};
)xpm";

namespace {

constexpr int cLetterRows = 6, cLetterColumns = 6;
constexpr int cLetterTop = 4, cLetterLeft = 4;  // in the disc

// A disc of this rim and ground with a letter on it.
struct ListSign {
  const char* rim;
  const char* ground;
  const char* letter[cLetterRows];
};

constexpr ListSign cListSigns[cListPictures] = {
    {"#204A87", "#4A80C0", {"      ", "ww ww ", "w w  w", "w w  w", "w w  w", "w w  w"}},
    {"#5C3566", "#8F6AA0", {"  www ", " w    ", "wwww  ", " w    ", " w    ", " w    "}},
    {"#8F5902", "#C17D11", {" www  ", "w   w ", "w     ", "w     ", "w   w ", " www  "}},
    {"#3A6B0A", "#5E9A1E", {"wwwww ", "w     ", "wwww  ", "w     ", "w     ", "wwwww "}},
    {"#3A6B0A", "#5E9A1E", {"      ", " www  ", "w   w ", "wwwww ", "w     ", " wwww "}},
    {"#0B6566", "#258C8E", {"wwwww ", "  w   ", "  w   ", "  w   ", "  w   ", "  w   "}},
    {"#A40000", "#CC3A3A", {" w w  ", "wwwww ", " w w  ", " w w  ", "wwwww ", " w w  "}},
    {"#555753", "#7E827A", {"w   w ", "ww  w ", "w w w ", "w  ww ", "w   w ", "w   w "}},
    {"#2E3436", "#646A68", {"w  w  ", "w w   ", "ww    ", "ww    ", "w w   ", "w  w  "}},
    {"#204A87", "#4A80C0", {"      ", "w   w ", " w w  ", "  w   ", " w w  ", "w   w "}}};

constexpr const char* cDisc[] = {
    "     ....     ", "   ..oooo..   ", "  .oooooooo.  ", " .oooooooooo. ", " .oooooooooo. ",
    ".oooooooooooo.", ".oooooooooooo.", ".oooooooooooo.", ".oooooooooooo.", " .oooooooooo. ",
    " .oooooooooo. ", "  .oooooooo.  ", "   ..oooo..   ", "     ....     "};

}  // namespace

std::string ListPicture(int number) {
  const ListSign& sign = cListSigns[number - 1];
  std::string text = "/* XPM */\nstatic const char *image[] = {\n\"14 14 4 1\",\n\"  c None\",\n";
  text += "\". c " + std::string(sign.rim) + "\",\n\"o c " + sign.ground;
  text += "\",\n\"w c #FFFFFF\",\n";
  for (int row = 0; row < static_cast<int>(std::size(cDisc)); ++row) {
    std::string line = cDisc[row];
    const int y = row - cLetterTop;
    for (int x = 0; y >= 0 && y < cLetterRows && x < cLetterColumns; ++x)
      if (sign.letter[y][x] == 'w') line[static_cast<size_t>(cLetterLeft + x)] = 'w';
    text += "\"" + line + "\",\n";
  }
  return text + "};\n";
}

}  // namespace mavro
