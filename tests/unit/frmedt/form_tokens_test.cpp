#include "frmedt/FormTokens.h"

#include <gtest/gtest.h>

namespace zendry {
namespace {

using Words = std::vector<std::string>;

std::string Value(std::string text) {
  TrimValue(text);
  return text;
}

TEST(FormTokens, DelimitersEndWords) {
  EXPECT_EQ(Tokenize("this->text = a;\n", 2).words, (Words{"this-", "text", "a"}));
  EXPECT_EQ(Tokenize("a.b,c<d>e(f\n", 2).words, (Words{"a", "b", "c", "d", "e", "f"}));
  EXPECT_EQ(Tokenize("a\x80z\n", 2).words, (Words{"a", "z"}));
  EXPECT_EQ(Tokenize("&a:b-c\n", 2).words, (Words{"&a:b-c"}));
}

TEST(FormTokens, QuotesHideDelimitersAndAreDropped) {
  const LineTokens tokens = Tokenize("b.text = \"a; b\";\n", 2);
  EXPECT_EQ(tokens.words, (Words{"b", "text", "a; b"}));
  EXPECT_EQ(tokens.isQuoted, (std::vector<bool>{false, false, true}));
  EXPECT_EQ(Tokenize("b.t = \"a\\\" b\";\n", 2).words[2], "a\\\" b");
}

TEST(FormTokens, RestBeginsAtTheDelimiterAfterTheLimit) {
  EXPECT_EQ(Tokenize("ok.text = \"x\";\n", 2).rest, " = \"x\";\n");
  EXPECT_EQ(Tokenize("ok\n", 2).rest, "");
}

TEST(FormTokens, LastWordNeedsALineEnd) {
  EXPECT_EQ(Tokenize("int x", 2).words, Words{"int"});
  EXPECT_EQ(Tokenize("int x\n", 2).words, (Words{"int", "x"}));
}

TEST(FormTokens, SeventhWord_IsPassedOver) {
  EXPECT_EQ(Tokenize("a b c d e f\n", 6).words.size(), 6U);
  EXPECT_EQ(Tokenize("a b c d e f g h\n", 6).words.size(), 6U);
}

TEST(FormTokens, LongWordsStayWhole) {
  const std::string word(5000, 'x');
  EXPECT_EQ(Tokenize(word + " b\n", 2).words[0], word);
}

TEST(TrimValue, TakesTheOperatorAndTheEnd) {
  EXPECT_EQ(Value(" = 12;"), "12");
  EXPECT_EQ(Value(".Add(\"x\");\r\n"), "Add(\"x\")");
  EXPECT_EQ(Value("(1);"), "1)");
  EXPECT_EQ(Value(""), "");
  EXPECT_EQ(Value(";"), "");
  EXPECT_EQ(Value("=;"), "");
  EXPECT_EQ(Value(" \t=\t a b ; ;\n"), "a b");
  std::string text = " = 1;";
  EXPECT_EQ(TrimValue(text), '=');
}

}  // namespace
}  // namespace zendry
