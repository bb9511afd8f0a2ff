#pragma once

#include <string_view>
#include <vector>

namespace mavro {

// The order of a column's cells: numbers by value, then other texts by their letters, whose case
// counts only between texts that are equal otherwise. Equal cells keep their order, descending too.
// Answers which cell comes at each place.
std::vector<size_t> CellOrder(const std::vector<std::string_view>& cells, bool ascending);

}  // namespace mavro
