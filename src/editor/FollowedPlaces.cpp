#include "editor/FollowedPlaces.h"

#include <algorithm>

namespace zendry {

// A place in the removed bytes, or at their end, is looked for anew.
void FollowedPlaces::WillChange(int start, int removed, int added) {
  if (isLost) return;
  const int end = start + removed;
  const auto first = std::lower_bound(places.begin(), places.end(), start);
  const auto last = std::upper_bound(first, places.end(), end);
  for (auto place = last; place != places.end(); ++place) *place += added - removed;
  places.erase(first, last);
  const bool isFirst = changed.end < changed.start;
  changed.end = (isFirst ? end : std::max(changed.end, end)) + added - removed;
  changed.start = isFirst ? start : std::min(changed.start, start);
}

FollowedPlaces::Part FollowedPlaces::Changed(int length) const {
  return isLost ? Part{0, length} : changed;
}

void FollowedPlaces::Put(Part lookedAt, const std::vector<int>& found) {
  if (isLost) places.clear();
  const auto first = std::lower_bound(places.begin(), places.end(), lookedAt.start);
  const auto last = std::upper_bound(first, places.end(), lookedAt.end);
  places.insert(places.erase(first, last), found.begin(), found.end());
  bytesSeen += static_cast<size_t>(lookedAt.end - lookedAt.start);
  changed = {};
  isLost = false;
}

}  // namespace zendry
