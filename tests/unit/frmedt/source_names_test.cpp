#include "frmedt/SourceNames.h"

#include <gtest/gtest.h>

namespace zendry {
namespace {

TEST(SourceNames, AWord_BeginsWithNoDigit) {
  for (const char* word : {"a", "_", "button1", "B2", "\xC3\xA4"})
    EXPECT_TRUE(IsWord(word)) << word;
  for (const char* other : {"", "1a", "a b", "a-b", "a.b", "a::b"})
    EXPECT_FALSE(IsWord(other)) << other;
}

TEST(SourceNames, AClassName_MayHaveItsNamespaces) {
  for (const char* name : {"Button", "mavro::Button", "a::b::C"})
    EXPECT_TRUE(IsClassName(name)) << name;
  for (const char* other : {"", "::Button", "mavro::", "a:b", "a::::b", "Button;", "Two Words"})
    EXPECT_FALSE(IsClassName(other)) << other;
}

TEST(SourceNames, BetweenQuotes_NothingEndsTheTextEarly) {
  EXPECT_EQ(BetweenQuotes("plain"), "plain");
  EXPECT_EQ(BetweenQuotes("say \"hi\""), "say \\\"hi\\\"");
  EXPECT_EQ(BetweenQuotes("say \\\"hi\\\""), "say \\\"hi\\\"") << "it is safe already";
  EXPECT_EQ(BetweenQuotes("a\\nb"), "a\\nb");
  EXPECT_EQ(BetweenQuotes("C:\\"), "C:\\\\");
  EXPECT_EQ(BetweenQuotes("C:\\\\"), "C:\\\\");
  EXPECT_EQ(BetweenQuotes("\\\\\""), "\\\\\\\"");
  EXPECT_EQ(BetweenQuotes(""), "");
}

}  // namespace
}  // namespace zendry
