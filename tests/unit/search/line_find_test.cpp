#include "search/LineFind.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <random>

#include "NaiveLines.h"

namespace zendry {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

std::vector<std::string> Lines(std::string_view text, const LineTerm& term) {
  std::vector<std::string> found;
  TextScan(term).EachLine(text, [&](const LineHit& hit) {
    found.push_back(std::to_string(hit.line) + (hit.isMissed ? ":missed" : ":told"));
    return true;
  });
  return found;
}

TEST(FindInLine, AnswersThePlaceAfterTheFirstHit) {
  EXPECT_EQ(findInLine("ab ab", {"ab", true}), 2u);
  EXPECT_EQ(findInLine("x ab", {"ab", true}), 4u);
  EXPECT_EQ(findInLine("x aB", {"Ab", false}), 4u);
  EXPECT_EQ(findInLine("x aB", {"ab", true}), 0u);
  EXPECT_EQ(findInLine("", {"ab", true}), 0u);
  EXPECT_EQ(findInLine("ab", {"", true}), 0u);
  EXPECT_EQ(findInLine("a", {"ab", true}), 0u) << "longer than the line";
}

TEST(FindInLine, ADifference_IsNotTriedAgain) {
  EXPECT_EQ(findInLine("aaab", {"aab", true}), 0u);
  EXPECT_EQ(findInLine("aab", {"aab", true}), 3u);
  EXPECT_EQ(findInLine("aaaaab", {"aab", true}), 6u);
}

TEST(FindInLine, WholeWord_GoesOnAfterAPart) {
  EXPECT_EQ(findInLine("xab ab", {"ab", true, true}), 6u);
  EXPECT_EQ(findInLine("ab_ 1ab", {"ab", true, true}), 0u);
  EXPECT_EQ(findInLine("\u00E4ab", {"ab", true, true}), 4u) << "bytes beyond ASCII are no letters";
}

TEST(TextScan, Lines_EndAsInAnEditor) {
  EXPECT_THAT(Lines("a\nb a\r\n\ra\ra", {"a"}),
              ElementsAre("1:told", "2:told", "4:told", "5:told"));
  EXPECT_THAT(Lines("", {"a"}), IsEmpty());
}

TEST(TextScan, TermsThatNoLineHas_AreFoundNowhere) {
  for (const char* text : {"", "\n", "a\nb", "\r"}) EXPECT_THAT(Lines("a\nb\n", {text}), IsEmpty());
  EXPECT_THAT(Lines("a\xFF\xFE\n", {"\xFF\xFE"}), ElementsAre("1:told"));
}

TEST(TextScan, AMissedLine_IsFoundByTheFullSearchOnly) {
  EXPECT_THAT(Lines("aaab\naab\naaab aab\n", {"aab", true}),
              ElementsAre("1:missed", "2:told", "3:told"));
}

TEST(TextScan, LineText_IsWithoutItsEnd) {
  std::string text;
  TextScan({"b"}).EachLine("a\r\nxbx\r\nb", [&](const LineHit& hit) {
    text += std::string(hit.text) + "|";
    return true;
  });
  EXPECT_EQ(text, "xbx|b|");
}

TEST(TextScan, AHandlerThatHasEnough_EndsIt) {
  int count = 0;
  TextScan({"a"}).EachLine("a\na\na", [&](const LineHit&) { return ++count < 2; });
  EXPECT_EQ(count, 2);
}

TEST(TextScan, AllHits_AreThoseOfTheRun_AndOthersStay) {
  const auto hits = TextScan({"aab", true}).AllHits("aab aab\naaab\naaabaab");
  EXPECT_THAT(hits.starts, ElementsAre(0u, 4u, 17u));
  EXPECT_EQ(hits.missed, 2u);
  EXPECT_THAT(TextScan({"aa", true}).AllHits("aaaaa").starts, ElementsAre(0u, 2u));
}

// Few letters make hits, beginnings that repeat themselves, and words side by side.
TEST(TextScan, AgreesWithTheRuleToldAgain) {
  std::mt19937 random(1);
  const auto text = [&](size_t length, const char* letters, size_t count) {
    std::string made(length, ' ');
    for (char& c : made) c = letters[random() % count];
    return made;
  };
  for (int round = 0; round < 30'000; ++round) {
    const LineTerm term{text(random() % 5, "aAb_ ", 5), random() % 2 == 0, random() % 2 == 0};
    const std::string in = text(random() % 80, "aAb_ \n\r\xE4", 8);
    ASSERT_EQ(Lines(in, term), test::NaiveLines(in, term)) << term.text << " in " << in;
  }
}

}  // namespace
}  // namespace zendry
