#pragma once

#include <string_view>
#include <vector>

namespace mavro {

// The order of a column's cells: numbers by value, then other texts by their letters; case counts
// only between texts that are otherwise equal. Equal cells keep their order, also in a descending
// sort. The result has the index of the cell for each place.
std::vector<size_t> CellOrder(const std::vector<std::string_view>& cells, bool ascending);

}  // namespace mavro
