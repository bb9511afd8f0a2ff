#include "tags/BodyText.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

namespace zendry {

namespace {

constexpr size_t cBlock = 16;
constexpr int cMostCounted = 255;  // blocks whose newlines a byte can count

using Block = unsigned char __attribute__((vector_size(cBlock)));
using Words = uint64_t __attribute__((vector_size(cBlock)));

constexpr std::array<bool, 256> cStops = [] {
  std::array<bool, 256> stops{};
  for (const unsigned char c : std::string_view("{}\"#'/\\?")) stops[c] = true;
  return stops;
}();

// Two pairs of the stops differ in one bit.
Block StopsIn(Block bytes) {
  static_assert(('"' | 1) == '#' && ('/' | 16) == '?');
  return reinterpret_cast<Block>(((bytes | 1) == '#') | ((bytes | 16) == '?') | (bytes == '\'') |
                                 (bytes == '\\') | (bytes == '{') | (bytes == '}'));
}

bool HasAny(Block block) {
  const auto words = reinterpret_cast<Words>(block);
  return (words[0] | words[1]) != 0;
}

int Sum(Block counts) {
  int sum = 0;
  for (size_t i = 0; i < cBlock; ++i) sum += counts[i];
  return sum;
}

// Passes over blocks without a stop.
BodyText PassBlocks(const char* at, const char* end) {
  int newlines = 0;
  while (static_cast<size_t>(end - at) >= cBlock) {
    Block counts = {};
    bool stops = false;
    for (int i = 0; i < cMostCounted && static_cast<size_t>(end - at) >= cBlock; ++i) {
      Block bytes;
      std::memcpy(&bytes, at, cBlock);
      stops = HasAny(StopsIn(bytes));
      if (stops) break;
      counts -= reinterpret_cast<Block>(bytes == '\n');
      at += cBlock;
    }
    newlines += Sum(counts);
    if (stops) break;
  }
  return {at, newlines};
}

}  // namespace

BodyText PassBodyText(const char* from, const char* end) {
  BodyText passed = PassBlocks(from, end);
  while (passed.stop != end && !cStops[static_cast<unsigned char>(*passed.stop)])
    passed.newlines += *passed.stop++ == '\n';
  return passed;
}

}  // namespace zendry
