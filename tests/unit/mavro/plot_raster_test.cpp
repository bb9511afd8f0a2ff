#include "PlotRaster.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

namespace mavro {
namespace {

struct Drawn : testing::Test {
  PlotRaster raster{40, 30};
  int Sum() const {
    int sum = 0;
    for (int y = 0; y < 30; ++y)
      for (int x = 0; x < 40; ++x) sum += raster.Coverage(x, y);
    return sum;
  }
};

TEST_F(Drawn, UprightLine_CoversItsColumnAndNoOther) {
  raster.Line({{10.5, 5}, {10.5, 20}}, 1);
  for (const int y : {5, 12, 19}) EXPECT_EQ(raster.Coverage(10, y), 255) << y;
  EXPECT_EQ(raster.Coverage(10, 4), 128) << "half a thickness more";
  EXPECT_EQ(raster.Coverage(10, 20), 128);
  EXPECT_EQ(raster.Coverage(10, 21), 0);
  EXPECT_EQ(raster.Coverage(9, 12), 0);
  EXPECT_EQ(raster.Coverage(11, 12), 0);
}

TEST_F(Drawn, LevelLine_CoversPartsOfItsRows) {
  raster.Line({{5, 10.25}, {20, 10.25}}, 1);
  EXPECT_EQ(raster.Coverage(12, 9), 64);
  EXPECT_EQ(raster.Coverage(12, 10), 191);
  EXPECT_EQ(raster.Coverage(12, 8), 0);
  EXPECT_EQ(raster.Coverage(12, 11), 0);
}

TEST_F(Drawn, Thickness_IsTheSameInAnyDirection) {
  for (int degrees = 0; degrees < 180; degrees += 5) {
    raster.Clear();
    const double dx = std::cos(degrees * M_PI / 180) * 10, dy = std::sin(degrees * M_PI / 180) * 10;
    raster.Line({{20 - dx, 15 - dy}, {20 + dx, 15 + dy}}, 2);
    EXPECT_NEAR(Sum() / 255.0, 20 * 2 + 4, 3) << degrees;
  }
}

TEST_F(Drawn, DirectionOfALine_DoesntMatter) {
  raster.Line({{3, 4}, {30, 25}}, 1.6);
  const int sum = Sum();
  raster.Line({{30, 25}, {3, 4}}, 1.6);
  EXPECT_EQ(Sum(), sum);
}

TEST_F(Drawn, LineWithoutALength_IsADot) {
  raster.Line({{10.5, 10.5}, {10.5, 10.5}}, 1);
  EXPECT_EQ(raster.Coverage(10, 10), 255);
  EXPECT_EQ(Sum(), 255);
}

TEST_F(Drawn, LinesFarOutside_AreCutWhereTheyEnter) {
  raster.Line({{-1e12, 10.5}, {1e12, 10.5}}, 1);
  for (const int x : {0, 20, 39}) EXPECT_EQ(raster.Coverage(x, 10), 255) << x;
  EXPECT_EQ(Sum(), 40 * 255);
  raster.Clear();
  raster.Line({{-100, -90}, {-50, -5}}, 1);
  raster.Line({{50, -1e12}, {50, 1e12}}, 1);
  raster.Line({{-1e6, 0}, {20, -1e6}}, 1);
  EXPECT_EQ(Sum(), 0);
}

TEST_F(Drawn, LineAcrossACorner_IsCutOnBothAxes) {
  raster.Line({{-20, -20}, {60, 60}}, 1);
  EXPECT_GT(raster.Coverage(0, 0), 200);
  EXPECT_GT(raster.Coverage(29, 29), 200);
  EXPECT_EQ(raster.Coverage(35, 5), 0);
}

TEST_F(Drawn, Overlap_IsNotDarker) {
  raster.Line({{5, 10.25}, {20, 10.25}}, 1);
  raster.Line({{5, 10.25}, {20, 10.25}}, 1);
  EXPECT_EQ(raster.Coverage(12, 9), 64);
}

TEST_F(Drawn, AnyLine_StaysInsideTheRaster) {
  std::mt19937 random(3);
  std::uniform_real_distribution<double> place(-100, 140);
  for (int i = 0; i < 5000; ++i)
    raster.Line({{place(random), place(random)}, {place(random), place(random)}}, 1 + i % 4);
  EXPECT_GT(Sum(), 0);
}

TEST_F(Drawn, Dot_IsRound) {
  raster.Dots({{20.5, 15.5}}, 3);
  EXPECT_EQ(raster.Coverage(20, 15), 255);
  EXPECT_EQ(raster.Coverage(23, 15), 128);
  EXPECT_EQ(raster.Coverage(23, 12), 0);
  EXPECT_NEAR(Sum() / 255.0, M_PI * 9, 1.5);
}

// Dots that are cut, and large ones of several lanes, have the coverage of a whole small one.
TEST_F(Drawn, DotsAtTheEdges_AreCut) {
  const double radius = 3;
  raster.Dots({{20.5, 15.5}, {0.5, 0.5}, {39.5, 29.5}, {-100, 5}, {5, 1e12}}, radius);
  for (int y = 0; y <= 4; ++y)
    for (int x = 0; x <= 4; ++x) {
      EXPECT_NEAR(raster.Coverage(x, y), raster.Coverage(20 + x, 15 + y), 1);
      EXPECT_NEAR(raster.Coverage(39 - x, 29 - y), raster.Coverage(20 - x, 15 - y), 1);
    }
  EXPECT_EQ(raster.Coverage(0, 15), 0) << "nothing of the right edge";
  PlotRaster large(200, 200);
  large.Dots({{100.5, 100.5}}, 20);
  EXPECT_EQ(large.Coverage(100, 81), 255);
  EXPECT_EQ(large.Coverage(81, 100), 255);
  EXPECT_EQ(large.Coverage(100, 79), 0);
  EXPECT_EQ(large.Coverage(121, 100), 0);
}

TEST_F(Drawn, PaintTo_MixesAtTheEdges) {
  const Bitmap bitmap(40, 30);
  raster.Line({{5, 10.25}, {20, 10.25}}, 1);
  raster.PaintTo(bitmap, 0xFF8000);
  EXPECT_EQ(bitmap.Row(9)[12], 0x40402000u) << "multiplied by the alpha";
  EXPECT_EQ(bitmap.Row(8)[12], 0u);
  raster.Clear();
  raster.Line({{5, 10.5}, {20, 10.5}}, 3);
  raster.PaintTo(bitmap, 0x0000FF);
  EXPECT_EQ(bitmap.Row(10)[12], 0xFF0000FFu);
}

}  // namespace
}  // namespace mavro
