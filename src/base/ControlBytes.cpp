#include "base/ControlBytes.h"

#include <cstdint>
#include <cstdio>

namespace zendry {

namespace {

struct Character {
  uint32_t code = 0;  // the byte itself when it begins no valid sequence
  size_t length = 1;
};

bool IsContinuation(std::string_view text, size_t at) {
  return at < text.size() && (static_cast<uint8_t>(text[at]) & 0xC0) == 0x80;
}

// Decodes the UTF-8 sequence at the start of `text`; it doesn't check for overlong forms and
// surrogates, since their marks would be the same.
Character Decode(std::string_view text) {
  const auto first = static_cast<uint8_t>(text[0]);
  const size_t length = first >= 0xF0 && first < 0xF8   ? 4
                        : first >= 0xE0 && first < 0xF0 ? 3
                        : first >= 0xC2 && first < 0xE0 ? 2
                                                        : 1;
  if (length == 1) return {first, 1};
  uint32_t code = first & (0xFFu >> (length + 1));
  for (size_t i = 1; i < length; ++i) {
    if (!IsContinuation(text, i)) return {first, 1};
    code = code << 6 | (static_cast<uint8_t>(text[i]) & 0x3F);
  }
  return {code, length};
}

bool IsControl(uint32_t code) {
  return (code < 0x20 && code != '\t' && code != '\n') || (code >= 0x7F && code < 0xA0);
}

bool TurnsDirection(uint32_t code) {
  return (code >= 0x202A && code <= 0x202E) || (code >= 0x2066 && code <= 0x2069);
}

std::string Mark(const char* format, uint32_t code) {
  char mark[16];
  std::snprintf(mark, sizeof mark, format, code);
  return mark;
}

}  // namespace

std::string MarkControlBytes(std::string_view text) {
  std::string marked;
  marked.reserve(text.size());
  while (!text.empty()) {
    const Character character = Decode(text);
    if (character.code == '\r' && text.size() > 1 && text[1] == '\n')
      marked += '\r';
    else if (IsControl(character.code))
      marked += Mark("<%02x>", character.code);
    else if (TurnsDirection(character.code))
      marked += Mark("<U+%04X>", character.code);
    else
      marked += text.substr(0, character.length);
    text.remove_prefix(character.length);
  }
  return marked;
}

}  // namespace zendry
