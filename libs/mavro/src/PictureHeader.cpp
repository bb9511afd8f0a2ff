#include "PictureHeader.h"

#include <cstdio>
#include <string>

namespace mavro {

namespace {

using Claim = std::optional<ClaimedSize>;

uint64_t Byte(std::string_view bytes, size_t at) {
  return at < bytes.size() ? static_cast<unsigned char>(bytes[at]) : 0;
}

int64_t Little(std::string_view bytes, size_t at, int count) {
  uint64_t value = 0;
  for (int i = count; i-- > 0;) value = value << 8 | Byte(bytes, at + static_cast<size_t>(i));
  return static_cast<int64_t>(value);
}

int64_t Big(std::string_view bytes, size_t at, int count) {
  uint64_t value = 0;
  for (int i = 0; i < count; ++i) value = value << 8 | Byte(bytes, at + static_cast<size_t>(i));
  return static_cast<int64_t>(value);
}

// A header of 12 bytes has 16-bit sizes, later ones 32-bit ones, in which a negative height means
// rows from the top.
Claim BitmapSize(std::string_view bytes) {
  constexpr size_t cWidth = 18;
  if (bytes.size() < 26) return {};
  if (Little(bytes, 14, 4) == 12)
    return ClaimedSize{Little(bytes, cWidth, 2), Little(bytes, cWidth + 2, 2)};
  const auto height = static_cast<int32_t>(Little(bytes, cWidth + 4, 4));
  return ClaimedSize{static_cast<int32_t>(Little(bytes, cWidth, 4)),
                     height < 0 ? -int64_t{height} : height};
}

Claim PngSize(std::string_view bytes) {
  if (bytes.size() < 24) return {};
  return ClaimedSize{Big(bytes, 16, 4), Big(bytes, 20, 4)};
}

Claim GifSize(std::string_view bytes) {
  if (bytes.size() < 10) return {};
  return ClaimedSize{Little(bytes, 6, 2), Little(bytes, 8, 2)};
}

bool IsFrameStart(uint64_t marker) {
  return marker >= 0xC0 && marker <= 0xCF && marker != 0xC4 && marker != 0xC8 && marker != 0xCC;
}

// The file is a sequence of segments: 0xFF, a marker, and a length of two bytes that includes
// itself.
Claim JpegSize(std::string_view bytes) {
  size_t at = 2;
  while (at + 9 <= bytes.size() && Byte(bytes, at) == 0xFF) {
    const uint64_t marker = Byte(bytes, at + 1);
    if (IsFrameStart(marker)) return ClaimedSize{Big(bytes, at + 7, 2), Big(bytes, at + 5, 2)};
    at += marker == 0xFF ? 1 : 2 + static_cast<size_t>(Big(bytes, at + 2, 2));
  }
  return {};
}

// The first string contains width and height.
Claim XpmSize(std::string_view bytes) {
  const size_t quote = bytes.find('"');
  if (quote == std::string_view::npos) return {};
  const std::string values(bytes.substr(quote + 1, 40));
  long long width = 0;
  long long height = 0;
  if (std::sscanf(values.c_str(), "%19lld %19lld", &width, &height) != 2) return {};
  return ClaimedSize{width, height};
}

struct FormatRow {
  std::string_view start;
  Claim (*read)(std::string_view);
};

constexpr FormatRow cFormats[] = {
    {"BM", BitmapSize}, {"\x89PNG", PngSize}, {"\xFF\xD8", JpegSize},
    {"GIF8", GifSize},  {"/* XPM", XpmSize},
};

}  // namespace

std::optional<ClaimedSize> ReadClaimedSize(std::string_view bytes) {
  for (const FormatRow& row : cFormats)
    if (bytes.substr(0, row.start.size()) == row.start) return row.read(bytes);
  return {};
}

}  // namespace mavro
