#include "browser/PlaceHistory.h"

namespace zendry {

void PlaceHistory::Leave(VisitedPlace place) {
  ahead.clear();
  if (!behind.empty() && behind.back().IsSameLine(place)) behind.pop_back();
  behind.push_back(std::move(place));
  if (behind.size() > cMost) behind.erase(behind.begin());
}

std::optional<VisitedPlace> PlaceHistory::Back(const VisitedPlace& now) {
  return Move(behind, ahead, now);
}

std::optional<VisitedPlace> PlaceHistory::Forward(const VisitedPlace& now) {
  return Move(ahead, behind, now);
}

// A jump that ended where it began left a place that is no other.
std::optional<VisitedPlace> PlaceHistory::Move(Places& from, Places& to, const VisitedPlace& now) {
  while (!from.empty() && from.back().IsSameLine(now)) from.pop_back();
  if (from.empty()) return std::nullopt;
  VisitedPlace place = std::move(from.back());
  from.pop_back();
  to.push_back(now);
  return place;
}

}  // namespace zendry
