// SPDX-License-Identifier: MIT-0
#include "roman.h"

#include <gtest/gtest.h>

TEST(Roman, SmallNumbers) {
  EXPECT_EQ(Roman(1), "I");
  EXPECT_EQ(Roman(4), "IV");
  EXPECT_EQ(Roman(9), "IX");
}

TEST(Roman, EveryDigit) {
  EXPECT_EQ(Roman(1994), "MCMXCIV");
  EXPECT_EQ(Roman(3999), "MMMCMXCIX");
}

TEST(Roman, NumbersWithoutNumerals_AreEmpty) {
  EXPECT_EQ(Roman(0), "");
  EXPECT_EQ(Roman(-5), "");
  EXPECT_EQ(Roman(4000), "");
}
