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

TEST(MarkControlBytes, BytesThatBeginNoSequence_TakeNothingWithThem) {
  EXPECT_EQ(MarkControlBytes("a\x9b"), "a<9b>");
  EXPECT_EQ(MarkControlBytes("\xc1\x9b"), "\xc1<9b>");
  EXPECT_EQ(MarkControlBytes("\xf8\x9b\x9c\x9d"), "\xf8<9b><9c><9d>");
  EXPECT_EQ(MarkControlBytes("\xdf\x9b\xef\x9b\x9c\xf7\x9b\x9c\x9d"),
            "\xdf\x9b\xef\x9b\x9c\xf7\x9b\x9c\x9d");
}

TEST(MarkControlBytes, FirstAndLastOfTheControls) {
  EXPECT_EQ(MarkControlBytes("\x1f\x20\x7e\x7f"), "<1f> ~<7f>");
  EXPECT_EQ(MarkControlBytes("\xc2\x80\xc2\x9f\xc2\xa0"), "<80><9f>\xc2\xa0");
  EXPECT_EQ(MarkControlBytes("\xa0"), "\xa0");
}

TEST(MarkControlBytes, BytesAfterTheText_AreNotRead) {
  const std::string_view text = "\r\n\xc2\x9b";
  EXPECT_EQ(MarkControlBytes(text.substr(0, 1)), "<0d>");
  EXPECT_EQ(MarkControlBytes(text.substr(2, 1)), "\xc2");
}

TEST(MarkControlBytes, NeighboursOfTheTurners_Stay) {
  EXPECT_EQ(MarkControlBytes("\xe2\x80\xa9\xe2\x80\xaa"), "\xe2\x80\xa9<U+202A>");
  EXPECT_EQ(MarkControlBytes("\xe2\x80\xae\xe2\x80\xaf"), "<U+202E>\xe2\x80\xaf");
  EXPECT_EQ(MarkControlBytes("\xe2\x81\xa5\xe2\x81\xa6"), "\xe2\x81\xa5<U+2066>");
  EXPECT_EQ(MarkControlBytes("\xe2\x81\xa9\xe2\x81\xaa"), "<U+2069>\xe2\x81\xaa");
}

TEST(MarkControlBytes, TurnersOfDirection_AreMarked) {
  EXPECT_EQ(MarkControlBytes("a\xe2\x80\xae"
                             "b\xe2\x81\xa6"),
            "a<U+202E>b<U+2066>");
}

}  // namespace
}  // namespace zendry
