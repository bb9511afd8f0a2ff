#include "search/LineFind.h"

#include <algorithm>
#include <cstring>
#include <utility>

#include "AsciiCase.h"

namespace zendry {

namespace {

bool IsNameByte(char c) {
  const char lower = mavro::AsciiLower(c);
  return (lower >= 'a' && lower <= 'z') || (c >= '0' && c <= '9') || c == '_';
}

bool IsWholeWord(std::string_view line, size_t start, size_t end) {
  return (start == 0 || !IsNameByte(line[start - 1])) &&
         (end >= line.size() || !IsNameByte(line[end]));
}

// The end of the last line before `at`, not before `first`.
size_t LineStart(std::string_view text, size_t at, size_t first) {
  const auto after = [&](char end) {
    const void* found = memrchr(text.data() + first, end, at - first);
    return found ? static_cast<size_t>(static_cast<const char*>(found) - text.data()) + 1 : first;
  };
  return std::max(after('\n'), after('\r'));
}

size_t LineEnd(std::string_view text, size_t at) {
  const size_t end = std::min(text.find('\n', at), text.size());
  return std::min(text.substr(0, end).find('\r', at), end);
}

// Counts the lines of a text up to places that come in order.
class LineCounter {
 public:
  explicit LineCounter(std::string_view newText) : text(newText) {}

  // The number of the line that a place is in, from 1.
  size_t At(size_t place) {
    const std::string_view passed = text.substr(counted, place - counted);
    line += mavro::CountBytes(passed, '\n');
    if (!hasLooked) hasReturns = text.find('\r') != text.npos;
    hasLooked = true;
    if (hasReturns)
      for (size_t i = counted; i < place; ++i)
        line += text[i] == '\r' && text.substr(i + 1, 1) != "\n";
    counted = place;
    return line;
  }

 private:
  const std::string_view text;
  size_t counted = 0, line = 1;
  bool hasLooked = false, hasReturns = false;
};

}  // namespace

size_t findInLine(std::string_view line, const LineTerm& term, size_t from) {
  const std::string_view wanted = term.text;
  if (wanted.empty()) return 0;
  size_t matched = 0;
  for (size_t i = from; i < line.size(); ++i) {
    const bool isEqual = term.matchCase
                             ? line[i] == wanted[matched]
                             : mavro::AsciiLower(line[i]) == mavro::AsciiLower(wanted[matched]);
    matched = isEqual ? matched + 1 : 0;
    if (matched < wanted.size()) continue;
    if (!term.wholeWord || IsWholeWord(line, i + 1 - matched, i + 1)) return i + 1;
    matched = 0;
  }
  return 0;
}

TextScan::TextScan(LineTerm newTerm)
    : term(std::move(newTerm)),
      bytes(term.text, term.matchCase ? mavro::LetterCase::cExact : mavro::LetterCase::cFolded),
      canMatch(!term.text.empty() && term.text.find_first_of("\r\n") == std::string::npos) {
  for (size_t i = 0; i + 1 < term.text.size(); ++i) {
    const char letters[] = {term.text[i], mavro::AsciiLower(term.text[i]),
                            mavro::AsciiUpper(term.text[i])};
    for (const char c : letters) inside.set(static_cast<unsigned char>(c));
  }
}

size_t TextScan::NextFull(std::string_view text, size_t from) const {
  size_t at = bytes.Next(text, from);
  while (term.wholeWord && at != text.npos && !IsWholeWord(text, at, at + term.text.size()))
    at = bytes.Next(text, at + 1);
  return at;
}

// Only a line with a hit of the full search can have one of findInLine, which compares the same
// bytes. The ends of a line are no parts of names, so that whole words may be judged in the text.
// After a byte that the term has nowhere but at its end the run is at the term's start, and takes
// the hit that follows.
void TextScan::EachLine(std::string_view text,
                        const std::function<bool(const LineHit&)>& found) const {
  if (!canMatch) return;
  LineCounter counter(text);
  size_t next = 0;
  for (size_t at = NextFull(text, 0); at != text.npos; at = NextFull(text, next)) {
    const size_t start = LineStart(text, at, next);
    const size_t end = LineEnd(text, at);
    const std::string_view line = text.substr(start, end - start);
    const bool isRunAtStart = at == start || !inside[static_cast<unsigned char>(text[at - 1])];
    const bool isMissed = !isRunAtStart && findInLine(line, term) == 0;
    if (!found({counter.At(start), line, isMissed, at - start})) return;
    if (end >= text.size()) return;
    next = end + 1;
  }
}

void TextScan::AddHitsOf(std::string_view line, size_t offset, Hits& hits) const {
  size_t looked = 0;  // up to here hits of the full search have been counted
  const auto countMissed = [&](size_t end) {
    for (size_t at = NextFull(line, looked); at != line.npos && at + term.text.size() <= end;
         at = NextFull(line, at + term.text.size()))
      ++hits.missed;
  };
  for (size_t end = findInLine(line, term); end != 0; end = findInLine(line, term, end)) {
    countMissed(end - term.text.size());
    hits.starts.push_back(offset + end - term.text.size());
    looked = end;
  }
  countMissed(line.size());
}

TextScan::Hits TextScan::AllHits(std::string_view text) const {
  Hits hits;
  EachLine(text, [&](const LineHit& hit) {
    AddHitsOf(hit.text, static_cast<size_t>(hit.text.data() - text.data()), hits);
    return true;
  });
  return hits;
}

}  // namespace zendry
