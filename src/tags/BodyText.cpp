#include "tags/BodyText.h"

#include <array>
#include <bit>
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

// The number of bytes before the first that isn't 0; cBlock if there is none.
size_t FirstSet(Block block) {
  const auto zeros = [](uint64_t word) {
    const bool isLittle = std::endian::native == std::endian::little;
    return static_cast<size_t>(isLittle ? std::countr_zero(word) : std::countl_zero(word));
  };
  const auto words = reinterpret_cast<Words>(block);
  return (words[0] != 0 ? zeros(words[0]) : 64 + zeros(words[1])) / 8;
}

int Sum(Block counts) {
  const auto words = reinterpret_cast<Words>(counts);
  constexpr uint64_t cEven = 0x00FF00FF00FF00FF;
  const uint64_t pairs =
      (words[0] & cEven) + (words[0] >> 8 & cEven) + (words[1] & cEven) + (words[1] >> 8 & cEven);
  return static_cast<int>(pairs * 0x0001000100010001 >> 48);
}

// Passes over the blocks before the one with a stop, and in that one up to the stop.
BodyText PassBlocks(const char* at, const char* end) {
  constexpr Block cLanes = {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15};
  int newlines = 0;
  while (static_cast<size_t>(end - at) >= cBlock) {
    Block counts = {};
    size_t first = cBlock;
    for (int i = 0; i < cMostCounted && static_cast<size_t>(end - at) >= cBlock; ++i) {
      Block bytes;
      std::memcpy(&bytes, at, cBlock);
      first = FirstSet(StopsIn(bytes));
      const auto lines = reinterpret_cast<Block>(bytes == '\n');
      const auto before = reinterpret_cast<Block>(cLanes < static_cast<unsigned char>(first));
      counts -= lines & before;
      at += first;
      if (first != cBlock) break;
    }
    newlines += Sum(counts);
    if (first != cBlock) break;
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
