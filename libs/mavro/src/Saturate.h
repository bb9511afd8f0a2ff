#pragma once

#include <algorithm>
#include <cstdint>
#include <limits>

namespace mavro {

// The nearest int: sums of coordinates beyond any screen are limited to the range of int.
constexpr int Saturate(int64_t value) {
  using Limits = std::numeric_limits<int>;
  return static_cast<int>(std::clamp<int64_t>(value, Limits::min(), Limits::max()));
}

}  // namespace mavro
