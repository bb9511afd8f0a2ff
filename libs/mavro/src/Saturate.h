#pragma once

#include <algorithm>
#include <cstdint>
#include <limits>

namespace mavro {

// The nearest int: sums of coordinates that no screen has end at its limits.
constexpr int Saturate(int64_t value) {
  using Limits = std::numeric_limits<int>;
  return static_cast<int>(std::clamp<int64_t>(value, Limits::min(), Limits::max()));
}

}  // namespace mavro
