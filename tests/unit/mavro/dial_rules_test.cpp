#include "DialRules.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace mavro {
namespace {

constexpr double cPi = 3.141592654;
const double cNan = std::nan("");
const double cInfinite = std::numeric_limits<double>::infinity();

TEST(Quantise, SixtyStepsFromZeroToSixty_GiveAStepOfOne) {
  const DialScale scale;
  EXPECT_EQ(Quantise(scale, 12.4), 12);
  EXPECT_EQ(Quantise(scale, 12.5), 13);
  EXPECT_EQ(Quantise(scale, 0.49), 0);
  EXPECT_EQ(Quantise(scale, 60), 60);
}

TEST(Quantise, OtherRanges_HaveTheirOwnGrid) {
  const DialScale halves{-2, 2, 8};
  EXPECT_EQ(Quantise(halves, 0.3), 0.5);
  EXPECT_EQ(Quantise(halves, -1.8), -2);
  EXPECT_EQ(Quantise(halves, -0.26), -0.5);
  const DialScale thirds{0, 1, 3};
  EXPECT_NEAR(Quantise(thirds, 0.4), 1.0 / 3, 1e-12);
}

TEST(Quantise, OutsideTheRange_IsClamped) {
  EXPECT_EQ(Quantise({}, -5), 0);
  EXPECT_EQ(Quantise({}, 1e9), 60);
  EXPECT_EQ(Quantise({}, cInfinite), 60);
  EXPECT_EQ(Quantise({}, -cInfinite), 0);
}

TEST(Quantise, RangeBackwards_IsARangeToo) {
  const DialScale back{10, 0, 10};
  EXPECT_EQ(Quantise(back, 3.2), 3);
  EXPECT_EQ(Quantise(back, 99), 10);
}

TEST(Quantise, NumbersWithoutSense_GiveTheMinimumOrStayInRange) {
  EXPECT_EQ(Quantise({5, 5, 10}, 7), 5);
  EXPECT_EQ(Quantise({}, cNan), 0);
  EXPECT_EQ(Quantise({0, cInfinite, 10}, 7), 0);
  EXPECT_EQ(Quantise({0, 60, 0}, 12.4), 12.4);
  EXPECT_EQ(Quantise({0, 60, -5}, 99), 60);
  EXPECT_EQ(Quantise({-1e308, 1e308, 7}, 3), -1e308);
}

TEST(AngleOfValue, GoesClockwiseFromLowerLeftToLowerRight) {
  EXPECT_NEAR(AngleOfValue({}, 0), 3 * cPi / 4, 1e-6);
  EXPECT_NEAR(AngleOfValue({}, 30), 3 * cPi / 2, 1e-6);
  EXPECT_NEAR(AngleOfValue({}, 60), 9 * cPi / 4, 1e-6);
  EXPECT_NEAR(AngleOfValue({}, 99), 9 * cPi / 4, 1e-6);
  EXPECT_NEAR(AngleOfValue({5, 5, 1}, 5), 3 * cPi / 4, 1e-6);
  EXPECT_NEAR(AngleOfValue({}, cNan), 3 * cPi / 4, 1e-6);
}

TEST(ValueOfAngle, IsTheInverse) {
  for (double value = 0; value <= 60; value += 7) {
    double angle = AngleOfValue({}, value);
    if (angle > cPi) angle -= 2 * cPi;
    EXPECT_NEAR(ValueOfAngle({}, angle), value, 1e-6);
  }
}

TEST(ValueOfAngle, ScaleThatBeginsElsewhere) {
  EXPECT_NEAR(ValueOfAngle({10, 20, 1}, 3 * cPi / 2), 15, 1e-6);
  EXPECT_NEAR(ValueOfAngle({-30, -10, 1}, 3 * cPi / 2), -20, 1e-6);
  EXPECT_NEAR(AngleOfValue({10, 20, 1}, 15), 3 * cPi / 2, 1e-6);
}

TEST(ValueOfAngle, InTheGap_IsTheNearerEnd) {
  EXPECT_EQ(ValueOfAngle({}, cPi / 2 + 0.1), 0);
  EXPECT_EQ(ValueOfAngle({}, cPi / 2 - 0.1), 60);
  EXPECT_EQ(ValueOfAngle({}, cPi / 4 + 0.01), 60);
  EXPECT_EQ(ValueOfAngle({}, 3 * cPi / 4 - 0.01), 0);
}

TEST(ValueOfAngle, Ends_OfTheAngles) {
  EXPECT_NEAR(ValueOfAngle({}, cPi), 10, 1e-6);
  EXPECT_NEAR(ValueOfAngle({}, -cPi), 10, 1e-6);
  EXPECT_NEAR(ValueOfAngle({}, 0), 50, 1e-6);
}

TEST(StepsPerTick, AtMostSoMany_AndBothEndsHaveOne) {
  EXPECT_EQ(StepsPerTick(60, 30), 2);
  EXPECT_EQ(StepsPerTick(60, 10), 6);
  EXPECT_EQ(StepsPerTick(8, 10), 1);
  EXPECT_EQ(StepsPerTick(7, 5), 7);
  EXPECT_EQ(StepsPerTick(100, 10), 10);
  EXPECT_EQ(StepsPerTick(1, 10), 1);
  EXPECT_EQ(StepsPerTick(0, 10), 1);
  EXPECT_EQ(StepsPerTick(-4, 10), 1);
}

TEST(DialText, ShowsNoUselessDigits) {
  EXPECT_EQ(DialText(0), "0");
  EXPECT_EQ(DialText(-0.0), "0");
  EXPECT_EQ(DialText(12), "12");
  EXPECT_EQ(DialText(0.5), "0.5");
  EXPECT_EQ(DialText(1.0 / 3), "0.333333");
  EXPECT_EQ(DialText(1e20), "1e+20");
}

}  // namespace
}  // namespace mavro
