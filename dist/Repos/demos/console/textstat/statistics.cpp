// SPDX-License-Identifier: MIT-0
#include "statistics.h"

#include <algorithm>

std::size_t CountCharacters(std::string_view text) {
  // Every byte begins a character but those that go on with one, 10xxxxxx.
  return static_cast<std::size_t>(std::count_if(text.begin(), text.end(), [](char c) {
    return (static_cast<unsigned char>(c) & 0xC0) != 0x80;
  }));
}

void TextStatistics::AddLine(std::string_view line) {
  const std::size_t length = CountCharacters(line);
  ++lines;
  if (length == 0) ++emptyLines;
  longestLine = std::max(longestLine, length);
  characters += length;
  words.AddLine(line);
}
