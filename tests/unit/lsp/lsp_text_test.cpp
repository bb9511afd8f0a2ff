#include "lsp/LspText.h"

#include <gtest/gtest.h>

#include <climits>

namespace zendry {
namespace {

using enum LspColumns;

LspText TextOf(const std::string& text) {
  return LspText("file:///a.cpp", "/a.cpp", text);
}

// "ä" has two bytes and one column, the last character four bytes and two columns.
const std::string cMixed = "a\u00e4\U0001F600b\nsecond";

TEST(LspText, Utf16Columns_CountSurrogates) {
  const LspText text = TextOf(cMixed);
  const int positions[] = {0, 1, 3, 3, 7, 8, 8};
  for (int column = 0; column < 7; ++column)
    EXPECT_EQ(text.PositionOf({0, column}, cUtf16), positions[column]) << column;
}

TEST(LspText, Utf8Columns_CountBytes) {
  const LspText text = TextOf(cMixed);
  for (int column : {0, 1, 3, 7, 8}) EXPECT_EQ(text.PositionOf({0, column}, cUtf8), column);
  EXPECT_EQ(text.PositionOf({0, 2}, cUtf8), 1) << "within a character";
}

TEST(LspText, PlaceOf_IsTheWayBack) {
  const LspText text = TextOf(cMixed);
  for (const LspColumns columns : {cUtf16, cUtf8})
    for (int position : {0, 1, 3, 7, 8, 9, 12, 15})
      EXPECT_EQ(text.PositionOf(text.PlaceOf(position, columns), columns), position);
  EXPECT_EQ(text.PlaceOf(8, cUtf16), (LspPlace{0, 5}));
  EXPECT_EQ(text.PlaceOf(8, cUtf8), (LspPlace{0, 8}));
}

TEST(LspText, PlacesOutside_AreClamped) {
  const LspText text = TextOf("ab\ncd");
  EXPECT_EQ(text.PositionOf({0, 2}, cUtf16), 2);
  EXPECT_EQ(text.PositionOf({0, 3}, cUtf16), 2) << "after the line's end";
  EXPECT_EQ(text.PositionOf({0, INT_MAX}, cUtf16), 2);
  EXPECT_EQ(text.PositionOf({1, 1}, cUtf16), 4);
  EXPECT_EQ(text.PositionOf({2, 0}, cUtf16), 5) << "after the last line";
  EXPECT_EQ(text.PositionOf({INT_MAX, 0}, cUtf16), 5);
  EXPECT_EQ(text.PositionOf({-1, 5}, cUtf16), 0);
  EXPECT_EQ(text.PositionOf({0, -1}, cUtf16), 0);
  EXPECT_EQ(text.PlaceOf(99, cUtf16), (LspPlace{1, 2}));
}

TEST(LspText, AllLineEnds_Count) {
  const LspText text = TextOf("a\nb\r\nc\rd");
  EXPECT_EQ(text.LineText(0), "a");
  EXPECT_EQ(text.LineText(1), "b");
  EXPECT_EQ(text.LineText(2), "c");
  EXPECT_EQ(text.LineText(3), "d");
  EXPECT_EQ(text.LineText(4), "");
  EXPECT_EQ(text.LineFromPosition(5), 2);
  EXPECT_EQ(text.PositionOf({1, 9}, cUtf16), 3) << "the end of a line is before its CR LF";
}

TEST(LspText, BytesThatAreNoUtf8_CountOneEach) {
  const LspText text = TextOf(
      "\xff\x80"
      "a\xf0\x9f");
  EXPECT_EQ(text.PositionOf({0, 2}, cUtf16), 2);
  EXPECT_EQ(text.PlaceOf(5, cUtf16), (LspPlace{0, 5}));
}

TEST(LspText, Replace_ChangesLinesAndAsksForNewTags) {
  LspText text = TextOf("one\ntwo\nthree");
  text.parsed = true;
  text.SetCaret(12);
  text.Replace(4, 8, "");
  EXPECT_EQ(text.View(), "one\nthree");
  EXPECT_EQ(text.LineText(1), "three");
  EXPECT_FALSE(text.parsed);
  EXPECT_EQ(text.CaretPosition(), 9);
  text.ReplaceAll("");
  EXPECT_EQ(text.PositionOf({3, 3}, cUtf16), 0);
}

TEST(LspText, ReplaceInABodyThatWasPassedOver_KeepsTheTags) {
  LspText text = TextOf("void f() { a }");
  text.bodies.Put({{10, 13}});
  text.parsed = true;
  text.Replace(12, 12, ".");
  EXPECT_TRUE(text.parsed);
  text.Replace(12, 13, "->b");
  EXPECT_TRUE(text.parsed);
  text.Replace(12, 13, "{");
  EXPECT_FALSE(text.parsed);
  text.bodies.Put({{10, 13}});
  text.parsed = true;
  text.ReplaceAll(std::string(text.View()));
  EXPECT_FALSE(text.parsed);
}

}  // namespace
}  // namespace zendry
