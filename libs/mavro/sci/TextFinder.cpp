#include "TextFinder.h"

#include <algorithm>
#include <utility>

#include "AsciiCase.h"
#include "WordBytes.h"

namespace mavro {

namespace {

bool IsAscii(std::string_view text) {
  return std::all_of(text.begin(), text.end(), [](char c) { return (c & 0x80) == 0; });
}

// The small form of a letter of two bytes. Both forms have two bytes.
unsigned FoldPair(unsigned letter) {
  if ((letter >= 0xC0 && letter <= 0xDE && letter != 0xD7) || (letter >= 0x391 && letter <= 0x3A9))
    return letter + 0x20;
  const bool isEvenUpper =
      (letter >= 0x100 && letter < 0x130) || (letter >= 0x132 && letter < 0x138) ||
      (letter >= 0x14A && letter < 0x178) || (letter >= 0x460 && letter < 0x482) ||
      (letter >= 0x48A && letter < 0x4C0);
  if (isEvenUpper) return letter | 1;
  if ((letter >= 0x139 && letter < 0x149) || (letter >= 0x179 && letter < 0x17F))
    return letter + (letter & 1);
  if (letter >= 0x410 && letter <= 0x42F) return letter + 0x20;
  if (letter >= 0x400 && letter <= 0x40F) return letter + 0x50;
  return letter;
}

// The letter at a place in its small form, and the place after it.
unsigned FoldedAt(std::string_view text, size_t& at) {
  const auto lead = static_cast<unsigned char>(text[at++]);
  if (lead < 0x80) return static_cast<unsigned char>(AsciiLower(static_cast<char>(lead)));
  const bool isPair = lead >= 0xC2 && lead < 0xE0 && at < text.size() &&
                      (static_cast<unsigned char>(text[at]) & 0xC0) == 0x80;
  if (!isPair) return 0x10000u + lead;
  const auto trail = static_cast<unsigned char>(text[at++]);
  return FoldPair((lead & 0x1Fu) << 6 | (trail & 0x3Fu));
}

bool IsLineEnd(char c) {
  return c == '\n' || c == '\r';
}

}  // namespace

size_t LineStartIn(std::string_view text, size_t place) {
  while (place > 0 && !IsLineEnd(text[place - 1])) --place;
  return place;
}

size_t LineEndIn(std::string_view text, size_t place) {
  return std::min(text.find_first_of("\r\n", place), text.size());
}

TextFinder::TextFinder(SearchTerm newTerm)
    : term(std::move(newTerm)),
      bytes(term.text, term.matchCase ? LetterCase::cExact : LetterCase::cFolded) {
  if (term.regExp)
    expr.emplace(term.text, term.matchCase);
  else if (!term.matchCase && !IsAscii(term.text))
    folded = term.text;
}

size_t TextFinder::NextBytes(std::string_view text, size_t from) const {
  return folded.empty() ? bytes.Next(text, from) : NextFolded(text, from);
}

// Both forms of a letter have as many bytes.
size_t TextFinder::NextFolded(std::string_view text, size_t from) const {
  size_t termAt = 0;
  const unsigned first = FoldedAt(folded, termAt);
  for (size_t start = from; start + folded.size() <= text.size(); ++start) {
    size_t at = start;
    if (FoldedAt(text, at) != first) continue;
    size_t in = termAt;
    while (in < folded.size() && at < text.size()) {
      if (FoldedAt(text, at) != FoldedAt(folded, in)) break;
      if (in == folded.size() && at == start + folded.size()) return start;
    }
    if (termAt == folded.size()) return start;
  }
  return text.npos;
}

bool TextFinder::Fits(std::string_view text, const Hit& hit) const {
  return !term.wholeWord || StandsAlone(text, hit.start, hit.end);
}

std::optional<TextFinder::Hit> TextFinder::Next(std::string_view text, size_t from,
                                                size_t end) const {
  end = std::min(end, text.size());
  gaveUp = false;
  if (IsEmpty() || !Error().empty() || from > end) return {};
  if (expr) return NextExpr(text, from, end);
  const std::string_view part = text.substr(0, end);
  for (size_t at = NextBytes(part, from); at != text.npos; at = NextBytes(part, at + 1)) {
    const Hit hit{at, at + term.text.size()};
    if (Fits(text, hit)) return hit;
  }
  return {};
}

std::optional<TextFinder::Hit> TextFinder::NextExpr(std::string_view text, size_t from,
                                                    size_t end) const {
  size_t lineStart = LineStartIn(text, from);
  for (size_t at = from; lineStart <= end;) {
    const size_t lineEnd = LineEndIn(text, at);
    const std::string_view line = text.substr(lineStart, lineEnd - lineStart);
    while (at <= lineEnd) {
      Hit hit;
      const auto outcome = expr->Find(line, at - lineStart, hit.match);
      gaveUp = outcome == RegularExpr::Outcome::cTooLong;
      if (gaveUp) return {};
      if (outcome == RegularExpr::Outcome::cNone) break;
      hit.start = lineStart + hit.match.groups[0].first;
      hit.end = lineStart + hit.match.groups[0].second;
      for (auto& [first, last] : hit.match.groups) {
        if (first == RegularExpr::cNowhere) continue;
        first += lineStart;
        last += lineStart;
      }
      if (hit.end <= end && Fits(text, hit)) return hit;
      at = hit.start + 1;
    }
    if (lineEnd >= text.size()) break;
    const bool isPair = text.substr(lineEnd, 2) == "\r\n";
    at = lineStart = lineEnd + (isPair ? 2 : 1);
  }
  return {};
}

std::optional<TextFinder::Hit> TextFinder::Last(std::string_view text, size_t from,
                                                size_t end) const {
  end = std::min(end, text.size());
  gaveUp = false;
  if (IsEmpty() || !Error().empty() || from > end) return {};
  if (!expr && folded.empty()) {
    size_t before = end;
    for (size_t at = bytes.Last(text, from, before); at != text.npos;
         at = bytes.Last(text, from, before)) {
      const Hit hit{at, at + term.text.size()};
      if (Fits(text, hit)) return hit;
      before = hit.end - 1;
    }
    return {};
  }
  // From the last line to the first, the last hit of each.
  for (size_t lineEnd = end;;) {
    const size_t lineStart = std::max(LineStartIn(text, lineEnd), from);
    std::optional<Hit> last;
    for (auto hit = Next(text, lineStart, lineEnd); hit && hit->start <= lineEnd;
         hit = Next(text, hit->start + 1, lineEnd))
      last = hit;
    if (last || gaveUp || lineStart <= from) return last;
    lineEnd = lineStart - 1;
    if (lineEnd > from && text[lineEnd] == '\n' && text[lineEnd - 1] == '\r') --lineEnd;
  }
}

std::string TextFinder::Replacement(std::string_view text, const Hit& hit, std::string_view with,
                                    std::string_view lineEnd) const {
  if (!expr) return std::string(with);
  std::string replacement;
  for (size_t at = 0; at < with.size(); ++at) {
    if (with[at] != '\\' || at + 1 == with.size()) {
      replacement += with[at];
      continue;
    }
    const char c = with[++at];
    if (c >= '0' && c <= '9') {
      const auto [start, end] = hit.match.groups[static_cast<size_t>(c - '0')];
      if (start != RegularExpr::cNowhere) replacement += text.substr(start, end - start);
    } else if (c == 'n') {
      replacement += lineEnd;
    } else {
      replacement += c == 't' ? '\t' : c;
    }
  }
  return replacement;
}

}  // namespace mavro
