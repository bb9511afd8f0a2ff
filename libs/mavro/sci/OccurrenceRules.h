#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace mavro {

// Carets that one editor has at most. More are refused, because a part of them would change a part
// of the text.
constexpr size_t cMostCarets = 10'000;

// A piece of a text.
struct Occurrence {
  int start = 0;
  int end = 0;
  friend bool operator==(const Occurrence&, const Occurrence&) = default;
};

// All places, in the order of the text, that have the bytes of the given one. If that is a whole
// word, only whole words count. None if it is empty. The search ends after the first place beyond
// cMostCarets.
std::vector<Occurrence> FindOccurrences(std::string_view text, Occurrence wanted);

// The first such place after the given one that `isFree` accepts; after the end of the text it goes
// on at the start.
std::optional<Occurrence> NextOccurrence(std::string_view text, Occurrence wanted,
                                         const std::function<bool(const Occurrence&)>& isFree);

// The lines of a text without their line ends, if there are exactly `count`; else none.
std::vector<std::string> LinesFor(std::string_view text, size_t count);

}  // namespace mavro
