#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace zendry {

// The mark of a text: a number that is almost certainly different for different texts (FNV-1a).
uint64_t TextMark(std::string_view text);

// A mark as 16 digits, for files that people may look at.
std::string HexadecimalMark(uint64_t mark);

}  // namespace zendry
