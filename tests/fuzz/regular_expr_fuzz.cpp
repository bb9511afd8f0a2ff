#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "TextFinder.h"

// An expression and a text, with a zero byte between: reading and searching end, and what is found
// is in the text, in order.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  const size_t middle = bytes.find('\0');
  if (middle == bytes.npos || bytes.size() > 120) return 0;
  const std::string_view text = bytes.substr(middle + 1);
  const mavro::TextFinder finder({std::string(bytes.substr(0, middle)), false, false, true});
  size_t least = 0;
  for (auto hit = finder.Next(text, 0, text.size()); hit && !finder.GaveUp();) {
    if (hit->start < least || hit->end < hit->start || hit->end > text.size()) std::abort();
    for (const auto& [start, end] : hit->match.groups)
      if (start != mavro::RegularExpr::cNowhere && (start > end || end > text.size())) std::abort();
    finder.Replacement(text, *hit, "\\0\\1\\9", "\n");
    least = hit->end + (hit->end == hit->start);
    hit = finder.Next(text, least, text.size());
  }
  return 0;
}
