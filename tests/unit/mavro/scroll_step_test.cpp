#include "ScrollStep.h"

#include <gtest/gtest.h>

#include <climits>

#include "Scroller.h"

namespace mavro {
namespace {

struct Row {
  const char* what;
  int code, position, page, maximum;
  std::optional<int> expected;
};

class ScrollSteps : public testing::TestWithParam<Row> {};

TEST_P(ScrollSteps, Told) {
  const Row& row = GetParam();
  EXPECT_EQ(ScrollStep(row.code, row.position, row.page, row.maximum), row.expected);
}

constexpr Row cRows[] = {
    {"LineUp", SB_LINEUP, 50, 10, 100, 49},
    {"LineDown", SB_LINEDOWN, 50, 10, 100, 51},
    {"PageUp", SB_PAGEUP, 50, 10, 100, 41},
    {"PageDown", SB_PAGEDOWN, 50, 10, 100, 59},
    {"ThumbPosition_KeepsWhatTheEventLeft", SB_THUMBPOSITION, 33, 10, 100, 33},
    {"ThumbTrack_KeepsWhatTheEventLeft", SB_THUMBTRACK, 34, 10, 100, 34},
    {"Top_IsZero", SB_TOP, 50, 10, 100, 0},
    {"Bottom_IsBeforeTheMaximum", SB_BOTTOM, 50, 10, 100, 99},
    {"EndScroll_MovesNothing", SB_ENDSCROLL, 50, 10, 100, std::nullopt},
    {"UnknownCode_MovesNothing", 15, 50, 10, 100, std::nullopt},
    {"HighBits_DontCount", 0x320 | SB_LINEDOWN, 50, 10, 100, 51},
    {"BelowZero_BecomesZero", SB_PAGEUP, 3, 10, 100, 0},
    {"LineUpAtZero_StaysThere", SB_LINEUP, 0, 10, 100, 0},
    {"AtTheMaximum_BecomesTheOneBefore", SB_LINEDOWN, 99, 10, 100, 99},
    {"BeyondTheMaximum_BecomesTheOneBefore", SB_THUMBTRACK, 1000, 10, 100, 99},
    {"NegativeThumb_BecomesZero", SB_THUMBTRACK, -7, 10, 100, 0},
    {"EmptyRange_EndsBeforeIt", SB_LINEDOWN, 0, 0, 0, -1},
    {"HugePage_DoesntOverflow", SB_PAGEDOWN, INT_MAX, INT_MAX, INT_MAX, INT_MAX - 1},
    {"HugeNegativePage_DoesntOverflow", SB_PAGEUP, INT_MAX, INT_MIN, INT_MAX, INT_MAX - 1},
    {"SmallestPosition_DoesntOverflow", SB_LINEUP, INT_MIN, 10, 100, 0},
    {"SmallestMaximum_DoesntOverflow", SB_TOP, 0, 0, INT_MIN + 1, INT_MIN},
};

INSTANTIATE_TEST_SUITE_P(Table, ScrollSteps, testing::ValuesIn(cRows),
                         [](const auto& row) { return row.param.what; });

}  // namespace
}  // namespace mavro
