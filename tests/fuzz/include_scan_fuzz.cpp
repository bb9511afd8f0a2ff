#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "tags/IncludeScan.h"

// Scans a source for includes: no name is longer than the limit, and there are no more of them than
// lines that could hold one.

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  const auto includes = zendry::ScanIncludes(text);
  if (includes.size() * sizeof "#include" > size) std::abort();
  for (const zendry::IncludeRec& entry : includes)
    if (entry.name.size() > 244) std::abort();
  return 0;
}
