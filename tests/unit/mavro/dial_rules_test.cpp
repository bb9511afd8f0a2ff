#include "DialRules.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <functional>
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

using Marks = std::vector<int>;

TEST(DialMarks, AtEqualDistances_AtMostSoMany) {
  EXPECT_EQ(DialMarks(60, 10), (Marks{0, 6, 12, 18, 24, 30, 36, 42, 48, 54, 60}));
  EXPECT_EQ(DialMarks(60, 30).size(), 31U);
  EXPECT_EQ(DialMarks(8, 10), (Marks{0, 1, 2, 3, 4, 5, 6, 7, 8}));
  EXPECT_EQ(DialMarks(10, 10).size(), 11U);
  EXPECT_EQ(DialMarks(100, 10).size(), 11U);
  EXPECT_EQ(DialMarks(60, 1), (Marks{0, 60}));
}

TEST(DialMarks, NoSteps_AreOne) {
  for (const int steps : {1, 0, -4}) EXPECT_EQ(DialMarks(steps, 10), (Marks{0, 1})) << steps;
}

TEST(DialMarks, Primes_GetRoundNumbersAndTheEnd) {
  EXPECT_EQ(DialMarks(11, 10), (Marks{0, 2, 4, 6, 8, 10, 11}));
  EXPECT_EQ(DialMarks(61, 10), (Marks{0, 10, 20, 30, 40, 50, 61})) << "60 is too near";
  EXPECT_EQ(DialMarks(67, 10), (Marks{0, 10, 20, 30, 40, 50, 60, 67}));
}

TEST(DialMarks, AnyNumberOfSteps_HasRisingMarksFromEndToEnd) {
  for (const int most : {1, 10, 30})
    for (const int steps : {2, 31, 97, 997, 1000003, 2147483647, 2147483646}) {
      const Marks marks = DialMarks(steps, most);
      EXPECT_LE(marks.size(), static_cast<size_t>(most) + 1) << steps;
      EXPECT_GE(marks.size(), static_cast<size_t>(std::min(steps, most)) / 3 + 1) << steps;
      EXPECT_EQ(marks.front(), 0);
      EXPECT_EQ(marks.back(), steps);
      EXPECT_TRUE(std::is_sorted(marks.begin(), marks.end(), std::less_equal<>())) << steps;
    }
}

TEST(Drawable, EndsThatAreNoNumbers_BecomeSome) {
  const auto ends = [](double min, double max) {
    const DialScale drawable = Drawable({min, max, 5});
    return std::pair(drawable.min, drawable.max);
  };
  EXPECT_EQ(ends(1, 2), std::pair(1.0, 2.0));
  EXPECT_EQ(ends(cNan, 2), std::pair(2.0, 2.0));
  EXPECT_EQ(ends(1, cNan), std::pair(1.0, 1.0));
  EXPECT_EQ(ends(cNan, cNan), std::pair(0.0, 0.0));
  EXPECT_TRUE(std::isfinite(ends(-cInfinite, cInfinite).second * 2));
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
