#include <cstdint>
#include <string_view>

#include "project/SessionFile.h"

// Reads a session file.

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  zendry::ReadSessionText(text);
  return 0;
}
