#include "CellSort.h"

#include <gmock/gmock.h>

#include <string>

namespace mavro {
namespace {

using testing::ElementsAre;

TEST(CellOrder, NumbersComeBeforeTextsAndByValue) {
  EXPECT_THAT(CellOrder({"b", "10", "9", "a", "-1.5", "1e1"}, true), ElementsAre(4, 2, 1, 5, 3, 0));
}

TEST(CellOrder, Descending_EqualCellsKeepTheirOrder) {
  EXPECT_THAT(CellOrder({"a", "b", "a", "b"}, false), ElementsAre(1, 3, 0, 2));
  EXPECT_THAT(CellOrder({"a", "b", "a", "b"}, true), ElementsAre(0, 2, 1, 3));
}

TEST(CellOrder, CaseCountsOnlyBetweenEqualTexts) {
  EXPECT_THAT(CellOrder({"beta", "Alpha", "alpha", "Beta"}, true), ElementsAre(1, 2, 3, 0));
}

TEST(CellOrder, Prefix_ComesFirst) {
  EXPECT_THAT(CellOrder({"abc", "ab", ""}, true), ElementsAre(2, 1, 0));
}

TEST(CellOrder, EachCharacterCountsBeforeCase) {
  EXPECT_THAT(CellOrder({"Ab", "aA"}, true), ElementsAre(1, 0));
  EXPECT_THAT(CellOrder({"xyZ", "XYa"}, true), ElementsAre(1, 0));
}

TEST(CellOrder, BytesAfterACell_AreNotRead) {
  const std::string_view longer = "abz";
  EXPECT_THAT(CellOrder({"abc", longer.substr(0, 2)}, true), ElementsAre(1, 0));
}

TEST(CellOrder, NoCells_NoOrder) {
  EXPECT_THAT(CellOrder({}, true), ElementsAre());
}

TEST(CellOrder, InvalidUtf8AndNul_AreBytes) {
  const std::string nul("a\0b", 3);
  EXPECT_THAT(CellOrder({"\xFF", nul, "a"}, true), ElementsAre(2, 1, 0));
}

TEST(CellOrder, WhatIsNoFiniteNumber_IsAText) {
  EXPECT_THAT(CellOrder({"nan", "inf", "1e999", "5"}, true), ElementsAre(3, 2, 1, 0));
}

TEST(CellOrder, NumberWithARest_IsAText) {
  EXPECT_THAT(CellOrder({"12 kg", "2 kg", "3"}, true), ElementsAre(2, 0, 1));
}

}  // namespace
}  // namespace mavro
