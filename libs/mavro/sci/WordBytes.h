#pragma once

#include <string_view>

namespace mavro {

// True for a byte that a word can have. Letters beyond ASCII are parts of words.
inline bool IsWordByte(char c) {
  const auto byte = static_cast<unsigned char>(c);
  const bool isLetter = (byte | 0x20) >= 'a' && (byte | 0x20) <= 'z';
  return byte >= 0x80 || isLetter || (byte >= '0' && byte <= '9') || byte == '_';
}

// True if no word goes over the start or the end of a piece of a text.
inline bool StandsAlone(std::string_view text, size_t start, size_t end) {
  const auto isWord = [text](size_t at) { return at < text.size() && IsWordByte(text[at]); };
  const bool goesOverStart = start > 0 && isWord(start - 1) && isWord(start);
  const bool goesOverEnd = end > 0 && isWord(end - 1) && isWord(end);
  return !goesOverStart && !goesOverEnd;
}

}  // namespace mavro
