#include "base/ParseInt.h"

#include <gtest/gtest.h>

namespace zendry {
namespace {

TEST(ParseInt, Number_IsReadAsFarAsItGoes) {
  EXPECT_EQ(ParseInt("12"), 12);
  EXPECT_EQ(ParseInt(" \t\r\n+7;8"), 7);
  EXPECT_EQ(ParseInt("-3x"), -3);
}

TEST(ParseInt, NoDigits_IsZero) {
  for (const char* text : {"", " ", "-", "+", "x1", "--1", "- 1"}) EXPECT_EQ(ParseInt(text), 0);
}

TEST(ParseInt, TooLarge_IsTheLargest) {
  EXPECT_EQ(ParseInt("2147483647"), 2147483647);
  EXPECT_EQ(ParseInt("2147483648"), 2147483647);
  EXPECT_EQ(ParseInt("-2147483648"), -2147483647 - 1);
  EXPECT_EQ(ParseInt("-99999999999999999999999999"), -2147483647 - 1);
}

}  // namespace
}  // namespace zendry
