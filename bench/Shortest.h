#pragma once

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <functional>

namespace bench {

// The shortest of nine runs, in milliseconds.
inline double Shortest(const std::function<void()>& run) {
  using Clock = std::chrono::steady_clock;
  constexpr int cRounds = 9;
  double shortest = 1e9;
  for (int i = 0; i < cRounds; ++i) {
    const auto start = Clock::now();
    run();
    const std::chrono::duration<double, std::milli> passed = Clock::now() - start;
    shortest = std::min(shortest, passed.count());
  }
  return shortest;
}

// Ends the program with 2 when a step of `program` hasn't done its work.
inline void Check(bool ok, const char* program, const char* step) {
  if (ok) return;
  std::fprintf(stderr, "%s: %s failed\n", program, step);
  std::exit(2);
}

}  // namespace bench
