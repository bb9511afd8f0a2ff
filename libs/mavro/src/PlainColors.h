#pragma once

#include <cmath>

#include "Color.h"

namespace mavro {

// A plain colour between two plain ones: `share` of `over`, the rest of `under`.
inline Color Blend(Color over, Color under, double share) {
  const auto channel = [&](int shift) {
    const int top = over.Value() >> shift & 0xFF;
    const int below = under.Value() >> shift & 0xFF;
    return static_cast<int32_t>(std::lround(below + (top - below) * share)) << shift;
  };
  return Color(channel(16) | channel(8) | channel(0));
}

// True for a plain ground on which light letters can be read better than dark ones.
inline bool IsDark(Color ground) {
  const int32_t rgb = ground.Value();
  return 299 * (rgb >> 16 & 0xFF) + 587 * (rgb >> 8 & 0xFF) + 114 * (rgb & 0xFF) < 128 * 1000;
}

}  // namespace mavro
