#pragma once

#include <algorithm>
#include <vector>

namespace mavro {

// Gives the element at `from` the place `to`; those between close up.
template <class T>
void MoveElement(std::vector<T>& elements, int from, int to) {
  const auto first = elements.begin();
  if (from < to)
    std::rotate(first + from, first + from + 1, first + to + 1);
  else
    std::rotate(first + to, first + from, first + from + 1);
}

}  // namespace mavro
