#include "CellText.h"

#include <gmock/gmock.h>

#include <random>

namespace mavro {
namespace {

using testing::ElementsAre;
using Row = std::vector<std::string>;

std::string Joined(const std::vector<Row>& rows) {
  std::string text;
  for (const Row& row : rows) {
    for (size_t i = 0; i < row.size(); ++i) {
      if (i > 0) text += '\t';
      AppendCell(text, row[i]);
    }
    text += '\n';
  }
  return text;
}

TEST(CellText, Cells_TabsBetween_LineFeedAfterEachRow) {
  EXPECT_EQ(Joined({{"a", "b"}, {"", "c"}}), "a\tb\n\tc\n");
}

TEST(CellText, Cell_IsQuotedOnlyIfItMust) {
  EXPECT_EQ(Joined({{"a\tb", "a\nb", "a\rb", "\"a", "a\"b", "a b"}}),
            "\"a\tb\"\t\"a\nb\"\t\"a\rb\"\t\"\"\"a\"\ta\"b\ta b\n");
}

TEST(CellText, Split_EveryLineEnd_AndNoneAtTheEnd) {
  EXPECT_THAT(SplitCells("a\tb\r\nc\rd\n\ne"),
              ElementsAre(Row{"a", "b"}, Row{"c"}, Row{"d"}, Row{""}, Row{"e"}));
  EXPECT_THAT(SplitCells("a\t"), ElementsAre(Row{"a", ""}));
  EXPECT_THAT(SplitCells("\n"), ElementsAre(Row{""}));
  EXPECT_TRUE(SplitCells("").empty());
}

TEST(CellText, Split_QuotedCells) {
  EXPECT_THAT(SplitCells("\"a\tb\"\t\"c\r\nd\"\n\"\"\"e\"\"\"\t\"\"\n"),
              ElementsAre(Row{"a\tb", "c\r\nd"}, Row{"\"e\"", ""}));
}

TEST(CellText, Split_QuoteThatNothingCloses_IsALetter) {
  EXPECT_THAT(SplitCells("\"a\tb\n"), ElementsAre(Row{"\"a", "b"}));
  EXPECT_THAT(SplitCells("\"a\"b\tc"), ElementsAre(Row{"\"a\"b", "c"}));
  EXPECT_THAT(SplitCells("5\"\t\""), ElementsAre(Row{"5\"", "\""}));
}

TEST(CellText, AnyCells_ComeBack) {
  std::mt19937 random(7);
  const std::string letters = "ab\"\t\r\n\xFF,";
  for (int round = 0; round < 2000; ++round) {
    std::vector<Row> rows(1 + random() % 4, Row(1 + random() % 3));
    for (Row& row : rows)
      for (std::string& cell : row)
        for (size_t i = random() % 6; i > 0; --i) cell += letters[random() % letters.size()];
    ASSERT_EQ(SplitCells(Joined(rows)), rows) << Joined(rows);
  }
}

// Each of these would take the square of its length if a quote were looked for to the end each
// time.
TEST(CellText, LongTextsOfQuotes_EndSoon) {
  for (const char* piece : {"\"\t", "\"a\t", "\"\"a\t", "\"\"\"\"a", "\"\n"}) {
    std::string text;
    while (text.size() < 200000) text += piece;
    EXPECT_FALSE(SplitCells(text).empty());
  }
}

}  // namespace
}  // namespace mavro
