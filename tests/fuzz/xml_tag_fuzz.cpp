#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "base/XmlTag.h"

// Reads elements and writes them again: each one that says it reads back must, and the reader must
// come to the end of every text. Texts with an overlong token end the process by rule.

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  using zendry::TagSource;
  using zendry::XmlTag;
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  if (!zendry::TokensFit(text)) return 0;
  TagSource source{text};
  size_t before = 0;
  for (XmlTag tag; tag.read(&source);) {
    if (source.position <= before || source.position > size) std::abort();
    before = source.position;
    if (!tag.ReadsBack()) continue;
    std::string line;
    tag.write(line);
    TagSource again{line};
    XmlTag copy;
    if (!copy.read(&again) || copy.n != tag.n || copy.o != tag.o || copy.p != tag.p ||
        copy.v != tag.v || copy.id != tag.id)
      std::abort();
  }
  return 0;
}
