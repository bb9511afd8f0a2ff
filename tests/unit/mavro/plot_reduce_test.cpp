#include "PlotReduce.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <map>
#include <random>

namespace mavro {
namespace {

const double cNan = std::nan("");
const double cInfinite = std::numeric_limits<double>::infinity();

// A raster on which a unit is a pixel, y upwards.
PlotView Unit(int width, int height) {
  return {{0, double(width)}, {0, double(height)}, width, height};
}

PlotSeries Points(std::vector<double> x, std::vector<double> y) {
  return {"", PlotStyle::cLines, Color(), std::move(x), std::move(y)};
}

std::vector<PlotStroke> All(const PlotSeries& series, const PlotView& view) {
  return Reduced(series, {0, series.y.size()}, view);
}

TEST(Reduced, FewPoints_AreJoinedAsTheyAre) {
  const auto strokes = All(Points({1, 5, 9}, {2, 4, 0}), Unit(10, 10));
  const std::vector<PlotStroke> wanted = {{{1, 8}, {5, 6}}, {{5, 6}, {9, 10}}};
  EXPECT_EQ(strokes, wanted);
}

TEST(Reduced, ManyInOneColumn_AreOneStrokeFromTheLowestToTheHighest) {
  const auto strokes = All(Points({4.1, 4.2, 4.3, 4.9}, {3, 9, 1, 5}), Unit(10, 10));
  const std::vector<PlotStroke> wanted = {{{4.5, 1}, {4.5, 9}}};
  EXPECT_EQ(strokes, wanted);
}

TEST(Reduced, OnlyUpOrDownInOneColumn_IsAStrokeBetweenTheEnds) {
  const auto strokes = All(Points({4.1, 4.2, 4.3, 4.9}, {1, 3, 5, 9}), Unit(10, 10));
  const std::vector<PlotStroke> wanted = {{{4.1, 9}, {4.9, 1}}};
  EXPECT_EQ(strokes, wanted);
}

TEST(Reduced, TwoInOneColumn_KeepTheirOrder) {
  const auto strokes = All(Points({4.1, 4.9}, {3, 9}), Unit(10, 10));
  const std::vector<PlotStroke> wanted = {{{4.1, 7}, {4.9, 1}}};
  EXPECT_EQ(strokes, wanted);
}

TEST(Reduced, ColumnsThatDontTouch_AreJoined) {
  const auto strokes =
      All(Points({1.1, 1.2, 1.3, 2.1, 2.2, 2.3}, {2, 1, 3, 7, 6, 8}), Unit(10, 10));
  const std::vector<PlotStroke> wanted = {
      {{1.5, 7}, {1.5, 9}}, {{1.3, 7}, {2.1, 3}}, {{2.5, 2}, {2.5, 4}}};
  EXPECT_EQ(strokes, wanted);
}

TEST(Reduced, Gaps_InterruptTheLine) {
  for (const double gap : {cNan, cInfinite, -cInfinite}) {
    const std::vector<PlotStroke> wanted = {{{1, 9}, {2, 8}}, {{4, 6}, {5, 5}}};
    EXPECT_EQ(All(Points({1, 2, 3, 4, 5}, {1, 2, gap, 4, 5}), Unit(10, 10)), wanted);
    EXPECT_EQ(All(Points({1, 2, gap, 4, 5}, {1, 2, 3, 4, 5}), Unit(10, 10)), wanted);
  }
}

TEST(Reduced, PointBetweenGaps_IsADot) {
  const std::vector<PlotStroke> wanted = {{{3, 7}, {3, 7}}};
  EXPECT_EQ(All(Points({1, 3, 5}, {cNan, 3, cNan}), Unit(10, 10)), wanted);
  EXPECT_EQ(All(Points({3}, {3}), Unit(10, 10)), wanted);
  EXPECT_TRUE(All(Points({1, 2}, {cNan, cNan}), Unit(10, 10)).empty());
  EXPECT_TRUE(All(Points({}, {}), Unit(10, 10)).empty());
}

TEST(Reduced, PointsOutside_KeepOnlyWhatLeadsIn) {
  const auto strokes =
      All(Points({-9, -3, -1, 5, 11, 20, 30}, {0, 9, 1, 5, 2, 0, 9}), Unit(10, 10));
  const std::vector<PlotStroke> wanted = {{{-1, 9}, {5, 5}}, {{5, 5}, {11, 8}}};
  EXPECT_EQ(strokes, wanted);
}

TEST(Reduced, FromOneSideToTheOther_IsALine) {
  const std::vector<PlotStroke> wanted = {{{-5, 9}, {15, 1}}};
  EXPECT_EQ(All(Points({-5, 15}, {1, 9}), Unit(10, 10)), wanted);
}

// Of random curves with jumps and gaps: in each column the strokes go as high and as low as the
// points.
TEST(Reduced, KeepsEveryExtremeOfEveryColumn) {
  std::mt19937 random(7);
  std::uniform_real_distribution<double> value(0, 50), step(0, 0.4), chance(0, 1);
  for (int round = 0; round < 50; ++round) {
    PlotSeries series;
    std::map<int, std::pair<double, double>> extremes;
    double x = 0;
    for (int i = 0; i < 2000; ++i) {
      x += step(random) * (round % 5 + 0.01);
      if (x >= 200) break;
      const double y = chance(random) < 0.02 ? cNan : value(random);
      series.x.push_back(x);
      series.y.push_back(y);
      if (std::isnan(y)) continue;
      auto& [low, high] = extremes.try_emplace(static_cast<int>(x), y, y).first->second;
      low = std::min(low, y);
      high = std::max(high, y);
    }
    const PlotView view = Unit(200, 50);
    std::map<int, std::pair<double, double>> shown;
    const auto strokes = All(series, view);
    for (const PlotStroke& stroke : strokes)
      for (const PlotPoint& point : {stroke.from, stroke.to}) {
        const double y = 50 - point.y;
        auto& [low, high] = shown.try_emplace(static_cast<int>(point.x), y, y).first->second;
        low = std::min(low, y);
        high = std::max(high, y);
      }
    for (const auto& [column, wanted] : extremes) {
      ASSERT_NEAR(shown[column].first, wanted.first, 1e-9) << round << " column " << column;
      ASSERT_NEAR(shown[column].second, wanted.second, 1e-9) << round << " column " << column;
    }
    EXPECT_LE(strokes.size(), 3u * 200 + 200);
  }
}

TEST(Reduced, MillionPoints_HaveAFewStrokesForEachColumn) {
  PlotSeries series;
  for (int i = 0; i < 1000000; ++i) series.y.push_back(std::sin(i * 0.37) * 20 + 25);
  PlotView view = Unit(800, 50);
  view.x = {0, 999999};
  EXPECT_LE(All(series, view).size(), 1600u);
}

TEST(Reduced, HugeNumbers_StayFinite) {
  PlotView view = Unit(100, 100);
  view.x = {-1e300, 1e300};
  view.y = {1e-290, 2e-290};
  for (const PlotStroke& stroke :
       All(Points({-1.7e308, 0, 1.7e308}, {1e300, 1.5e-290, -1e300}), view)) {
    EXPECT_TRUE(std::isfinite(stroke.from.x) && std::isfinite(stroke.from.y));
    EXPECT_TRUE(std::isfinite(stroke.to.x) && std::isfinite(stroke.to.y));
  }
}

TEST(PartInView, SortedSeries_IsCutToItsNeighbours) {
  const PlotSeries series = Points({0, 1, 2, 3, 4, 5, 6}, {0, 0, 0, 0, 0, 0, 0});
  PlotView view = Unit(10, 10);
  view.x = {2, 4};
  EXPECT_EQ(PartInView(series, true, view), (PlotPart{1, 6}));
  view.x = {2.5, 2.6};
  EXPECT_EQ(PartInView(series, true, view), (PlotPart{2, 4}));
  view.x = {-5, -1};
  EXPECT_EQ(PartInView(series, true, view), (PlotPart{0, 1}));
  view.x = {7, 9};
  EXPECT_EQ(PartInView(series, true, view), (PlotPart{6, 7}));
  EXPECT_EQ(PartInView(series, false, view), (PlotPart{0, 7}));
  EXPECT_EQ(PartInView(PlotSeries(), true, view), PlotPart());
}

TEST(ExtentOf, CountsPointsWithAPlaceOnly) {
  const PlotExtent extent = ExtentOf(Points({1, 2, 3, cInfinite}, {5, cNan, -2, 9}));
  EXPECT_EQ(extent.x, (PlotRange{1, 3}));
  EXPECT_EQ(extent.y, (PlotRange{-2, 5}));
  EXPECT_TRUE(extent.any);
  EXPECT_FALSE(ExtentOf(Points({cNan, 1}, {1, cNan})).any);
}

TEST(ExtentOf, KnowsSortedSeries) {
  EXPECT_TRUE(ExtentOf(Points({-3, -3, 5}, {0, 0, 0})).sorted);
  EXPECT_FALSE(ExtentOf(Points({-3, -4, 5}, {0, 0, 0})).sorted);
  EXPECT_FALSE(ExtentOf(Points({-3, cNan, 5}, {0, 0, 0})).sorted);
  EXPECT_TRUE(ExtentOf(Points({1, 2}, {cNan, 0})).sorted);
  EXPECT_TRUE(ExtentOf(Points({}, {3, 1, 2})).sorted) << "without x they are counted";
}

TEST(Thinned, KeepsTheEndsOfAllAndTheLengthOfFew) {
  const std::vector<PlotStroke> all(10, {{0, 0}, {60, 40}});
  EXPECT_EQ(Thinned(all, 1000, 1e9), all);
  EXPECT_EQ(Thinned(all, 500, 50), all) << "a stroke counts what can be seen of it";
  const auto thinned = Thinned(all, 999, 1e9);
  ASSERT_EQ(thinned.size(), 15u);
  EXPECT_EQ(thinned[0], all[0]);
  EXPECT_EQ(thinned[1], (PlotStroke{{0, 0}, {0, 0}}));
  EXPECT_EQ(thinned[2], (PlotStroke{{60, 40}, {60, 40}}));
  EXPECT_EQ(thinned[3], all[0]);
}

TEST(Dots, OneForEachPixel) {
  const PlotSeries series = Points({1.1, 1.9, 2.0, -1, 5, 3, 10}, {1.5, 1.6, 1.5, 5, 11, cNan, 10});
  const std::vector<PlotPoint> wanted = {{1.1, 8.5}, {2, 8.5}, {10, 0}};
  EXPECT_EQ(Dots(series, {0, 7}, Unit(10, 10)), wanted);
}

}  // namespace
}  // namespace mavro
