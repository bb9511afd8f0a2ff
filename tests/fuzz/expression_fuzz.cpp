#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "code/ExpressionAt.h"

// The expression at every column of a line is a part of the line near that column.

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::string_view line(reinterpret_cast<const char*>(data), size);
  const size_t step = size / 1000 + 1;
  for (size_t column = 0; column < size; column += step) {
    const std::string found = zendry::ExpressionAt(line, static_cast<int>(column));
    if (found.size() > size || line.find(found) == line.npos) std::abort();
  }
  return 0;
}
