#include "WindresText.h"

namespace zendry {

namespace {

constexpr uint32_t cInvalid = ~0u;

// The encoding of a code point: the first byte's mark, its mask, the number of bytes that follow,
// and the lowest code point that needs that many.
struct Utf8Row {
  unsigned char mark, mask;
  int following;
  uint32_t least;
};
constexpr Utf8Row cUtf8Rows[] = {
    {0x00, 0x80, 0, 0}, {0xC0, 0xE0, 1, 0x80}, {0xE0, 0xF0, 2, 0x800}, {0xF0, 0xF8, 3, 0x10000}};
constexpr uint32_t cLastCodePoint = 0x10FFFF;

// Takes one code point from the front of the text.
uint32_t TakeCodePoint(std::string_view& text) {
  const auto first = static_cast<unsigned char>(text[0]);
  for (const Utf8Row& row : cUtf8Rows) {
    if ((first & row.mask) != row.mark) continue;
    const auto length = static_cast<size_t>(row.following) + 1;
    if (text.size() < length) return cInvalid;
    uint32_t point = first & static_cast<unsigned char>(~row.mask);
    for (size_t i = 1; i < length; ++i) {
      const auto next = static_cast<unsigned char>(text[i]);
      if ((next & 0xC0) != 0x80) return cInvalid;
      point = point << 6 | (next & 0x3F);
    }
    text.remove_prefix(length);
    return point >= row.least && point <= cLastCodePoint ? point : cInvalid;
  }
  return cInvalid;
}

}  // namespace

void AppendUtf8(std::string& text, uint32_t codePoint) {
  const Utf8Row* row = cUtf8Rows;
  for (const Utf8Row& longer : cUtf8Rows)
    if (codePoint >= longer.least) row = &longer;
  text += static_cast<char>(row->mark | codePoint >> 6 * row->following);
  for (int i = row->following - 1; i >= 0; --i)
    text += static_cast<char>(0x80 | (codePoint >> 6 * i & 0x3F));
}

void AppendNumber(std::string& bytes, uint64_t number, int size) {
  for (int i = 0; i < size; ++i) bytes += static_cast<char>(number >> 8 * i & 0xFF);
}

bool AppendUtf16(std::string& bytes, std::string_view text) {
  while (!text.empty()) {
    uint32_t point = TakeCodePoint(text);
    if (point == cInvalid) return false;
    if (point >= 0x10000) {
      point -= 0x10000;
      AppendNumber(bytes, 0xD800 + (point >> 10), 2);
      point = 0xDC00 + (point & 0x3FF);
    }
    AppendNumber(bytes, point, 2);
  }
  return true;
}

std::string Capitals(std::string_view word) {
  std::string capitals(word);
  for (char& c : capitals)
    if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 'a' + 'A');
  return capitals;
}

}  // namespace zendry
