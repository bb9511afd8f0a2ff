#pragma once

#include <cstddef>
#include <string_view>

namespace zendry {

// Columns of a line (UTF-8) as compilers count them: from 1, as a terminal shows the line. A tab
// goes to the next multiple of eight, a wide letter (Chinese, Japanese, Korean, emoji) takes two
// columns, an accent of its own none, and a byte that is no letter one.

// The byte that is shown in a column; the line's size for a column after its end. An accent belongs
// to the letter before it: the byte is never one between the two.
size_t ByteInColumn(std::string_view line, int column);
// The column in which a byte is shown.
int ColumnOfByte(std::string_view line, size_t byte);

}  // namespace zendry
