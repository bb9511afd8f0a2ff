#include "code/TextScanner.h"

#include <algorithm>

namespace zendry {

namespace {

// A skip of at least this many bytes is worth remembering.
constexpr int cLongSkip = 1000;

}  // namespace

bool IsWordChar(int c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_';
}

bool IsWhiteSpace(int c) {
  return c == ' ' || (c >= '\t' && c <= '\r');
}

TextScanner::TextScanner(const CaretText& text, Reach reach)
    : editor(text),
      position(std::clamp(text.CaretPosition(), 0, text.Length())),
      limit(reach == Reach::cWholeText ? text.Length()
                                       : std::min(text.Length(), position + cNearReach)),
      length(text.Length()) {}

int TextScanner::At(int place) {
  if (place < 0 || place >= length) return 0;
  const int inWindow = place - windowStart;
  if (inWindow < 0 || inWindow >= static_cast<int>(window.size())) MoveWindow(place);
  return static_cast<unsigned char>(window[place - windowStart]);
}

// The window begins somewhat before the place, or ends at the end of the text if that is near.
void TextScanner::MoveWindow(int place) {
  windowStart = std::max(std::min(place - cWindowLead, length - cWindow), 0);
  const int end = std::min(windowStart + cWindow, length);
  window.resize(end - windowStart);
  editor.CopyRange(windowStart, end, window.data());
}

int TextScanner::readBack() {
  while (position > 0) {
    const int c = At(--position);
    int comment = -1;
    if (c == '\n')
      comment = LineCommentStart(position);
    else if (c == '/' && At(position - 1) == '*')
      comment = BlockCommentStart(position - 1);
    if (comment < 0) return c;
    position = comment;
  }
  return 0;
}

int TextScanner::readForward() {
  while (position < limit) {
    const int c = At(position++);
    if (c != '/' || position >= limit) return c;
    if (At(position) == '/') {
      while (position < limit && At(position) != '\n') ++position;
    } else if (At(position) == '*') {
      ++position;
      while (position < limit && (At(position) != '*' || At(position + 1) != '/')) ++position;
      position = std::min(position + 2, limit);
    } else {
      return c;
    }
  }
  return 0;
}

// The beginning of the comment in the line that ends with this newline; -1 when it has none.
int TextScanner::LineCommentStart(int newline) {
  if (const auto known = lineSkips.find(newline); known != lineSkips.end()) return known->second;
  int found = -1;
  int place = newline - 1;
  for (; place >= 0 && At(place) != '\n'; --place)
    if (At(place) == '/' && At(place + 1) == '/') found = place;
  return Remember(lineSkips, newline, place, found);
}

// The beginning of the comment whose closing "*" is at this place; -1 if no comment ends there.
int TextScanner::BlockCommentStart(int star) {
  if (const auto known = blockSkips.find(star); known != blockSkips.end()) return known->second;
  int place = star - 2;
  while (place >= 0 && (At(place) != '/' || At(place + 1) != '*')) --place;
  return Remember(blockSkips, star, place, std::max(place, -1));
}

int TextScanner::Remember(Skips& skips, int from, int reached, int found) {
  if (from - reached >= cLongSkip) skips[from] = found;
  return found;
}

}  // namespace zendry
