// SPDX-License-Identifier: MIT-0
#include "words.h"

#include <algorithm>

namespace {

bool IsWordByte(char c) {
  const bool isLetter = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
  const bool isDigit = c >= '0' && c <= '9';
  return isLetter || isDigit || static_cast<unsigned char>(c) > 127;
}

std::string LowerCase(std::string_view word) {
  std::string lower(word);
  for (char& c : lower)
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  return lower;
}

}  // namespace

void WordCounter::AddLine(std::string_view line) {
  auto begin = line.begin();
  while (true) {
    begin = std::find_if(begin, line.end(), IsWordByte);
    if (begin == line.end()) return;
    const auto end = std::find_if_not(begin, line.end(), IsWordByte);
    ++counts[LowerCase(line.substr(begin - line.begin(), end - begin))];
    ++total;
    begin = end;
  }
}

std::vector<WordCounter::Entry> WordCounter::MostFrequent(std::size_t limit) const {
  std::vector<Entry> entries(counts.begin(), counts.end());
  std::stable_sort(entries.begin(), entries.end(),
                   [](const Entry& a, const Entry& b) { return a.second > b.second; });
  entries.resize(std::min(limit, entries.size()));
  return entries;
}
