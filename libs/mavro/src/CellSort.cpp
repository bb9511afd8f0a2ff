#include "CellSort.h"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace mavro {

namespace {

// The sort key of a cell, computed once.
struct Key {
  std::string_view text;
  double number = 0;
  bool isNumber = false;
  size_t index = 0;
};

Key KeyOf(std::string_view text, size_t index) {
  Key key{text, 0, false, index};
  const auto read = std::from_chars(text.data(), text.data() + text.size(), key.number);
  key.isNumber =
      read.ec == std::errc() && read.ptr == text.data() + text.size() && std::isfinite(key.number);
  return key;
}

int Folded(char c) {
  const int byte = static_cast<unsigned char>(c);
  return byte >= 'A' && byte <= 'Z' ? byte + ('a' - 'A') : byte;
}

// Negative if the first comes before the second, zero if they are equal, positive if it comes
// after.
int CompareTexts(std::string_view first, std::string_view second) {
  const size_t shared = std::min(first.size(), second.size());
  for (size_t i = 0; i < shared; ++i)
    if (const int difference = Folded(first[i]) - Folded(second[i])) return difference;
  if (first.size() != second.size()) return first.size() < second.size() ? -1 : 1;
  return first.compare(second);
}

int Compare(const Key& first, const Key& second) {
  if (first.isNumber != second.isNumber) return first.isNumber ? -1 : 1;
  if (!first.isNumber) return CompareTexts(first.text, second.text);
  if (first.number == second.number) return 0;
  return first.number < second.number ? -1 : 1;
}

}  // namespace

std::vector<size_t> CellOrder(const std::vector<std::string_view>& cells, bool ascending) {
  std::vector<Key> keys;
  keys.reserve(cells.size());
  for (const std::string_view cell : cells) keys.push_back(KeyOf(cell, keys.size()));
  std::stable_sort(keys.begin(), keys.end(), [ascending](const Key& first, const Key& second) {
    return ascending ? Compare(first, second) < 0 : Compare(first, second) > 0;
  });
  std::vector<size_t> order;
  order.reserve(keys.size());
  for (const Key& key : keys) order.push_back(key.index);
  return order;
}

}  // namespace mavro
