#include "code/ExpressionAt.h"

#include <gtest/gtest.h>

#include <string>

namespace zendry {
namespace {

// The expression at the column of the caret, written as '@' before the byte meant.
std::string At(std::string line) {
  const size_t caret = line.find('@');
  line.erase(caret, 1);
  return ExpressionAt(line, static_cast<int>(caret));
}

struct Row {
  const char* line;
  const char* expected;
};

TEST(ExpressionAt, WordAtTheColumn_IsTakenWhole) {
  const Row rows[] = {{"@count;", "count"},
                      {"co@unt;", "count"},
                      {"x = @count + 1", "count"},
                      {"coun@t", "count"},
                      {"a + co@unt_2", "count_2"}};
  for (const Row& row : rows) EXPECT_EQ(At(row.line), row.expected) << row.line;
}

TEST(ExpressionAt, ColumnJustAfterAWord_TakesTheWord) {
  EXPECT_EQ(At("count@;"), "count");
  EXPECT_EQ(At("count@ + 1"), "count");
  EXPECT_EQ(At("f@(x)"), "f");
}

TEST(ExpressionAt, NamesBefore_JoinByDotAndArrow) {
  const Row rows[] = {{"a.b.@c", "a.b.c"},       {"a.@b.c", "a.b"}, {"p->@x", "p->x"},
                      {"p->q.@x = 1", "p->q.x"}, {"@p->x", "p"},    {"p@->x", "p"},
                      {"f(p->@x)", "p->x"}};
  for (const Row& row : rows) EXPECT_EQ(At(row.line), row.expected) << row.line;
}

TEST(ExpressionAt, LoneSigns_StopTheWayToTheLeft) {
  const Row rows[] = {
      {"a>@b", "b"}, {"a-@b", "b"}, {"a - > @b", "b"}, {"*@p", "p"}, {"A::@b", "b"}};
  for (const Row& row : rows) EXPECT_EQ(At(row.line), row.expected) << row.line;
}

TEST(ExpressionAt, IndexAfter_IsIncluded) {
  EXPECT_EQ(At("@a[i] = 1"), "a[i]");
  EXPECT_EQ(At("p->@a[12];"), "p->a[12]");
  EXPECT_EQ(At("@a[i + 1]"), "a[i");
  EXPECT_EQ(At("@a[i][j]"), "a[i]");
}

TEST(ExpressionAt, IndexBefore_StopsTheWayToTheLeft) {
  EXPECT_EQ(At("a[@i]"), "i]");
  EXPECT_EQ(At("a[i].@b"), ".b");
}

TEST(ExpressionAt, NoWordAtOrBeforeTheColumn_IsEmpty) {
  for (const char* line : {"@ ", "a @ b", "a + @+ b", "@+", "(@(", "a  @;"})
    EXPECT_EQ(At(line), "") << line;
}

TEST(ExpressionAt, OddBytes_AreNoWords) {
  EXPECT_EQ(ExpressionAt("\xc3\xa9", 0), "");
  EXPECT_EQ(ExpressionAt("a\xc3\xa9", 0), "a");
  EXPECT_EQ(ExpressionAt(std::string("a\0b", 3), 2), "b");
  EXPECT_EQ(ExpressionAt("]", 0), "]");
  EXPECT_EQ(ExpressionAt("->", 1), "");
  EXPECT_EQ(ExpressionAt("->x", 2), "->x");
}

TEST(ExpressionAt, TextAfterTheLine_IsNotRead) {
  const std::string_view text = "ab[c]d";
  EXPECT_EQ(ExpressionAt(text.substr(0, 1), 0), "a");
  EXPECT_EQ(ExpressionAt(text.substr(0, 4), 1), "ab[c");
}

TEST(ExpressionAt, AnyColumnOfAnyText_GivesAPartOfIt) {
  const std::string line = "a->b[c].d-> ]>.-[e";
  for (size_t column = 0; column < line.size(); ++column)
    EXPECT_NE(line.find(ExpressionAt(line, static_cast<int>(column))), std::string::npos);
}

TEST(ExpressionAtDeathTest, ColumnOutsideOfTheLine_IsAsserted) {
  EXPECT_DEATH(ExpressionAt("abc", 3), "src/.*ExpressionAt.*pos<len && pos>=0");
  EXPECT_DEATH(ExpressionAt("abc", -1), "pos<len && pos>=0");
  EXPECT_DEATH(ExpressionAt("", 0), "pos<len && pos>=0");
}

}  // namespace
}  // namespace zendry
