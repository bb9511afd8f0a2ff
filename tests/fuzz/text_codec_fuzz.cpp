// The bytes of a file through the decoder and back: whatever they are, in whatever chunks they are
// read, they come back unchanged.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "TextCodec.h"

namespace {

void Expect(bool holds) {
  if (!holds) std::abort();
}

std::string DecodeInChunks(std::string_view bytes, mavro::TextDecoder& decoder, size_t chunk) {
  std::string text(decoder.Decode(bytes.substr(0, 3)));  // the mark lies in the first chunk
  bytes.remove_prefix(std::min<size_t>(3, bytes.size()));
  for (; !bytes.empty(); bytes.remove_prefix(std::min(chunk, bytes.size())))
    text += decoder.Decode(bytes.substr(0, chunk));
  return text.append(decoder.Finish());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  if (size == 0) return 0;
  const size_t chunk = data[0] % 7u + 1;
  const std::string_view bytes(reinterpret_cast<const char*>(data) + 1, size - 1);
  const mavro::TextEncoding encoding = mavro::DetectEncoding(bytes);
  mavro::TextDecoder whole(encoding), parts(encoding);
  const std::string text = DecodeInChunks(bytes, whole, size);
  Expect(DecodeInChunks(bytes, parts, chunk) == text);
  Expect(mavro::EncodeText(text, encoding, whole.oddByte) == std::string(bytes));
  for (const mavro::ByteRange& range : mavro::TrailingBlanks(text))
    Expect(range.start < range.end && range.end <= text.size());
  mavro::EncodeText(bytes, mavro::cUtf16Big);
  mavro::CodingCookie(bytes);
  mavro::FirstLineEnding(bytes);
  const bool ascii = bytes.find_first_of("\x80\xFF") == std::string_view::npos;
  Expect(ascii || mavro::ClassifyBytes(bytes) != mavro::TextBytes::cAscii);
  return 0;
}
