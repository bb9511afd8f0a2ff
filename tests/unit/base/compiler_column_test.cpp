#include <gtest/gtest.h>

#include "base/CompilerColumn.h"

namespace zendry {
namespace {

struct Place {
  const char* text;
  int column;  // of the "@", as gcc 12 prints it
};

class CompilerColumnOfGcc : public testing::TestWithParam<Place> {};

TEST_P(CompilerColumnOfGcc, LeadsToTheLetterThatTheCompilerMeans) {
  const std::string text = GetParam().text;
  EXPECT_EQ(ByteAtColumn(text, GetParam().column), text.find('@'));
}

INSTANTIATE_TEST_SUITE_P(Wide, CompilerColumnOfGcc,
                         testing::Values(Place{"int @", 5}, Place{"@", 1},
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

TEST(CompilerColumn, NeverLeadsBetweenALetterAndItsAccent) {
  EXPECT_EQ(ByteAtColumn("e\u0301x", 1), 0u);
  EXPECT_EQ(ByteAtColumn("e\u0301x", 2), 3u);
}

TEST(CompilerColumn, AfterTheEnd_IsTheEnd) {
  EXPECT_EQ(ByteAtColumn("ab", 3), 2u);
  EXPECT_EQ(ByteAtColumn("ab", 999999), 2u);
  EXPECT_EQ(ByteAtColumn("", 5), 0u);
  EXPECT_EQ(ByteAtColumn("ab", 0), 0u);
  EXPECT_EQ(ByteAtColumn("\xe6\xbc", 9), 2u);  // a letter that is cut off
}

}  // namespace
}  // namespace zendry
