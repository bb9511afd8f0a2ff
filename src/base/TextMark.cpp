#include "base/TextMark.h"

#include <array>
#include <cinttypes>
#include <cstdio>

namespace zendry {

uint64_t TextMark(std::string_view text) {
  uint64_t mark = 0xcbf29ce484222325;
  for (const char c : text) mark = (mark ^ static_cast<unsigned char>(c)) * 0x100000001b3;
  return mark;
}

std::string HexadecimalMark(uint64_t mark) {
  std::array<char, 17> digits;
  std::snprintf(digits.data(), digits.size(), "%016" PRIx64, mark);
  return digits.data();
}

}  // namespace zendry
