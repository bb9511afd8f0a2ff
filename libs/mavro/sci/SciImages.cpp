#include "SciImages.h"

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

const char* const cMemberImage = R"xpm(/* XPM */
static const char *image[] = {
"14 14 4 1",
"  c None",
". c #204A87",
"o c #4A80C0",
"w c #FFFFFF",
"     ....     ",
"   ..oooo..   ",
"  .oooooooo.  ",
" .oooooooooo. ",
" .oooooooooo. ",
".ooowwwwwwooo.",
".ooowoowoowoo.",
".ooowoowoowoo.",
".ooowoowoowoo.",
" .oowoowoowo. ",
" .oooooooooo. ",
"  .oooooooo.  ",
"   ..oooo..   ",
"     ....     "
};
)xpm";

const char* const cNameImage = R"xpm(/* XPM */
static const char *image[] = {
"14 14 4 1",
"  c None",
". c #5C3566",
"o c #8F6AA0",
"w c #FFFFFF",
"     ....     ",
"   ..oooo..   ",
"  .oooooooo.  ",
" .oooooooooo. ",
" .oooowwoooo. ",
".oooowwwwoooo.",
".ooowwwwwwooo.",
".ooowwwwwwooo.",
".oooowwwwoooo.",
" .oooowwoooo. ",
" .oooooooooo. ",
"  .oooooooo.  ",
"   ..oooo..   ",
"     ....     "
};
)xpm";

}  // namespace mavro
