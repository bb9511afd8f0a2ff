#include "tags/ShortText.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>

namespace zendry {
namespace {

// Around the length from which a text has a block of its own.
TEST(ShortText, EachLength_IsKept) {
  for (size_t length = 0; length <= 40; ++length) {
    const std::string text(length, 'x');
    const ShortText kept(text);
    EXPECT_EQ(kept.View(), text);
    EXPECT_EQ(kept.size(), length);
    EXPECT_EQ(kept.empty(), length == 0);
  }
}

TEST(ShortText, CopiesAndMoves_HaveTheirOwnText) {
  for (const std::string text : {"short", "a text that is longer than fifteen bytes"}) {
    ShortText first(text);
    ShortText copy = first;
    first = "other";
    EXPECT_EQ(copy, text);
    const ShortText moved = std::move(copy);
    EXPECT_EQ(moved, text);
    copy = moved;
    EXPECT_EQ(copy, moved);
    copy = std::string_view(copy).substr(2);
    EXPECT_EQ(copy, text.substr(2));
  }
}

TEST(ShortText, ComparesByItsBytes) {
  EXPECT_LT(ShortText("a"), ShortText("ab"));
  EXPECT_LT(ShortText("abcdefghijklmnopq"), "b");
  EXPECT_NE(ShortText("fifteen letters"), ShortText("fifteen letters "));
  EXPECT_EQ(ShortText(std::string_view("a\0b", 3)).size(), 3U);
  EXPECT_EQ("a" + ShortText("b") + "c", "abc");
}

}  // namespace
}  // namespace zendry
