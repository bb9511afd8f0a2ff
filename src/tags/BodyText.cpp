#include "tags/BodyText.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "ByteBlock.h"

namespace zendry {

namespace {

constexpr int cMostCounted = 255;  // blocks whose newlines a byte can count

using Block = mavro::ByteBlock;
using mavro::cByteBlock;

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

int Sum(Block counts) {
  const auto words = reinterpret_cast<mavro::ByteBlockWords>(counts);
  constexpr uint64_t cEven = 0x00FF00FF00FF00FF;
  const uint64_t pairs =
      (words[0] & cEven) + (words[0] >> 8 & cEven) + (words[1] & cEven) + (words[1] >> 8 & cEven);
  return static_cast<int>(pairs * 0x0001000100010001 >> 48);
}

// Passes over the blocks before the one with a stop, and in that one up to the stop.
BodyText PassBlocks(const char* at, const char* end) {
  constexpr Block cLanes = {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15};
  int newlines = 0;
  while (static_cast<size_t>(end - at) >= cByteBlock) {
    Block counts = {};
    size_t first = cByteBlock;
    for (int i = 0; i < cMostCounted && static_cast<size_t>(end - at) >= cByteBlock; ++i) {
      const Block bytes = mavro::LoadBlock(at);
      first = mavro::FirstSet(StopsIn(bytes));
      const auto lines = reinterpret_cast<Block>(bytes == '\n');
      const auto before = reinterpret_cast<Block>(cLanes < static_cast<unsigned char>(first));
      counts -= lines & before;
      at += first;
      if (first != cByteBlock) break;
    }
    newlines += Sum(counts);
    if (first != cByteBlock) break;
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
