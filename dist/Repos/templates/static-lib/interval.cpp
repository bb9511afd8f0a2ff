// SPDX-License-Identifier: MIT-0
#include "interval.h"

#include <algorithm>

bool Interval::Contains(double number) const {
  return low <= number && number <= high;
}

double Interval::Length() const {
  return std::max(0.0, high - low);
}

std::optional<Interval> Common(const Interval& one, const Interval& other) {
  const Interval both = {std::max(one.low, other.low), std::min(one.high, other.high)};
  if (both.low > both.high) return {};
  return both;
}
