#include "OccurrenceRules.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace mavro {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

std::vector<int> Starts(std::string_view text, Occurrence wanted) {
  std::vector<int> starts;
  for (const Occurrence& one : FindOccurrences(text, wanted)) starts.push_back(one.start);
  return starts;
}

TEST(Occurrences, OfAWord_AreWholeWordsWithItsCase) {
  EXPECT_THAT(Starts("ab abc cab ab_ 1ab Ab ab", {0, 2}), ElementsAre(0, 22));
  EXPECT_THAT(Starts("\xC3\xA4\x62 b b\xC3\xB6 b", {4, 5}), ElementsAre(4, 10));
}

TEST(Occurrences, OfAPiece_AreEverywhere_ButDontOverlap) {
  EXPECT_THAT(Starts("abc ab", {0, 2}), ElementsAre(0, 4));
  EXPECT_THAT(Starts("a b a b", {0, 3}), ElementsAre(0, 4));
  EXPECT_THAT(Starts("-----", {0, 2}), ElementsAre(0, 2));
}

TEST(Occurrences, OfNothing_AreNone) {
  EXPECT_THAT(Starts("abc", {1, 1}), IsEmpty());
  EXPECT_THAT(Starts("abc", {2, 1}), IsEmpty());
}

TEST(Occurrences, AtTheLimit_AllAreFound_AndOneMoreShowsThatThereAreMore) {
  std::string text;
  for (size_t i = 0; i < cMostCarets; ++i) text += "x ";
  EXPECT_EQ(FindOccurrences(text, {0, 1}).size(), cMostCarets);
  EXPECT_EQ(FindOccurrences(text + "x", {0, 1}).size(), cMostCarets + 1);
  EXPECT_EQ(FindOccurrences(text + text, {0, 1}).size(), cMostCarets + 1);
}

TEST(Occurrences, TheNext_ComesAfterTheGivenOneAndWrapsAround) {
  const auto any = [](const Occurrence&) { return true; };
  EXPECT_EQ(NextOccurrence("x x x", {2, 3}, any), (Occurrence{4, 5}));
  EXPECT_EQ(NextOccurrence("x x x", {4, 5}, any), (Occurrence{0, 1}));
  const auto notFirst = [](const Occurrence& one) { return one.start > 0; };
  EXPECT_EQ(NextOccurrence("x x x", {4, 5}, notFirst), (Occurrence{2, 3}));
  const auto none = [](const Occurrence&) { return false; };
  EXPECT_EQ(NextOccurrence("x x x", {4, 5}, none), std::nullopt);
}

TEST(Occurrences, LinesFor_SplitsIntoExactlySoManyLines) {
  EXPECT_THAT(LinesFor("a\nb", 2), ElementsAre("a", "b"));
  EXPECT_THAT(LinesFor("a\r\nb\r\n", 2), ElementsAre("a", "b"));
  EXPECT_THAT(LinesFor("a\rb\n", 2), ElementsAre("a", "b"));
  EXPECT_THAT(LinesFor("\n\n", 2), ElementsAre("", ""));
  EXPECT_THAT(LinesFor("a\nb", 3), IsEmpty());
  EXPECT_THAT(LinesFor("a\nb\nc", 2), IsEmpty());
  EXPECT_THAT(LinesFor("a", 1), IsEmpty()) << "one caret: an ordinary paste";
}

}  // namespace
}  // namespace mavro
