#include "PictureHeader.h"

#include <gtest/gtest.h>

#include "Picture.h"

namespace mavro {
namespace {

using namespace std::string_literals;

TEST(ReadClaimedSize, Bitmap_TellsWidthAndHeight) {
  const std::string head = "BM" + std::string(12, '\0') + "\x28\0\0\0"s;
  EXPECT_EQ(ReadClaimedSize(head + "\x50\xC3\0\0\x50\xC3\0\0"s), (ClaimedSize{50000, 50000}));
  EXPECT_EQ(ReadClaimedSize(head + "\x05\0\0\0\xFE\xFF\xFF\xFF"s), (ClaimedSize{5, 2}));
  EXPECT_EQ(ReadClaimedSize(head + "\0\0\0\x80\0\0\0\x80"s),
            (ClaimedSize{-2147483648LL, 2147483648LL}));
}

TEST(ReadClaimedSize, OldBitmap_HasShortSizes) {
  const std::string head = "BM" + std::string(12, '\0') + "\x0C\0\0\0"s;
  EXPECT_EQ(ReadClaimedSize(head + "\x05\0\x07\0\1\0\x18\0"s), (ClaimedSize{5, 7}));
}

TEST(ReadClaimedSize, Png_TellsWidthAndHeight) {
  const std::string head = "\x89PNG\r\n\x1a\n\0\0\0\rIHDR"s;
  EXPECT_EQ(ReadClaimedSize(head + "\0\0\xC3\x50\0\0\0\x07"s), (ClaimedSize{50000, 7}));
  EXPECT_EQ(ReadClaimedSize(head + "\xFF\xFF\xFF\xFF\0\0\0\x07"s), (ClaimedSize{0xFFFFFFFF, 7}));
}

TEST(ReadClaimedSize, Jpeg_FindsTheFrameAfterOtherSegments) {
  const std::string jpeg =
      "\xFF\xD8\xFF\xE0\0\x04xx\xFF\xFF\xC4\0\x03y\xFF\xC2\0\x11\x08\xC3\x50\0\x10"s;
  EXPECT_EQ(ReadClaimedSize(jpeg), (ClaimedSize{16, 50000}));
}

TEST(ReadClaimedSize, GifAndXpm_TellWidthAndHeight) {
  EXPECT_EQ(ReadClaimedSize("GIF89a\x05\0\x06\0"s), (ClaimedSize{5, 6}));
  EXPECT_EQ(ReadClaimedSize("/* XPM */ static char* a[] = { \"50000 50000 2 1\""),
            (ClaimedSize{50000, 50000}));
}

TEST(ReadClaimedSize, CutHeads_TellNothing) {
  for (const std::string& whole :
       {"BM"s + std::string(30, '\1'), "\x89PNG"s + std::string(30, '\1'), "GIF89a\x05\0\x06\0"s,
        "\xFF\xD8\xFF\xC0\0\x11\x08\0\1\0\1"s})
    for (size_t length = 0; length < 10; ++length)
      EXPECT_FALSE(ReadClaimedSize(whole.substr(0, length))) << length;
}

TEST(ReadClaimedSize, OtherBytes_TellNothing) {
  for (const std::string& bytes :
       {""s, "text"s, std::string(100, '\0'), "/* XPM */"s, "/* XPM */ \"no numbers\""s,
        "\xFF\xD8 broken segment"s, "\xFF\xD8\xFF\xE0\0\0\xFF\xE0\0\0\xFF\xE0\0\0"s})
    EXPECT_FALSE(ReadClaimedSize(bytes)) << bytes;
}

TEST(Bitmap, FiftyThousandSquare_IsNotPossible) {
  EXPECT_FALSE(Bitmap::IsPossible(50000, 50000));
  EXPECT_FALSE(Bitmap::IsPossible(-2147483648LL, 5));
  EXPECT_FALSE(Bitmap::IsPossible(INT64_MAX, INT64_MAX));
  EXPECT_TRUE(Bitmap::IsPossible(1, Bitmap::cMaxPixels));
}

// The fit of a picture in a box.

struct FitRow {
  PictureSize picture, box, fit;
};

TEST(FitProportional, KeepsTheRatioAndRoundsTowardsZero) {
  const FitRow rows[] = {
      {{60, 40}, {200, 200}, {200, 133}},  // 133.33
      {{40, 60}, {200, 200}, {133, 200}},   {{100, 100}, {200, 200}, {200, 200}},
      {{100, 100}, {300, 200}, {200, 200}}, {{100, 100}, {200, 300}, {200, 200}},
      {{3, 2}, {100, 100}, {100, 66}},  // 66.67
      {{2, 3}, {100, 50}, {33, 50}},    // 33.33
      {{2000, 1000}, {10, 10}, {10, 5}},    {{1000, 1}, {10, 10}, {10, 0}},
      {{2, 1}, {200, 100}, {200, 100}},  // equal ratios take the height
  };
  for (const FitRow& row : rows)
    EXPECT_EQ(FitProportional(row.picture, row.box), row.fit)
        << row.picture.width << "x" << row.picture.height;
}

TEST(FitProportional, SizesWithoutExtent_AreEmpty) {
  EXPECT_EQ(FitProportional({0, 5}, {10, 10}), PictureSize{});
  EXPECT_EQ(FitProportional({5, 0}, {10, 10}), PictureSize{});
  EXPECT_EQ(FitProportional({5, 5}, {0, 10}), PictureSize{});
  EXPECT_EQ(FitProportional({5, 5}, {10, -10}), PictureSize{});
  EXPECT_EQ(FitProportional({5, 5}, {-10, 10}), PictureSize{});
  EXPECT_EQ(FitProportional({-5, 5}, {10, 10}), PictureSize{});
  EXPECT_EQ(FitProportional({5, -5}, {10, 10}), PictureSize{});
}

TEST(FitProportional, SizesOfOne) {
  EXPECT_EQ(FitProportional({1, 1}, {10, 10}), (PictureSize{10, 10}));
  EXPECT_EQ(FitProportional({1, 5}, {10, 10}), (PictureSize{2, 10}));
  EXPECT_EQ(FitProportional({5, 1}, {10, 10}), (PictureSize{10, 2}));
  EXPECT_EQ(FitProportional({5, 5}, {1, 10}), (PictureSize{1, 1}));
  EXPECT_EQ(FitProportional({5, 5}, {10, 1}), (PictureSize{1, 1}));
}

TEST(FitProportional, HugeSizes_DoNotOverflow) {
  EXPECT_EQ(FitProportional({INT32_MAX, INT32_MAX}, {INT32_MAX, 7}), (PictureSize{7, 7}));
}

TEST(Explain, EveryResultButLoaded_HasASentence) {
  EXPECT_EQ(Explain(PictureResult::cLoaded), "");
  for (const auto result :
       {PictureResult::cUnreadable, PictureResult::cNotAPicture, PictureResult::cTooLarge})
    EXPECT_NE(Explain(result), "");
}

}  // namespace
}  // namespace mavro
