#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "base/XmlTag.h"
#include "tags/TagCache.h"
#include "tags/TagData.h"

// Reads compiled tags. What was read is written as a text that can be read and is trusted, and of
// which no cut or changed copy is.

namespace {

void Check(bool ok) {
  if (!ok) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  using namespace zendry;
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  const uint64_t mark = size;
  IsCacheTrue(text, nullptr);
  IsCacheTrue(text, &mark);
  TagData read;
  ReadCacheText(text, read);
  const std::string written = CacheText(read, mark);
  Check(TokensFit(written));
  Check(IsCacheTrue(written, &mark));
  const size_t place = size % written.size();
  Check(!IsCacheTrue(std::string_view(written).substr(0, place), &mark));
  std::string changed = written;
  changed[place] = static_cast<char>(changed[place] ^ 4);
  Check(!IsCacheTrue(changed, &mark));
  TagData again;
  ReadCacheText(written, again);
  Check(again.classes.size() <= read.classes.size() || written.find('"') != std::string::npos);
  return 0;
}
