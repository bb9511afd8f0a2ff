#include <cstdint>
#include <cstdlib>
#include <ctime>
#include <string_view>

#include "TagRun.h"

// Parses any text in any language, from the bytes to the store: it ends, in time linear in the
// text, with no more tags than may be, each in a line that the text has.

namespace {

void CheckItem(const zendry::TagItem& item, int lines) {
  if (item.line < 1 || item.line > lines || item.name.empty()) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  if (size == 0) return 0;
  const std::string_view text(reinterpret_cast<const char*>(data) + 1, size - 1);
  test::TagRunOptions options;
  options.language = static_cast<zendry::Language>((data[0] & 0x1F) % zendry::cLanguageCount);
  options.locals = (data[0] & 0x40) != 0;
  options.mostAtOnce = (data[0] & 0x80) != 0 ? 13 : size;
  const std::clock_t start = std::clock();
  const test::TagRun run = test::ParseTags(text, (data[0] & 0x20) != 0 ? "a.h" : "a.cpp", options);
  const double seconds = static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
  if (seconds > 0.2 + static_cast<double>(size) * 5e-6) std::abort();
  int lines = 1;
  for (const char c : text) lines += c == '\n' || c == '\r' ? 1 : 0;
  size_t count = run.store.globals.size();
  for (const zendry::TagItem& item : run.store.globals) CheckItem(item, lines);
  for (const auto& [name, record] : run.store.classes) {
    if (record.name != name) std::abort();
    count += record.members.size() + (record.kind != 0 ? 1 : 0);
    for (const zendry::TagItem& item : record.members) CheckItem(item, lines);
  }
  if (count > 1025) std::abort();
  return 0;
}
