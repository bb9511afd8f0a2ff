#include "EditorColours.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>

#include "StylePalette.h"

namespace mavro {
namespace {

constexpr double cLeastContrast = 4.5;
// In the CIE's space of colours; 2.3 is just noticed between areas side by side.
constexpr double cLeastDifference = 20;
constexpr double cLeastBetweenGrounds = 4;

constexpr Desktop cDesktops[] = {Desktop::cLight, Desktop::cDark};

int On(EditorColour colour, Desktop desktop) {
  return GroundOf(ColourOf(colour), desktop);
}

EditorColour At(int index) {
  return static_cast<EditorColour>(index);
}

std::array<double, 3> Lab(int colour) {
  const auto linear = [colour](int shift) {
    const double share = (colour >> shift & 0xFF) / 255.0;
    return share <= 0.04045 ? share / 12.92 : std::pow((share + 0.055) / 1.055, 2.4);
  };
  const double r = linear(0), g = linear(8), b = linear(16);
  const auto part = [](double value) {
    return value > 0.008856 ? std::cbrt(value) : 7.787 * value + 16.0 / 116;
  };
  const double x = part((0.4124 * r + 0.3576 * g + 0.1805 * b) / 0.9505);
  const double y = part(0.2126 * r + 0.7152 * g + 0.0722 * b);
  const double z = part((0.0193 * r + 0.1192 * g + 0.9505 * b) / 1.089);
  return {116 * y - 16, 500 * (x - y), 200 * (y - z)};
}

double Difference(int one, int other) {
  const auto a = Lab(one), b = Lab(other);
  return std::hypot(a[0] - b[0], a[1] - b[1], a[2] - b[2]);
}

TEST(EditorColours, Rows_AreInTheOrderOfTheirNumbers) {
  ASSERT_EQ(std::size(cEditorColours), static_cast<size_t>(cEndOfColours));
  for (int i = 0; i < cEndOfColours; ++i) EXPECT_EQ(cEditorColours[i].colour, i);
}

TEST(EditorColours, FromRgb_TurnsTheOrder) {
  EXPECT_EQ(FromRgb(0x123456), 0x563412);
}

TEST(EditorColours, EachInk_OnEachGround_IsReadWell) {
  for (const Desktop desktop : cDesktops)
    for (int ink = 0; ink < cEndOfInks; ++ink)
      for (int ground = cEndOfInks; ground < cEndOfGrounds; ++ground)
        EXPECT_GE(Contrast(On(At(ink), desktop), On(At(ground), desktop)), cLeastContrast)
            << "ink " << ink << ", ground " << ground
            << (desktop == Desktop::cDark ? ", dark" : "");
}

TEST(EditorColours, SignsOfBlanks_OnEachGround_AreSeenButWeakerThanText) {
  for (const Desktop desktop : cDesktops)
    for (int ground = cEndOfInks; ground < cEndOfGrounds; ++ground) {
      const double contrast = Contrast(On(cBlankSign, desktop), On(At(ground), desktop));
      EXPECT_GE(contrast, 2.2) << "ground " << ground;
      EXPECT_LT(contrast, cLeastContrast) << "ground " << ground;
    }
}

TEST(EditorColours, Pairs_AreReadWell) {
  constexpr std::pair<EditorColour, EditorColour> cPairs[] = {{cBraceInk, cBraceGround},
                                                              {cMarginInk, cMarginGround},
                                                              {cTipInk, cTipGround},
                                                              {cTipArgumentInk, cTipGround}};
  for (const Desktop desktop : cDesktops)
    for (const auto& [ink, ground] : cPairs)
      EXPECT_GE(Contrast(On(ink, desktop), On(ground, desktop)), cLeastContrast) << ink;
}

TEST(EditorColours, Inks_Differ) {
  for (const Desktop desktop : cDesktops)
    for (int one = 0; one < cEndOfInks; ++one)
      for (int other = 0; other < one; ++other)
        EXPECT_GE(Difference(On(At(one), desktop), On(At(other), desktop)), cLeastDifference)
            << one << " and " << other;
}

TEST(EditorColours, Grounds_DifferFromThatOfTheText) {
  for (const Desktop desktop : cDesktops)
    for (int ground = cTextGround + 1; ground < cEndOfGrounds; ++ground)
      EXPECT_GE(Difference(On(At(ground), desktop), On(cTextGround, desktop)), cLeastBetweenGrounds)
          << ground;
}

TEST(EditorColours, OfASinglePair_TheDarkOneIsMade) {
  const int ground = On(cTextGround, Desktop::cDark);
  EXPECT_EQ(InkOf(0xEF0000, Desktop::cLight, 0xFFFFFF), 0xEF0000);
  EXPECT_EQ(InkOf(0xEF0000, Desktop::cDark, ground), TextOnDark(0xEF0000, ground));
  EXPECT_EQ(InkOf({0xEF0000, 0x123456}, Desktop::cDark, ground), 0x123456);
  EXPECT_EQ(GroundOf(0xE0C0E0, Desktop::cDark), GroundOnDark(0xE0C0E0, ground));
  EXPECT_EQ(GroundOf({0xE0C0E0, 0x123456}, Desktop::cDark), 0x123456);
}

}  // namespace
}  // namespace mavro
