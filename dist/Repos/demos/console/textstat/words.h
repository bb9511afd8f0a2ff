// SPDX-License-Identifier: MIT-0
#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

// Counts how often each word of a text occurs. A word is a run of letters, digits and bytes above
// 127, so that words of all languages written in UTF-8 stay whole. Case is ignored for A to Z.
class WordCounter {
 public:
  using Entry = std::pair<std::string, std::size_t>;

  void AddLine(std::string_view line);

  std::size_t Total() const { return total; }
  std::size_t Distinct() const { return counts.size(); }
  // The most frequent words, at most `limit`; equally frequent ones in alphabetical order.
  std::vector<Entry> MostFrequent(std::size_t limit) const;

 private:
  std::map<std::string, std::size_t> counts;
  std::size_t total = 0;
};
