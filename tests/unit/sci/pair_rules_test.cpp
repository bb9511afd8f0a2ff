#include "PairRules.h"

#include <gtest/gtest.h>

#include "MarkedText.h"

namespace mavro {
namespace {

TEST(AutoPairs, FollowTheText) {
  AutoPairs pairs;
  pairs.Add(4, 5);
  pairs.WillInsert(5, 2);  // between the two
  EXPECT_EQ(pairs.OpeningOf(7), 4);
  pairs.WillInsert(4, 1);
  EXPECT_EQ(pairs.OpeningOf(8), 5);
  pairs.WillInsert(9, 1);
  EXPECT_EQ(pairs.OpeningOf(8), 5) << "after it";
  pairs.WillDelete(0, 3);
  EXPECT_EQ(pairs.OpeningOf(5), 2);
  pairs.WillDelete(3, 2);
  EXPECT_EQ(pairs.OpeningOf(3), 2);
  EXPECT_EQ(pairs.OpeningOf(2), -1);
}

TEST(AutoPairs, OneHalfDeleted_EndsThePair) {
  for (const auto& [start, length] : {std::pair(4, 1), std::pair(0, 5), std::pair(7, 1)}) {
    AutoPairs pairs;
    pairs.Add(4, 7);
    pairs.WillDelete(start, length);
    EXPECT_TRUE(pairs.IsEmpty()) << start;
  }
  AutoPairs pairs;
  pairs.Add(4, 7);
  pairs.WillDelete(5, 2);
  pairs.WillDelete(6, 9);
  EXPECT_EQ(pairs.OpeningOf(5), 4) << "what is between and after may go";
}

TEST(AutoPairs, KeepAround_EndsWhereTheCaretLeaves) {
  const auto kept = [](int caret) {
    AutoPairs pairs;
    pairs.Add(4, 7);
    pairs.KeepAround(caret);
    return !pairs.IsEmpty();
  };
  EXPECT_FALSE(kept(4));
  EXPECT_TRUE(kept(5));
  EXPECT_TRUE(kept(7));
  EXPECT_FALSE(kept(8));
}

TEST(AutoPairs, TheInnerPairGoes_TheOuterStays) {
  AutoPairs pairs;
  pairs.Add(0, 3);
  pairs.Add(1, 2);
  pairs.Remove(2);
  EXPECT_EQ(pairs.OpeningOf(2), -1);
  EXPECT_EQ(pairs.OpeningOf(3), 0);
}

TEST(PairRules, IsEscaped_ByAnOddNumberOfBackslashes) {
  const auto escaped = [](const char* marked, char closer) {
    const test::MarkedText text(marked);
    return IsEscaped(text, text.caret, closer);
  };
  EXPECT_FALSE(escaped("@", '"'));
  EXPECT_FALSE(escaped("a@", '"'));
  EXPECT_TRUE(escaped("\\@", '"'));
  EXPECT_FALSE(escaped("\\\\@", '\''));
  EXPECT_TRUE(escaped("\\\\\\@", '\''));
  EXPECT_FALSE(escaped("\\@", ')')) << "a bracket can't be escaped";
}

TEST(PairRules, PartnerOf_OpenersOnly) {
  EXPECT_EQ(PartnerOf('('), ')');
  EXPECT_EQ(PartnerOf('<'), '>');
  EXPECT_EQ(PartnerOf('\''), '\'');
  EXPECT_EQ(PartnerOf(')'), '\0');
  EXPECT_EQ(PartnerOf('\0'), '\0');
}

}  // namespace
}  // namespace mavro
