#include "browser/PlaceHistory.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace zendry {
namespace {

VisitedPlace At(int line, const std::string& text = "") {
  return {"a.cpp", line, 0, text};
}
int Line(const std::optional<VisitedPlace>& place) {
  return place ? place->line : -1;
}

TEST(PlaceHistory, BackAndForward_WalkThroughTheJumps) {
  PlaceHistory history;
  EXPECT_FALSE(history.CanGoBack());
  history.Leave(At(1));
  history.Leave(At(2));
  EXPECT_EQ(Line(history.Back(At(3))), 2);
  EXPECT_EQ(Line(history.Back(At(2))), 1);
  EXPECT_EQ(Line(history.Back(At(1))), -1);
  EXPECT_EQ(Line(history.Forward(At(1))), 2);
  EXPECT_EQ(Line(history.Forward(At(2))), 3);
  EXPECT_FALSE(history.CanGoForward());
}

TEST(PlaceHistory, ANewJump_DropsThePlacesAhead) {
  PlaceHistory history;
  history.Leave(At(1));
  history.Back(At(2));
  EXPECT_TRUE(history.CanGoForward());
  history.Leave(At(7));
  EXPECT_FALSE(history.CanGoForward());
}

TEST(PlaceHistory, TheSameLineTwice_IsOnePlace) {
  PlaceHistory history;
  history.Leave(At(1));
  history.Leave(At(1));
  EXPECT_EQ(Line(history.Back(At(5))), 1);
  EXPECT_FALSE(history.CanGoBack());
}

TEST(PlaceHistory, Back_PassesOverThePlaceWhereTheCaretIs) {
  PlaceHistory history;
  history.Leave(At(1));
  history.Leave(At(2));
  EXPECT_EQ(Line(history.Back(At(2))), 1) << "the jump failed";
}

TEST(PlaceHistory, KeepsTheNewestOnly) {
  PlaceHistory history;
  const int most = static_cast<int>(PlaceHistory::cMost);
  for (int i = 0; i <= most; ++i) history.Leave(At(i));
  int last = -1, count = 0;
  for (auto place = history.Back(At(1000)); place; place = history.Back(At(last))) {
    last = place->line;
    ++count;
  }
  EXPECT_EQ(count, most);
  EXPECT_EQ(last, 1);
}

int Find(const VisitedPlace& place, const std::vector<std::string>& text) {
  return LineOfPlace(place, static_cast<int>(text.size()),
                     [&](int line) { return text[static_cast<size_t>(line)]; });
}

TEST(LineOfPlace, FollowsTheTextOfTheLine) {
  EXPECT_EQ(Find(At(1, "b"), {"a", "b", "c"}), 1);
  EXPECT_EQ(Find(At(1, "b"), {"x", "y", "a", "b", "c"}), 3);
  EXPECT_EQ(Find(At(3, "b"), {"a", "b", "c"}), 1);
  EXPECT_EQ(Find(At(1, "gone"), {"a", "b", "c"}), 1);
  EXPECT_EQ(Find(At(9, "gone"), {"a", "b", "c"}), 2);
  EXPECT_EQ(Find(At(1, "  }"), {"  }", "x", "y"}), 1) << "braces alone tell nothing";
}

}  // namespace
}  // namespace zendry
