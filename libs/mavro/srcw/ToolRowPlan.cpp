#include "ToolRowPlan.h"

#include <algorithm>

namespace mavro {

namespace {

constexpr int cBarMargin = 2;     // before the first row
constexpr int cButtonMargin = 3;  // around a picture
constexpr int cSeparatorWidth = 9;
constexpr int cControlGap = 3;  // on both sides of a control
constexpr int cMoreWidth = 18;
constexpr int cBarPadding = 10;  // height of a bar beyond that of its pictures

int WidthOf(const ToolRowWish& wish, int pictureWidth) {
  switch (wish.kind) {
    case ToolRowWish::cButton:
      return pictureWidth + 2 * cButtonMargin;
    case ToolRowWish::cSeparator:
      return cSeparatorWidth;
    case ToolRowWish::cControl:
      return wish.width > 0 ? wish.width + 2 * cControlGap : 0;
  }
  return 0;
}

}  // namespace

int ToolBarHeight(int pictureHeight) {
  return pictureHeight + cBarPadding;
}

ToolRowPlan PlanToolRows(const std::vector<ToolRowWish>& wishes, int width, int height,
                         int pictureWidth, int pictureHeight) {
  ToolRowPlan plan;
  plan.places.resize(wishes.size());
  int wanted = cBarMargin;
  for (const ToolRowWish& wish : wishes) wanted += WidthOf(wish, pictureWidth);
  const bool allFit = wanted <= width;
  const int end = allFit ? width : width - cMoreWidth;

  const int buttonHeight = std::min(height, pictureHeight + 2 * cButtonMargin);
  int x = cBarMargin;
  for (size_t i = 0; i < wishes.size(); ++i) {
    const ToolRowWish& wish = wishes[i];
    const int taken = WidthOf(wish, pictureWidth);
    if (x + taken > end) break;
    const bool isControl = wish.kind == ToolRowWish::cControl;
    const int gap = isControl ? cControlGap : 0;
    const int rowHeight = isControl ? std::min(wish.height, height) : buttonHeight;
    if (taken > 0) plan.places[i] = {x + gap, (height - rowHeight) / 2, taken - 2 * gap, rowHeight};
    x += taken;
  }
  if (!allFit)
    plan.more = {std::max(end, 0), (height - buttonHeight) / 2, cMoreWidth, buttonHeight};
  return plan;
}

}  // namespace mavro
