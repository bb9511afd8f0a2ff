#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

#include "WindresObject.h"
#include "WindresScript.h"

// Reads a resource script as the preprocessor might leave it. It ends with an error that names a
// line, or with resources that can be laid out as an object.

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  const zendry::ResourceList list = zendry::ReadScript(text, "a.rc");
  if (!list.error.empty()) {
    if (list.error.find(": ") == std::string::npos) std::abort();
    return 0;
  }
  std::vector<uint64_t> sizes;
  size_t total = 0;
  for (const zendry::Resource& resource : list.resources) {
    if (resource.type.empty()) std::abort();
    sizes.push_back(resource.bytes.size());
    total += resource.bytes.size();
  }
  size_t written = 0;
  for (const zendry::ObjectPiece& piece : zendry::LayOutObject(list.resources, sizes))
    written += piece.bytes.size();
  if (written < total) std::abort();
  return 0;
}
