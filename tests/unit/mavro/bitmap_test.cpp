#include "Bitmap.h"

#include <gtest/gtest.h>

namespace mavro {
namespace {

TEST(Bitmap, OfASize_HasTransparentPixels) {
  const Bitmap bitmap(3, 2, 1.5);
  EXPECT_FALSE(bitmap.IsEmpty());
  EXPECT_EQ(bitmap.Width(), 3);
  EXPECT_EQ(bitmap.Height(), 2);
  EXPECT_EQ(bitmap.PixelRatio(), 1.5);
  for (int y = 0; y < 2; ++y)
    for (int x = 0; x < 3; ++x) EXPECT_EQ(bitmap.Row(y)[x], 0u);
  bitmap.Row(1)[0] = 7;
  EXPECT_EQ(bitmap.Row(0)[3], 7u) << "rows follow each other";
}

TEST(Bitmap, CopiesShareTheirPixels) {
  const Bitmap bitmap(1, 1);
  const Bitmap copy = bitmap;
  EXPECT_EQ(copy, bitmap);
  EXPECT_NE(Bitmap(1, 1), bitmap);
}

TEST(Bitmap, ImpossibleSizes_AreEmpty) {
  for (const auto& [width, height] :
       {std::pair(0, 1), {1, 0}, {-1, 1}, {1, -1}, {1 << 30, 1 << 30}, {(8 << 10) + 1, 8 << 10}}) {
    const Bitmap bitmap(width, height);
    EXPECT_TRUE(bitmap.IsEmpty()) << width << ' ' << height;
    EXPECT_EQ(bitmap.Width(), 0);
    EXPECT_EQ(bitmap.Height(), 0);
    EXPECT_EQ(bitmap.PixelRatio(), 1);
  }
}

TEST(Bitmap, MostPixels) {
  EXPECT_TRUE(Bitmap::IsPossible(8 << 10, 8 << 10));
  EXPECT_FALSE(Bitmap::IsPossible(8 << 10, (8 << 10) + 1));
  EXPECT_TRUE(Bitmap::IsPossible(Bitmap::cMaxPixels, 1));
  EXPECT_FALSE(Bitmap::IsPossible(Bitmap::cMaxPixels + 1, 1));
  EXPECT_FALSE(Bitmap::IsPossible(INT64_MAX, INT64_MAX));
}

}  // namespace
}  // namespace mavro
