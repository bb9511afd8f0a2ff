#include "GridMoves.h"

#include <gtest/gtest.h>

#include <climits>

namespace mavro {
namespace {

constexpr GridSize cSize{10, 4};

struct MoveRow {
  GridMove move;
  GridCell inside, atFirst, atLast;  // where it leads to from (5, 2), (0, 0), (9, 3)
};

TEST(GridMoves, EveryMove_StopsAtTheEdges) {
  const MoveRow rows[] = {
      {GridMove::cLeft, {5, 1}, {0, 0}, {9, 2}},     {GridMove::cRight, {5, 3}, {0, 1}, {9, 3}},
      {GridMove::cUp, {4, 2}, {0, 0}, {8, 3}},       {GridMove::cDown, {6, 2}, {1, 0}, {9, 3}},
      {GridMove::cRowStart, {5, 0}, {0, 0}, {9, 0}}, {GridMove::cRowEnd, {5, 3}, {0, 3}, {9, 3}},
      {GridMove::cTop, {0, 2}, {0, 0}, {0, 3}},      {GridMove::cBottom, {9, 2}, {9, 0}, {9, 3}},
      {GridMove::cFirst, {0, 0}, {0, 0}, {0, 0}},    {GridMove::cLast, {9, 3}, {9, 3}, {9, 3}},
      {GridMove::cPageUp, {2, 2}, {0, 0}, {6, 3}},   {GridMove::cPageDown, {8, 2}, {3, 0}, {9, 3}},
      {GridMove::cNext, {5, 3}, {0, 1}, {9, 3}},     {GridMove::cPrevious, {5, 1}, {0, 0}, {9, 2}},
  };
  for (const MoveRow& row : rows) {
    const int number = static_cast<int>(row.move);
    EXPECT_EQ(Moved({5, 2}, row.move, cSize, 3), row.inside) << number;
    EXPECT_EQ(Moved({0, 0}, row.move, cSize, 3), row.atFirst) << number;
    EXPECT_EQ(Moved({9, 3}, row.move, cSize, 3), row.atLast) << number;
    EXPECT_FALSE(Moved({5, 2}, row.move, {0, 4}, 3).Exists()) << number << " without rows";
    EXPECT_FALSE(Moved({5, 2}, row.move, {10, 0}, 3).Exists()) << number << " without columns";
  }
}

TEST(GridMoves, FromNoCell_ToTheFirstRow_OrToTheLastIfItIsMeant) {
  for (int number = 0; number <= static_cast<int>(GridMove::cPrevious); ++number) {
    const auto move = static_cast<GridMove>(number);
    const bool isLast = move == GridMove::cBottom || move == GridMove::cLast;
    EXPECT_EQ(Moved({-1, 2}, move, cSize, 3).row, isLast ? 9 : 0) << number;
  }
  EXPECT_EQ(Moved({-1, 2}, GridMove::cDown, cSize, 3), (GridCell{0, 2}));
  EXPECT_EQ(Moved({-1, 2}, GridMove::cLast, cSize, 3), (GridCell{9, 3}));
}

TEST(GridMoves, NextAndPrevious_GoOnInTheOtherRow) {
  EXPECT_EQ(Moved({2, 3}, GridMove::cNext, cSize, 3), (GridCell{3, 0}));
  EXPECT_EQ(Moved({3, 0}, GridMove::cPrevious, cSize, 3), (GridCell{2, 3}));
}

TEST(GridMoves, Page_OfNoRows_MovesByOne) {
  EXPECT_EQ(Moved({5, 0}, GridMove::cPageDown, cSize, 0), (GridCell{6, 0}));
  EXPECT_EQ(Moved({5, 0}, GridMove::cPageUp, cSize, -4), (GridCell{4, 0}));
}

TEST(GridMoves, CellOutside_ComesBackIn) {
  EXPECT_EQ(Moved({50, 9}, GridMove::cLeft, cSize, 3), (GridCell{9, 2}));
  EXPECT_EQ(Moved({INT_MAX, INT_MAX}, GridMove::cPageDown, cSize, INT_MAX), (GridCell{9, 3}));
}

TEST(GridMoves, Between_IsTheSameBothWays) {
  const CellRange range{2, 1, 4, 3};
  EXPECT_EQ(Between({2, 1}, {5, 3}), range);
  EXPECT_EQ(Between({5, 3}, {2, 1}), range);
  EXPECT_EQ(Between({5, 1}, {2, 3}), range);
  EXPECT_EQ(Between({7, 2}, {7, 2}), (CellRange{7, 2, 1, 1}));
  EXPECT_TRUE(Between({}, {1, 1}).IsEmpty());
}

TEST(GridMoves, Contains_TheEdgesAndNothingBesideThem) {
  const CellRange range{2, 1, 4, 3};
  EXPECT_TRUE(Contains(range, {2, 1}) && Contains(range, {5, 3}));
  for (const GridCell cell : {GridCell{1, 1}, {6, 1}, {2, 0}, {2, 4}, {-1, 1}})
    EXPECT_FALSE(Contains(range, cell)) << cell.row << " " << cell.col;
  EXPECT_FALSE(Contains({}, {0, 0}));
}

TEST(GridMoves, Inside_CutsARangeAtTheGrid) {
  EXPECT_EQ(Inside({0, 0, 10, 4}, cSize), (CellRange{0, 0, 10, 4}));
  EXPECT_EQ(Inside({0, 0, 11, 5}, cSize), (CellRange{0, 0, 10, 4}));
  EXPECT_EQ(Inside({-2, -1, 4, 2}, cSize), (CellRange{0, 0, 2, 1}));
  EXPECT_EQ(Inside({9, 3, INT_MAX, INT_MAX}, cSize), (CellRange{9, 3, 1, 1}));
  for (const CellRange& outside :
       {CellRange{10, 0, 1, 1}, {0, 4, 1, 1}, {-1, 0, 1, 1}, {0, 0, -1, 1}, {0, 0, 1, 0}})
    EXPECT_EQ(Inside(outside, cSize), CellRange());
}

}  // namespace
}  // namespace mavro
