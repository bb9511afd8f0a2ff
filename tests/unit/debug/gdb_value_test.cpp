#include "debug/GdbValue.h"

#include <gtest/gtest.h>

namespace zendry {
namespace {

TEST(GdbValueText, JoinsItsLines) {
  ValueText value;
  value.Begin("{");
  value.Append("  x = 1");
  value.Append("}");
  EXPECT_EQ(value.Take().text, "{  x = 1}");
  value.Begin("5");
  EXPECT_EQ(value.Take().column, "5");
}

TEST(GdbValueText, BeginForgetsWhatWasNotTaken) {
  ValueText value;
  value.Begin("1");
  value.Begin("2");
  const GdbValue taken = value.Take();
  EXPECT_EQ(taken.text + taken.column, "22");
}

TEST(AppendBounded, LimitAndOneMore) {
  std::string text = "ab";
  AppendBounded(text, "cd", 4);
  EXPECT_EQ(text, "abcd");
  AppendBounded(text, "e", 4);
  EXPECT_EQ(text, "abcd...");
  AppendBounded(text, "f", 4);
  EXPECT_EQ(text, "abcd...");
}

TEST(AppendBounded, CutsNoCharacter) {
  std::string text = "ab";
  AppendBounded(text, "c\u20AC", 5);
  EXPECT_EQ(text, "abc  ...");
  std::string bytes;
  AppendBounded(bytes, "\x80\x80\x80\x80\x80\x80\x80\x80", 6);
  EXPECT_EQ(bytes, "\x80\x80\x80\x80\x80\x80...");
  std::string few;
  AppendBounded(few, "\x80\x80\x80", 2);
  EXPECT_EQ(few, "\x80\x80...");
}

TEST(TidyValue, AStringReadsAsItsText) {
  EXPECT_EQ(TidyValue("{_M_dataplus = {_M_p = 0x55 \"text\"}}"), "\"text\"  ");
  EXPECT_EQ(
      TidyValue(
          "{static npos = 1, _M_dataplus = {<A> = {<No data>}, _M_p = 0x55 \"t\"}, _M_n = 1}"),
      "\"t\" , _M_n = 1 ");
}

TEST(TidyValue, AStringInAStructure) {
  EXPECT_EQ(TidyValue("{x = 1, name = {_M_dataplus = {_M_p = 0x55 \"text\"}}, y = {2}}"),
            "{x = 1, name \"text\"  , y = {2}}");
  EXPECT_EQ(TidyValue("S = {name = {_M_dataplus = {_M_p = 0x55 \"text\"}}}"),
            "S = {name =\"text\"  }");
}

TEST(TidyValue, NeedsSixCharactersAfterTheMembersPrefix) {
  EXPECT_EQ(TidyValue("_M_p \"x\""), "_M_p \"x\"");
  EXPECT_EQ(TidyValue("_M_p \"xy\""), "\"xy\"");
}

TEST(TidyValue, OtherValuesStayAsTheyAre) {
  for (const char* value : {"", "5", "{x = {1}, y = 2}", "{_M_impl = {_M_start = 0x1}}", "_M_p",
                            "_M_p 12345", "{_M_dataplus = {_M_p = 0x55}}", "}}}"})
    EXPECT_EQ(TidyValue(value), value);
}

}  // namespace
}  // namespace zendry
