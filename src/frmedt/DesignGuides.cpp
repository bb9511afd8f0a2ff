#include "frmedt/DesignGuides.h"

#include <algorithm>
#include <map>

namespace zendry {

namespace {

struct Span {
  int from, to;
};

using Lines = std::map<int, Span>;  // by their place: one line for all rectangles on it

void Note(Lines& lines, int at, int from, int to) {
  const auto [line, isNew] = lines.emplace(at, Span{from, to});
  if (isNew) return;
  line->second.from = std::min(line->second.from, from);
  line->second.to = std::max(line->second.to, to);
}

}  // namespace

std::vector<mavro::Rect> GuideLines(const mavro::Rect& moved,
                                    const std::vector<mavro::Rect>& others) {
  const auto right = [](const mavro::Rect& rect) { return rect.left + rect.width - 1; };
  const auto bottom = [](const mavro::Rect& rect) { return rect.top + rect.height - 1; };
  Lines upright, level;
  for (const mavro::Rect& other : others) {
    const int top = std::min(moved.top, other.top);
    const int low = std::max(bottom(moved), bottom(other)) + 1;
    const int left = std::min(moved.left, other.left);
    const int far = std::max(right(moved), right(other)) + 1;
    if (moved.left == other.left) Note(upright, moved.left, top, low);
    if (right(moved) == right(other)) Note(upright, right(moved), top, low);
    if (moved.top == other.top) Note(level, moved.top, left, far);
    if (bottom(moved) == bottom(other)) Note(level, bottom(moved), left, far);
    if (2 * moved.top + moved.height == 2 * other.top + other.height)
      Note(level, moved.top + moved.height / 2, left, far);
  }
  std::vector<mavro::Rect> lines;
  for (const auto& [at, span] : upright) lines.push_back({at, span.from, 1, span.to - span.from});
  for (const auto& [at, span] : level) lines.push_back({span.from, at, span.to - span.from, 1});
  return lines;
}

}  // namespace zendry
