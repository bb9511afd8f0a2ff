#include <cstdint>
#include <cstdlib>
#include <ctime>
#include <string_view>

#include "TagRun.h"
#include "tags/TagChars.h"

// Reads any text through the character layer: the stream ends, is no longer than the text and the
// question marks that are given again, and is the same however the text is cut into pieces.

namespace {

struct Stream {
  size_t length = 0;
  uint64_t hash = 0;
};

Stream Read(std::string_view text, zendry::Language language, size_t mostAtOnce) {
  test::TextReader reader(text);
  reader.most = mostAtOnce;
  zendry::TagData store;
  if (!reader.open("").Ok()) return {};
  zendry::theTagParser.Bind(store, &reader);
  zendry::theCpp.lines.Start(reader, &store);
  zendry::theCpp.sourceInit(false, language, false);
  Stream stream;
  for (int c = zendry::theCpp.sourceGetc(); c != -1; c = zendry::theCpp.sourceGetc()) {
    stream.hash = stream.hash * 31 + static_cast<uint64_t>(c);
    if (++stream.length > 2 * text.size() + 2) std::abort();
    zendry::theCpp.midStatement = c == '{';
  }
  return stream;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  if (size == 0) return 0;
  zendry::theTagParser.keepFilePrivate = false;  // macros would be counted across all inputs
  const std::string_view text(reinterpret_cast<const char*>(data) + 1, size - 1);
  const auto language = static_cast<zendry::Language>((data[0] & 0x1F) % zendry::cLanguageCount);
  const std::clock_t start = std::clock();
  const Stream whole = Read(text, language, size);
  // Linear in the text: even an instrumented build does far more than a megabyte in a second.
  const double seconds = static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
  if (seconds > 0.1 + static_cast<double>(size) * 2e-6) std::abort();
  const Stream pieces = Read(text, language, 1 + data[0] / 8);
  if (pieces.hash != whole.hash || pieces.length != whole.length) std::abort();
  return 0;
}
