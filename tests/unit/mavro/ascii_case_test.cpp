#include "AsciiCase.h"

#include <gtest/gtest.h>

namespace mavro {
namespace {

TEST(AsciiCase, LettersOnly_HaveTwoCases) {
  EXPECT_TRUE(EqualNoCase("AZaz@[`{", "azAZ@[`{"));
  EXPECT_FALSE(EqualNoCase("@", "`"));
  EXPECT_FALSE(EqualNoCase("[", "{"));
  EXPECT_FALSE(EqualNoCase("\xC4", "\xE4"));
}

TEST(AsciiCase, TextsOfOtherLengths_AreNotEqual) {
  EXPECT_TRUE(EqualNoCase("", ""));
  EXPECT_FALSE(EqualNoCase("a", ""));
  EXPECT_FALSE(EqualNoCase("ab", "a"));
}

}  // namespace
}  // namespace mavro
