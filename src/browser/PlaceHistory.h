#pragma once

#include <optional>
#include <string>
#include <vector>

namespace zendry {

// A place in a file that was left. The text of its line finds it again after lines have come or
// gone before it.
struct VisitedPlace {
  std::string path;
  int line = 0;    // from 0
  int column = 0;  // in bytes
  std::string lineText;

  bool IsSameLine(const VisitedPlace& other) const {
    return path == other.path && line == other.line;
  }
};

// The places that the user came from, and those that the user went back from. A new jump drops the
// latter.
class PlaceHistory {
 public:
  static constexpr size_t cMost = 100;

  // Called before a jump, with the place that is left.
  void Leave(VisitedPlace place);
  // The place to go to from the present one; none if there is none.
  std::optional<VisitedPlace> Back(const VisitedPlace& now);
  std::optional<VisitedPlace> Forward(const VisitedPlace& now);
  bool CanGoBack() const { return !behind.empty(); }
  bool CanGoForward() const { return !ahead.empty(); }

 private:
  using Places = std::vector<VisitedPlace>;
  static std::optional<VisitedPlace> Move(Places& from, Places& to, const VisitedPlace& now);

  Places behind, ahead;  // the nearest last
};

// The line of a text that a place stands for now: its own line if that has its text, else the
// nearest line with that text, else its own. `textOf(line)` is a line's text without its end.
template <class TextOf>
int LineOfPlace(const VisitedPlace& place, int lineCount, TextOf textOf) {
  constexpr int cFarthest = 500;
  const int own = place.line < lineCount ? place.line : lineCount - 1;
  if (place.lineText.find_first_not_of(" \t{}") == std::string::npos) return own;
  for (int away = 0; away <= cFarthest; ++away)
    for (const int line : {own - away, own + away})
      if (line >= 0 && line < lineCount && textOf(line) == place.lineText) return line;
  return own;
}

}  // namespace zendry
