#include "debug/Watches.h"

#include <algorithm>

namespace zendry {

int Watches::Find(int list, std::string_view expression) const {
  const std::vector<Watch>& rows = lists[static_cast<size_t>(list)];
  const auto found = std::find_if(
      rows.begin(), rows.end(), [&](const Watch& watch) { return watch.expression == expression; });
  return found == rows.end() ? cNone : static_cast<int>(found - rows.begin());
}

int Watches::Add(int list, const std::string& expression) {
  std::vector<Watch>& rows = lists[static_cast<size_t>(list)];
  rows.emplace_back().expression = expression;
  return static_cast<int>(rows.size()) - 1;
}

void Watches::Clear() {
  for (std::vector<Watch>& rows : lists) rows.clear();
}

void Watches::ForgetNumbers() {
  for (std::vector<Watch>& rows : lists)
    for (Watch& watch : rows) watch.number = 0;
}

}  // namespace zendry
