#include "lsp/LspText.h"

#include <algorithm>

namespace zendry {

namespace {

bool IsContinued(char c) {
  return (static_cast<unsigned char>(c) & 0xC0) == 0x80;
}

// The length of the UTF-8 character at the start of a text; 1 for a byte that begins none.
size_t CharacterLength(std::string_view text) {
  const auto first = static_cast<unsigned char>(text.front());
  const size_t length = first >= 0xF0 ? 4 : first >= 0xE0 ? 3 : first >= 0xC0 ? 2 : 1;
  if (length > text.size() || first >= 0xF8) return 1;
  const std::string_view rest = text.substr(1, length - 1);
  return std::all_of(rest.begin(), rest.end(), IsContinued) ? length : 1;
}

// How many columns a character of that many bytes takes.
int Width(size_t bytes, LspColumns columns) {
  if (columns == LspColumns::cUtf8) return static_cast<int>(bytes);
  return bytes == 4 ? 2 : 1;
}

}  // namespace

void LspText::CopyRange(int start, int end, char* to) const {
  std::copy(text.begin() + start, text.begin() + end, to);
}

const std::vector<int>& LspText::LineStarts() const {
  if (!lineStarts.empty()) return lineStarts;
  lineStarts.push_back(0);
  for (size_t at = text.find_first_of("\r\n"); at != text.npos;
       at = text.find_first_of("\r\n", at)) {
    at += text.compare(at, 2, "\r\n") == 0 ? 2 : 1;
    lineStarts.push_back(static_cast<int>(at));
  }
  return lineStarts;
}

int LspText::LineFromPosition(int position) const {
  const std::vector<int>& starts = LineStarts();
  const auto next = std::upper_bound(starts.begin(), starts.end(), std::max(position, 0));
  return static_cast<int>(next - starts.begin()) - 1;
}

int LspText::PositionFromLine(int line) const {
  const std::vector<int>& starts = LineStarts();
  if (line <= 0) return 0;
  return line < static_cast<int>(starts.size()) ? starts[static_cast<size_t>(line)] : Length();
}

std::string_view LspText::LineText(int line) const {
  const int begin = PositionFromLine(line);
  std::string_view found(text);
  found = found.substr(static_cast<size_t>(begin),
                       static_cast<size_t>(PositionFromLine(line + 1) - begin));
  while (found.ends_with('\n') || found.ends_with('\r')) found.remove_suffix(1);
  return found;
}

std::string_view LspText::LineToCaret() const {
  const int begin = PositionFromLine(LineFromPosition(caret));
  return View().substr(static_cast<size_t>(begin), static_cast<size_t>(caret - begin));
}

int LspText::PositionOf(LspPlace place, LspColumns columns) const {
  if (place.line < 0) return 0;
  if (place.line >= static_cast<int>(LineStarts().size())) return Length();
  const std::string_view line = LineText(place.line);
  size_t at = 0;
  for (int column = 0; at < line.size();) {
    const size_t bytes = CharacterLength(line.substr(at));
    column += Width(bytes, columns);
    if (column > place.column) break;
    at += bytes;
  }
  return PositionFromLine(place.line) + static_cast<int>(at);
}

LspPlace LspText::PlaceOf(int position, LspColumns columns) const {
  LspPlace place;
  position = std::clamp(position, 0, Length());
  place.line = LineFromPosition(position);
  const std::string_view line = LineText(place.line);
  const auto end = static_cast<size_t>(position - PositionFromLine(place.line));
  for (size_t at = 0; at < std::min(end, line.size());) {
    const size_t bytes = CharacterLength(line.substr(at));
    place.column += Width(bytes, columns);
    at += bytes;
  }
  return place;
}

void LspText::Replace(int begin, int end, std::string_view with) {
  bodies.WillChange(*this, begin, end - begin, static_cast<int>(with.size()));
  text.replace(static_cast<size_t>(begin), static_cast<size_t>(end - begin), with);
  Changed();
}

void LspText::ReplaceAll(std::string newText) {
  text = std::move(newText);
  bodies.Lose();
  Changed();
}

void LspText::Changed() {
  lineStarts.clear();
  caret = std::min(caret, Length());
  parsed = parsed && bodies.Hold(*this);
}

}  // namespace zendry
