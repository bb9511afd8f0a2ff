#pragma once

#include <cstddef>
#include <string_view>

namespace zendry {

// Columns of a line as compilers count them: from 1, a character of UTF-8 is one column, and a TAB
// goes to the next of the stops at each 8.

// The byte that is shown in a column; the line's length for a column after its end.
size_t ByteInColumn(std::string_view line, int column);
// The column in which a byte is shown.
int ColumnOfByte(std::string_view line, size_t byte);

}  // namespace zendry
