#include "SearchState.h"

#include <algorithm>

namespace mavro {

SearchState theSearch;

void SearchState::Remember() {
  if (findText.empty()) return;
  std::erase(history, findText);
  history.insert(history.begin(), findText);
  history.resize(std::min(history.size(), cMostRemembered));
}

}  // namespace mavro
