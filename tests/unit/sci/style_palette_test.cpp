#include "StylePalette.h"

#include <gtest/gtest.h>

namespace mavro {
namespace {

constexpr int cDark = 0x232323;

TEST(StylePalette, Contrast_OfBlackAndWhite_Is21) {
  EXPECT_NEAR(Contrast(0, 0xFFFFFF), 21, 0.01);
  EXPECT_NEAR(Contrast(0x123456, 0x123456), 1, 0.01);
  EXPECT_EQ(Contrast(0x0000FF, 0xFFFFFF), Contrast(0xFFFFFF, 0x0000FF));
}

TEST(StylePalette, TextOnDark_EveryColour_IsReadable) {
  for (const int colour : {0, 0x101010, 0x808080, 0x3F703F, 0x7F7F00, 0xEF0000, 0x7F00, 0x9F00,
                           0x804080, 0x700F7F, 0xFFFFFF, 0x0000FF})
    for (const int ground : {0, cDark, 0x404040})
      EXPECT_GE(Contrast(TextOnDark(colour, ground), ground), 5.5) << colour;
}

TEST(StylePalette, TextOnDark_BlackIsTheLightest) {
  EXPECT_GT(Lightness(TextOnDark(0, cDark)), Lightness(TextOnDark(0x808080, cDark)));
}

TEST(StylePalette, TextOnDark_KeepsTheHue) {
  const int blue = TextOnDark(0xEF0000, cDark);  // blue-green-red
  EXPECT_GT(blue >> 16 & 0xFF, blue & 0xFF);
  const int green = TextOnDark(0x7F00, cDark);
  EXPECT_GT(green >> 8 & 0xFF, green & 0xFF);
}

TEST(StylePalette, GroundOnDark_StaysDark) {
  EXPECT_LT(Lightness(GroundOnDark(0xE0C0E0, cDark)), 100);
  EXPECT_NE(GroundOnDark(0xE0C0E0, cDark), cDark);
}

TEST(StylePalette, Lightness_WeighsTheChannels) {
  EXPECT_EQ(Lightness(0x0000FF), 76);   // red
  EXPECT_EQ(Lightness(0x00FF00), 149);  // green
  EXPECT_EQ(Lightness(0xFF0000), 29);   // blue
  EXPECT_EQ(Lightness(0xFFFFFF), 255);
}

TEST(StylePalette, Shares_OfTextAndGround) {
  EXPECT_EQ(TextOnDark(0, 0), 0xD8D8D8) << "17 of 20 steps to white";
  EXPECT_EQ(GroundOnDark(0xFFFFFF, 0), 0x303030) << "48 of 255";
  EXPECT_EQ(TextOnDark(0xFFFFFF, 0xFFFFFF), 0xFFFFFF) << "nothing is readable on white";
}

TEST(StylePalette, PairOfColours_IsForTheDesktop) {
  const ColourPair both{0x102030, 0xA0B0C0};
  EXPECT_EQ(InkOf(both, Desktop::cLight, 0), 0x102030);
  EXPECT_EQ(InkOf(both, Desktop::cDark, 0), 0xA0B0C0);
  EXPECT_EQ(GroundOf(both, Desktop::cLight), 0x102030);
  EXPECT_EQ(GroundOf(both, Desktop::cDark), 0xA0B0C0);
  const ColourPair made{0, ColourPair::cMade};
  EXPECT_EQ(InkOf(made, Desktop::cDark, 0), TextOnDark(0, 0));
}

TEST(StylePalette, Blend_EndsAndMiddle) {
  EXPECT_EQ(Blend(0x102030, 0xFFFFFF, 0), 0x102030);
  EXPECT_EQ(Blend(0x102030, 0xFFFFFF, 255), 0xFFFFFF);
  EXPECT_EQ(Blend(0, 0xFEFEFE, 128), 0x7F7F7F);
}

TEST(StylePalette, CommonStyles_EndAndNameTheFour) {
  int rows = 0;
  for (const StyleRow* row = cCommonStyles; row->style < StyleRow::cEnd; ++row) ++rows;
  EXPECT_EQ(rows, 4);
  const int numbers[] = {33, 34, 35, 37};
  const int flags[] = {0, StyleRow::cBold, StyleRow::cBold, 0};
  for (int i = 0; i < rows; ++i) {
    EXPECT_EQ(cCommonStyles[i].style, numbers[i]);
    EXPECT_EQ(cCommonStyles[i].flags, flags[i]);
  }
}

}  // namespace
}  // namespace mavro
