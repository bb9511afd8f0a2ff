#pragma once

#include <algorithm>
#include <vector>

namespace mavro {

// Moves the element at `from` to the index `to`; the elements between shift by one.
template <class T>
void MoveElement(std::vector<T>& elements, int from, int to) {
  const auto first = elements.begin();
  if (from < to)
    std::rotate(first + from, first + from + 1, first + to + 1);
  else
    std::rotate(first + to, first + from, first + from + 1);
}

}  // namespace mavro
