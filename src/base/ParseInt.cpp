#include "base/ParseInt.h"

#include <algorithm>
#include <cstdint>
#include <limits>

namespace zendry {

int ParseInt(std::string_view text) {
  const size_t start = text.find_first_not_of(" \t\n\v\f\r");
  if (start == std::string_view::npos) return 0;
  text.remove_prefix(start);
  const bool negative = text.front() == '-';
  if (negative || text.front() == '+') text.remove_prefix(1);
  constexpr int64_t cLimit = int64_t{std::numeric_limits<int>::max()} + 1;
  int64_t number = 0;
  for (const char c : text) {
    if (c < '0' || c > '9') break;
    number = std::min(number * 10 + (c - '0'), cLimit);
  }
  if (negative) return static_cast<int>(-number);
  return static_cast<int>(std::min(number, cLimit - 1));
}

}  // namespace zendry
