#pragma once

#include <bitset>
#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "ByteFind.h"

namespace zendry {

// What a search in files looks for.
struct LineTerm {
  std::string text;
  bool matchCase = false;
  bool wholeWord = false;  // no letter or digit of ASCII and no "_" before and after it
};

// Looks for a term in a line, in one run from left to right from `from` on: a byte that differs
// sets the run back to the start of the term and is not tried again. So it misses "aab" in "aaab".
// Returns the place after the first hit; 0 if there is none.
size_t findInLine(std::string_view line, const LineTerm& term, size_t from = 0);

// A line of a text with hits.
struct LineHit {
  size_t line = 0;  // from 1
  std::string_view text;
  bool isMissed = false;  // findInLine misses it, only a full search finds a hit
  size_t start = 0;       // where the first hit of the full search begins in `text`
};

// Finds the hits of a term in whole texts. Lines end as in an editor: with LF, CR LF or a lone CR.
class TextScan {
 public:
  explicit TextScan(LineTerm newTerm);

  // Calls `found` for each line with a hit, in order, until it returns false.
  void EachLine(std::string_view text, const std::function<bool(const LineHit&)>& found) const;

  // The hits that are replaced: those of findInLine, each run goes on after the hit before.
  struct Hits {
    std::vector<size_t> starts;
    size_t missed = 0;  // further hits of a full search, which stay
  };
  Hits AllHits(std::string_view text) const;

  const LineTerm& Term() const { return term; }

 private:
  size_t NextFull(std::string_view text, size_t from) const;
  void AddHitsOf(std::string_view line, size_t offset, Hits& hits) const;

  const LineTerm term;
  const mavro::ByteFind bytes;
  std::bitset<256> inside;  // the bytes of the term but for its last one, in both cases
  const bool canMatch;      // false for a term with a line end, or without any byte
};

}  // namespace zendry
