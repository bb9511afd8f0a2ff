#include "OccurrenceRules.h"

#include <algorithm>

#include "WordBytes.h"

namespace mavro {

namespace {

bool IsWholeWord(std::string_view text, size_t start, size_t end) {
  if (!StandsAlone(text, start, end)) return false;
  return std::all_of(text.begin() + static_cast<ptrdiff_t>(start),
                     text.begin() + static_cast<ptrdiff_t>(end), IsWordByte);
}

// A piece of a text that is looked for.
struct Wanted {
  Wanted(std::string_view newText, Occurrence place)
      : text(newText),
        piece(text.substr(static_cast<size_t>(place.start),
                          static_cast<size_t>(std::max(place.end - place.start, 0)))),
        asWord(IsWholeWord(text, static_cast<size_t>(place.start), End(place))) {}

  // The first place at or after `at`.
  std::optional<Occurrence> Next(size_t at) const {
    if (piece.empty()) return {};
    for (at = text.find(piece, at); at != text.npos; at = text.find(piece, at + 1))
      if (!asWord || IsWholeWord(text, at, at + piece.size()))
        return Occurrence{static_cast<int>(at), static_cast<int>(at + piece.size())};
    return {};
  }
  static size_t End(Occurrence place) {
    return static_cast<size_t>(std::max(place.start, place.end));
  }

  std::string_view text, piece;
  bool asWord;
};

}  // namespace

std::vector<Occurrence> FindOccurrences(std::string_view text, Occurrence wanted) {
  std::vector<Occurrence> found;
  const Wanted pieces(text, wanted);
  for (auto next = pieces.Next(0); next && found.size() <= cMostCarets;
       next = pieces.Next(Wanted::End(*next)))
    found.push_back(*next);
  return found;
}

std::optional<Occurrence> NextOccurrence(std::string_view text, Occurrence wanted,
                                         const std::function<bool(const Occurrence&)>& isFree) {
  const Wanted pieces(text, wanted);
  for (auto next = pieces.Next(Wanted::End(wanted)); next; next = pieces.Next(Wanted::End(*next)))
    if (isFree(*next)) return next;
  for (auto next = pieces.Next(0); next && next->start < wanted.start;
       next = pieces.Next(Wanted::End(*next)))
    if (isFree(*next)) return next;
  return {};
}

std::vector<std::string> LinesFor(std::string_view text, size_t count) {
  std::vector<std::string> lines;
  for (size_t at = 0; at < text.size() && lines.size() <= count;) {
    const size_t end = std::min(text.find_first_of("\r\n", at), text.size());
    lines.emplace_back(text.substr(at, end - at));
    at = end + (text.substr(end, 2) == "\r\n" ? 2 : 1);
  }
  if (count < 2 || lines.size() != count) lines.clear();
  return lines;
}

}  // namespace mavro
