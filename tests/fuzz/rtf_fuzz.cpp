#include <cstddef>
#include <cstdint>
#include <string_view>

#include "RtfReader.h"

// Any bytes are read to an end, and no text comes out that is much longer than what went in.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  const mavro::RtfText text = mavro::ReadRtf(bytes);
  size_t length = 0;
  for (const mavro::RtfParagraph& paragraph : text.paragraphs)
    for (const mavro::RtfRun& run : paragraph.runs) length += run.text.size();
  if (length > 2 * size + 8 || text.paragraphs.size() > size + 1) __builtin_trap();
  return 0;
}
