#include "PlotTicks.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>
#include <set>
#include <string>

namespace mavro {
namespace {

const double cNan = std::nan("");
const double cInfinite = std::numeric_limits<double>::infinity();

std::string Labels(const std::vector<PlotTick>& ticks) {
  std::string all;
  for (const PlotTick& tick : ticks) all += (all.empty() ? "" : " ") + tick.label;
  return all;
}

struct StepRow {
  double span;
  int most;
  double step;
};

TEST(TickStep, IsOneTwoOrFiveTimesAPowerOfTen) {
  const StepRow rows[] = {{10, 10, 1},      {10, 9, 2},       {10, 5, 2},        {10, 4, 5},
                          {10, 2, 5},       {10, 1, 10},      {10.1, 1, 20},     {11, 10, 2},
                          {1, 10, 0.1},     {0.003, 4, 1e-3}, {7e9, 5, 2e9},     {1e300, 10, 1e299},
                          {1e-9, 3, 5e-10}, {1, 0, 1},        {2e300, 1, 2e300}, {99, 10, 10}};
  for (const StepRow& row : rows)
    EXPECT_NEAR(TickStep(row.span, row.most) / row.step, 1, 1e-9) << row.span << " by " << row.most;
}

struct LabelRow {
  PlotRange range;
  int most;
  const char* labels;
};

TEST(TicksOf, LabelsShowWhatTheStepNeeds) {
  const LabelRow rows[] = {
      {{0, 10}, 5, "0 2 4 6 8 10"},
      {{-1, 1}, 4, "-1.0 -0.5 0 0.5 1.0"},
      {{0.1, 0.35}, 5, "0.10 0.15 0.20 0.25 0.30 0.35"},
      {{-30, -10}, 2, "-30 -20 -10"},
      {{999000, 999999}, 2, "999000 999500"},
      {{0, 1e6}, 2, "0 5e5 1e6"},
      {{1e6, 2e6}, 2, "1e6 1.5e6 2e6"},
      {{0, 4e-7}, 2, "0 2e-7 4e-7"},
      {{-4e-7, 0}, 2, "-4e-7 -2e-7 0"},
      {{1e9, 1e9 + 2}, 2, "1e9 1.000000001e9 1.000000002e9"},
      {{0, 1e300}, 2, "0 5e299 1e300"},
      {{0.2, 0.8}, 1, ""},
  };
  for (const LabelRow& row : rows) {
    const PlotRange range = row.range;
    EXPECT_EQ(Labels(TicksOf(range, row.most)), row.labels) << range.min << " to " << range.max;
  }
}

TEST(TicksOf, EndsThatAreMultiples_HaveTicksInSpiteOfRounding) {
  EXPECT_EQ(TicksOf({0.1, 0.7}, 6).size(), 7u);  // 0.7 / 0.1 is less than 7
  EXPECT_EQ(TicksOf({0.11, 0.69}, 6).size(), 5u);
}

struct RangeRow {
  double least, largest, min, max;
};

TEST(RangeAround, HasAirAtBothEnds) {
  const RangeRow rows[] = {
      {0, 100, -4, 104},    {5, 5, 4.5, 5.5}, {-5, -5, -5.5, -4.5}, {0, 0, -1, 1},
      {-1, 1, -1.08, 1.08}, {cNan, 1, 0, 1},  {0, cInfinite, 0, 1}, {1e-20, 1e-20, 9e-21, 1.1e-20},
  };
  for (const RangeRow& row : rows) {
    const PlotRange range = RangeAround(row.least, row.largest);
    EXPECT_DOUBLE_EQ(range.min, row.min) << row.least << " to " << row.largest;
    EXPECT_DOUBLE_EQ(range.max, row.max) << row.least << " to " << row.largest;
  }
}

TEST(DrawableRange, IsInOrderFiniteAndWideEnough) {
  EXPECT_EQ(DrawableRange({3, 1}), (PlotRange{1, 3}));
  EXPECT_EQ(DrawableRange({cNan, 1}), PlotRange());
  EXPECT_EQ(DrawableRange({-cInfinite, 1}), PlotRange());
  EXPECT_EQ(DrawableRange({-1.7e308, 1.7e308}), (PlotRange{-1e300, 1e300}));
  EXPECT_EQ(DrawableRange({1e9, 1e9 + 1}), (PlotRange{1e9, 1e9 + 1}));
  for (const double value : {0.0, 1.0, -1e9, 1e300, 1e-300, 5e-324}) {
    const PlotRange range = DrawableRange({value, value});
    EXPECT_LT(range.min, range.max) << value;
    EXPECT_LE(range.min, value);
    EXPECT_GE(range.max, value);
    EXPECT_TRUE(std::isfinite(1 / range.Span())) << value;
    EXPECT_LE(TicksOf(range, 10).size(), 12u) << value;
  }
}

// A fixed width for each sign.
int Wide(const std::string& label) {
  return static_cast<int>(label.size()) * 7;
}

TEST(FitTicks, TakesAsManyAsHaveRoom) {
  EXPECT_EQ(Labels(FitTicks({0, 10}, {300, 0, 0, 10}, Wide)), "0 1 2 3 4 5 6 7 8 9 10");
  EXPECT_EQ(Labels(FitTicks({0, 10}, {100, 0, 0, 10}, Wide)), "0 5 10");
  EXPECT_EQ(FitTicks({0, 10}, {8, 0, 0, 10}, Wide).size(), 1u);
}

TEST(FitTicks, LabelsMovedInwards_CountWhereTheyAre) {
  const TickRoom tight{100, 0, 0, 10};
  EXPECT_EQ(LabelStart(0, 20, tight), 0);
  EXPECT_EQ(LabelStart(100, 20, tight), 80);
  EXPECT_EQ(LabelStart(50, 20, tight), 40);
  EXPECT_EQ(LabelStart(0, 20, {100, 30, 0, 10}), -10);
  EXPECT_EQ(LabelStart(0, 200, tight), 0) << "one that is too long begins with the axis";
}

// The rule of the axes: no two labels touch, each is one of a kind, each tick is in the range.
TEST(FitTicks, LabelsNeverOverlapAndDiffer_InAnyRange) {
  std::mt19937 random(1);
  std::uniform_real_distribution<double> exponent(-290, 299), mantissa(-1, 1);
  std::uniform_int_distribution<int> length(1, 1500);
  for (int i = 0; i < 400; ++i) {
    const double middle = mantissa(random) * std::pow(10, exponent(random));
    const double half = i % 2 ? std::abs(middle) * std::pow(10, mantissa(random) * 11)
                              : std::pow(10, exponent(random));
    const PlotRange range = DrawableRange({middle - half, middle + half});
    const TickRoom room{length(random), 20, 8, 10};
    const std::vector<PlotTick> ticks = FitTicks(range, room, Wide);
    ASSERT_LE(ticks.size(), 80u);
    std::set<std::string> labels;
    int free = -room.before;
    for (const PlotTick& tick : ticks) {
      labels.insert(tick.label);
      const int start =
          LabelStart(TickPixel(range, room.length, tick.value), Wide(tick.label), room);
      ASSERT_GE(start, free) << range.min << " to " << range.max << " on " << room.length;
      free = start + Wide(tick.label) + room.gap;
      ASSERT_GE(tick.value, range.min - range.Span() * 1e-6);
      ASSERT_LE(tick.value, range.max + range.Span() * 1e-6);
    }
    ASSERT_EQ(labels.size(), ticks.size()) << range.min << " to " << range.max;
  }
}

}  // namespace
}  // namespace mavro
