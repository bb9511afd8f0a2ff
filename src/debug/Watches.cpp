#include "debug/Watches.h"

#include <algorithm>

namespace zendry {

int Watches::Find(int list, std::string_view expression) const {
  const std::vector<Watch>& rows = lists[static_cast<size_t>(list)];
  const auto found = std::find_if(
      rows.begin(), rows.end(), [&](const Watch& watch) { return watch.expression == expression; });
  return found == rows.end() ? cNone : static_cast<int>(found - rows.begin());
}

int Watches::FindKey(int list, int key) const {
  const std::vector<Watch>& rows = lists[static_cast<size_t>(list)];
  const auto found = std::find_if(rows.begin(), rows.end(),
                                  [key](const Watch& watch) { return watch.key == key; });
  return found == rows.end() ? cNone : static_cast<int>(found - rows.begin());
}

int Watches::Add(int list, const std::string& expression) {
  std::vector<Watch>& rows = lists[static_cast<size_t>(list)];
  Watch& added = rows.emplace_back();
  added.expression = expression;
  added.key = ++lastKey;
  return static_cast<int>(rows.size()) - 1;
}

void Watches::Clear() {
  for (std::vector<Watch>& rows : lists) rows.clear();
}

void Watches::ForgetNumbers() {
  for (std::vector<Watch>& rows : lists)
    for (Watch& watch : rows) {
      watch.number = watch.seenAt = 0;
      watch.isHeld = false;
    }
}

}  // namespace zendry
