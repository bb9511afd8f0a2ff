#include "base/TextMark.h"

#include <gtest/gtest.h>

namespace zendry {
namespace {

// Files of older versions hold these marks.
TEST(TextMark, KnownTexts_HaveTheMarksOfFnv1a) {
  EXPECT_EQ(TextMark(""), 0xcbf29ce484222325u);
  EXPECT_EQ(TextMark("a"), 0xaf63dc4c8601ec8cu);
  EXPECT_EQ(TextMark("foobar"), 0x85944171f73967e8u);
  EXPECT_NE(TextMark(std::string_view("a\0", 2)), TextMark("a"));
}

TEST(TextMark, Hexadecimal_HasAlways16Digits) {
  EXPECT_EQ(HexadecimalMark(0), "0000000000000000");
  EXPECT_EQ(HexadecimalMark(0x85944171f73967e8u), "85944171f73967e8");
}

}  // namespace
}  // namespace zendry
