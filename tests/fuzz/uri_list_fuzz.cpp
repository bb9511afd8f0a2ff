#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "UriList.h"

// Whatever a program hands over, what comes out are absolute paths that the system can take.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::string_view list(reinterpret_cast<const char*>(data), size);
  for (const std::string& path : mavro::LocalPathsOf(list, "desk"))
    if (!path.starts_with('/') || path.find('\0') != std::string::npos) std::abort();
  return 0;
}
