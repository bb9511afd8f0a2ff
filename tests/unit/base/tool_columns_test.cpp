#include "base/ToolColumns.h"

#include <gtest/gtest.h>

#include <string>

namespace zendry {
namespace {

struct Place {
  const char* text;
  int column;  // of the "@", as gcc 12 prints it
};

class ToolColumnsOfGcc : public testing::TestWithParam<Place> {};

TEST_P(ToolColumnsOfGcc, LeadToTheLetterThatTheCompilerMeans) {
  const std::string text = GetParam().text;
  EXPECT_EQ(ByteInColumn(text, GetParam().column), text.find('@'));
  EXPECT_EQ(ColumnOfByte(text, text.find('@')), GetParam().column);
}

INSTANTIATE_TEST_SUITE_P(Wide, ToolColumnsOfGcc,
                         testing::Values(Place{"int @", 5}, Place{"@", 1}, Place{"\t@", 9},
                                         Place{"1234567\t@", 9}, Place{"12345678\t@", 17},
                                         Place{"\"\u6f22\u5b57\"; @", 9},  // Chinese
                                         Place{"\t\"\u5b57\"; @", 15},     // after a tab
                                         Place{"\"\u5b57\";\t@", 9},       // before a tab
                                         Place{"/*\u6f22*/\tint @", 13},
                                         Place{"a\u6f22\u5b57 @", 7},
                                         Place{"\"\u00e9\"; @", 6},      // one letter
                                         Place{"\"e\u0301\"; @", 6},     // letter and accent
                                         Place{"\"\u200b\"; @", 5},      // blank without width
                                         Place{"\"\ud55c\"; @", 7},      // Korean
                                         Place{"\"\uff76\"; @", 6},      // half of the usual width
                                         Place{"\"\U0001F600\"; @", 7},  // emoji
                                         Place{"\"\xff\xe9\"; @", 7}));  // no letters

TEST(ToolColumns, NeverLeadBetweenALetterAndItsAccent) {
  EXPECT_EQ(ByteInColumn("e\u0301x", 1), 0u);
  EXPECT_EQ(ByteInColumn("e\u0301x", 2), 3u);
}

TEST(ToolColumns, Outside_IsAnEndOfTheLine) {
  EXPECT_EQ(ByteInColumn("ab", -5), 0u);
  EXPECT_EQ(ByteInColumn("ab", 0), 0u);
  EXPECT_EQ(ByteInColumn("ab", 3), 2u);
  EXPECT_EQ(ByteInColumn("ab", 999999), 2u);
  EXPECT_EQ(ByteInColumn("", 5), 0u);
  EXPECT_EQ(ByteInColumn("\xe6\xbc", 9), 2u);  // a letter that is cut off
  EXPECT_EQ(ColumnOfByte("ab", 0), 1);
  EXPECT_EQ(ColumnOfByte("ab", 2), 3);
  EXPECT_EQ(ColumnOfByte("ab", 99), 3);
  EXPECT_EQ(ColumnOfByte("", 0), 1);
}

TEST(ToolColumns, ByteOfEachLetter_ComesBack) {
  const std::string line = "a\t\xC3\xA9 b\t\tc\xFF";
  for (const size_t byte : {0u, 1u, 2u, 4u, 5u, 6u, 7u, 8u, 9u})
    EXPECT_EQ(ByteInColumn(line, ColumnOfByte(line, byte)), byte) << byte;
}

}  // namespace
}  // namespace zendry
