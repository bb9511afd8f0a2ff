#include "base/ControlBytes.h"

#include <gtest/gtest.h>

namespace zendry {
namespace {

struct MarkCase {
  std::string text, marked;
};
class Marks : public testing::TestWithParam<MarkCase> {};

TEST_P(Marks, Text) {
  EXPECT_EQ(MarkControlBytes(GetParam().text), GetParam().marked);
}

INSTANTIATE_TEST_SUITE_P(
    Table, Marks,
    testing::Values(MarkCase{"", ""}, MarkCase{"plain\ttext\r\n", "plain\ttext\r\n"},
                    MarkCase{"\x1b[31mred", "<1b>[31mred"},
                    MarkCase{"\x1b]8;;x\x07", "<1b>]8;;x<07>"},
                    MarkCase{std::string("a\0b", 3), "a<00>b"}, MarkCase{"\x7f\b", "<7f><08>"},
                    MarkCase{"over\rwritten", "over<0d>written"}, MarkCase{"end\r", "end<0d>"},
                    MarkCase{"\r\r\n", "<0d>\r\n"}));

TEST(MarkControlBytes, ValidUtf8_Stays) {
  EXPECT_EQ(MarkControlBytes("\xc3\xa4 \xe2\x82\xac \xf0\x9f\x98\x80"),
            "\xc3\xa4 \xe2\x82\xac \xf0\x9f\x98\x80");
}

TEST(MarkControlBytes, ControlsOfEightBitTerminals_AreMarked) {
  EXPECT_EQ(MarkControlBytes("\x9b"
                             "31m"),
            "<9b>31m");
  EXPECT_EQ(MarkControlBytes("\xc2\x9b"
                             "31m"),
            "<9b>31m");
}

TEST(MarkControlBytes, InvalidUtf8_Stays) {
  EXPECT_EQ(MarkControlBytes("\xff\xfe\xe2\x28\xc3"), "\xff\xfe\xe2\x28\xc3");
}

TEST(MarkControlBytes, SequenceCutByAControlByte_ControlByteIsMarked) {
  EXPECT_EQ(MarkControlBytes("\xe2\x1b[m"), "\xe2<1b>[m");
}

TEST(MarkControlBytes, TurnersOfDirection_AreMarked) {
  EXPECT_EQ(MarkControlBytes("a\xe2\x80\xae"
                             "b\xe2\x81\xa6"),
            "a<U+202E>b<U+2066>");
}

}  // namespace
}  // namespace zendry
