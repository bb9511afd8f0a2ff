#include "StylePalette.h"

#include "EditorColours.h"

#include <algorithm>
#include <cmath>

namespace mavro {

namespace {

constexpr double cLeastContrast = 5.5;
constexpr double cKeptContrast = 0.7;  // share of the colour's contrast on white
constexpr int cLightenSteps = 20;
constexpr int cGroundShare = 48;

int Red(int colour) {
  return colour & 0xFF;
}
int Green(int colour) {
  return colour >> 8 & 0xFF;
}
int Blue(int colour) {
  return colour >> 16 & 0xFF;
}

double Linear(int channel) {
  const double share = channel / 255.0;
  return share <= 0.04045 ? share / 12.92 : std::pow((share + 0.055) / 1.055, 2.4);
}

double Luminance(int colour) {
  return 0.2126 * Linear(Red(colour)) + 0.7152 * Linear(Green(colour)) +
         0.0722 * Linear(Blue(colour));
}

}  // namespace

const StyleRow cCommonStyles[] = {
    {33, ColourOf(cMarginInk), 0, ColourOf(cMarginGround)},  // line numbers
    {34, ColourOf(cBraceInk), StyleRow::cBold, ColourOf(cBraceGround)},
    {35, ColourOf(cLonelyBraceInk), StyleRow::cBold, 0},
    {37, ColourOf(cGuideLine), 0, ColourOf(cTextGround)},
    {StyleRow::cEnd},
};

int Lightness(int colour) {
  return (Red(colour) * 299 + Green(colour) * 587 + Blue(colour) * 114) / 1000;
}

double Contrast(int one, int other) {
  const auto [dark, light] = std::minmax({Luminance(one), Luminance(other)});
  return (light + 0.05) / (dark + 0.05);
}

int Blend(int under, int over, int share) {
  const auto mix = [share](int a, int b) { return a + (b - a) * share / 255; };
  return mix(Red(under), Red(over)) | mix(Green(under), Green(over)) << 8 |
         mix(Blue(under), Blue(over)) << 16;
}

int TextOnDark(int colour, int ground) {
  const double wanted = std::max(cLeastContrast, cKeptContrast * Contrast(colour, 0xFFFFFF));
  for (int step = 0; step <= cLightenSteps; ++step) {
    const int lighter = Blend(colour, 0xFFFFFF, 255 * step / cLightenSteps);
    if (Contrast(lighter, ground) >= wanted) return lighter;
  }
  return 0xFFFFFF;
}

int InkOf(const ColourPair& pair, Desktop desktop, int ground) {
  if (desktop == Desktop::cLight) return pair.light;
  return pair.dark == ColourPair::cMade ? TextOnDark(pair.light, ground) : pair.dark;
}

int GroundOf(const ColourPair& pair, Desktop desktop) {
  if (desktop == Desktop::cLight) return pair.light;
  return pair.dark == ColourPair::cMade ? GroundOnDark(pair.light, ColourOf(cTextGround).dark)
                                        : pair.dark;
}

int GroundOnDark(int colour, int ground) {
  return Blend(ground, colour, cGroundShare);
}

}  // namespace mavro
