#pragma once

#include <vector>

#include "Core.h"

namespace zendry {

// The lines that show where a rectangle is in line with others: one pixel wide, along equal edges
// and along equal middle lines, on which texts of one size stand. They reach from one rectangle to
// the other.
std::vector<mavro::Rect> GuideLines(const mavro::Rect& moved,
                                    const std::vector<mavro::Rect>& others);

}  // namespace zendry
