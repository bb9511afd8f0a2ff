// SPDX-License-Identifier: MIT-0
#pragma once

#include <optional>

// The numbers from `low` to `high`, both included.
struct Interval {
  double low = 0;
  double high = 0;

  bool Contains(double number) const;
  double Length() const;
};

// What two intervals have in common; nothing if they are apart.
std::optional<Interval> Common(const Interval& one, const Interval& other);
