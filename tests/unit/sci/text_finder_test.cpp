#include "TextFinder.h"

#include <gtest/gtest.h>

#include "SearchState.h"

namespace mavro {
namespace {

std::string Places(const SearchTerm& term, std::string_view text) {
  const TextFinder finder(term);
  std::string places;
  for (auto hit = finder.Next(text, 0, text.size()); hit;
       hit = finder.Next(text, hit->end > hit->start ? hit->end : hit->end + 1, text.size()))
    places += std::to_string(hit->start) + "-" + std::to_string(hit->end) + " ";
  return places;
}

TEST(TextFinder, FindsText_WithAndWithoutCase) {
  EXPECT_EQ(Places({"ab"}, "abAB xab"), "0-2 2-4 6-8 ");
  EXPECT_EQ(Places({"ab", true}, "abAB xab"), "0-2 6-8 ");
  EXPECT_EQ(Places({""}, "abc"), "");
  EXPECT_EQ(Places({"abcd"}, "abc"), "");
  EXPECT_EQ(Places({"\xFF\xFE"}, "a\xFF\xFE"), "1-3 ") << "bytes that are no UTF-8";
}

TEST(TextFinder, WholeWord_HasNoLetterBesideIt) {
  EXPECT_EQ(Places({"ab", true, true}, "ab abc xab a_ab ab"), "0-2 16-18 ");
  EXPECT_EQ(Places({"->", true, true}, "a->b"), "1-3 ") << "a sign ends no word";
}

TEST(TextFinder, CaseOfLettersBeyondAscii_IsFolded) {
  EXPECT_EQ(Places({"\u00C4"}, "\u00E4 \u00C4 a"), "0-2 3-5 ");
  EXPECT_EQ(Places({"stra\u00DFe"}, "STRA\u00DFE"), "0-7 ");
  EXPECT_EQ(Places({"\u0416\u0430"}, "\u0436\u0410"), "0-4 ");
  EXPECT_EQ(Places({"\u0391\u03C9"}, "\u03B1\u03A9"), "0-4 ");
  EXPECT_EQ(Places({"\u00C4", true}, "\u00E4"), "");
}

TEST(TextFinder, Expression_GoesLineByLine) {
  EXPECT_EQ(Places({"^a.*$", true, false, true}, "ab\nxa\r\na\rac"), "0-2 7-8 9-11 ");
  EXPECT_EQ(Places({"a.b", true, false, true}, "a\nb"), "") << "no hit is over two lines";
  EXPECT_EQ(Places({"^", true, false, true}, "a\r\nb\n"), "0-0 3-3 5-5 ");
  EXPECT_EQ(Places({"a+", true, true, true}, "aab aa"), "4-6 ");
}

TEST(TextFinder, Last_IsTheNearestBefore) {
  const std::string_view text = "ab ab\nab";
  EXPECT_EQ(TextFinder({"ab"}).Last(text, 0, 8)->start, 6u);
  EXPECT_EQ(TextFinder({"ab"}).Last(text, 0, 7)->start, 3u);
  EXPECT_FALSE(TextFinder({"ab"}).Last(text, 4, 7));
  EXPECT_EQ(TextFinder({"a.", true, false, true}).Last(text, 0, 8)->start, 6u);
  EXPECT_EQ(TextFinder({"a.", true, false, true}).Last(text, 0, 7)->start, 3u);
  EXPECT_EQ(TextFinder({"^a", true, false, true}).Last("a\r\nb", 0, 4)->start, 0u);
  EXPECT_EQ(TextFinder({"\u00C4"}).Last("\u00E4\u00E4", 0, 4)->start, 2u);
}

TEST(TextFinder, Replacement_HasGroups) {
  const TextFinder finder({"(\\w+)=(\\w+)", true, false, true});
  const std::string_view text = "x a=b";
  const auto hit = finder.Next(text, 0, text.size());
  ASSERT_TRUE(hit);
  EXPECT_EQ(finder.Replacement(text, *hit, "\\2=\\1 [\\0] \\9\\n\\t\\\\", "\r\n"),
            "b=a [a=b] \r\n\t\\");
  EXPECT_EQ(TextFinder({"a"}).Replacement(text, *hit, "\\1\\n", "\n"), "\\1\\n");
}

TEST(TextFinder, ABrokenOrEndlessExpression_IsSaid) {
  EXPECT_NE(TextFinder({"(a", true, false, true}).Error(), "");
  EXPECT_EQ(TextFinder({"(a"}).Error(), "");
  const TextFinder endless({"(a+)+[bc]", true, false, true});
  const std::string text = "ab\n" + std::string(80, 'a');
  EXPECT_TRUE(endless.Next(text, 0, text.size()));
  EXPECT_FALSE(endless.GaveUp());
  EXPECT_FALSE(endless.Next(text, 2, text.size()));
  EXPECT_TRUE(endless.GaveUp());
}

TEST(SearchState, History_HasEachTextOnce_TheLastFirst) {
  SearchState state;
  for (const char* text : {"a", "b", "", "a"}) {
    state.findText = text;
    state.Remember();
  }
  EXPECT_EQ(state.history, (std::vector<std::string>{"a", "b"}));
  for (int i = 0; i < 50; ++i) {
    state.findText = std::to_string(i);
    state.Remember();
  }
  EXPECT_EQ(state.history.size(), SearchState::cMostRemembered);
  EXPECT_EQ(state.history.front(), "49");
}

}  // namespace
}  // namespace mavro
