#pragma once

#include <vector>

#include "Core.h"

namespace mavro {

// The size that a row of a tool bar needs. A control keeps its size; a hidden one takes no room.
struct ToolRowWish {
  enum Kind { cButton, cSeparator, cControl };
  Kind kind = cButton;
  int width = 0;  // controls only
  int height = 0;
};

// The places of the rows of a tool bar. A row with an empty rectangle has no room.
struct ToolRowPlan {
  std::vector<Rect> places;
  Rect more;  // the button that offers the rest; empty when all have room
};

// Lays rows out from left to right in a bar of the given size. Pictures are `pictureWidth` by
// `pictureHeight`.
ToolRowPlan PlanToolRows(const std::vector<ToolRowWish>& wishes, int width, int height,
                         int pictureWidth, int pictureHeight);

// The height of a bar with pictures of this height.
int ToolBarHeight(int pictureHeight);

}  // namespace mavro
