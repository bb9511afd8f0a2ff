#pragma once

#include <cstddef>
#include <string_view>

namespace zendry {

// The byte of a line (UTF-8) that a compiler means by a column, which it counts from 1 as a
// terminal shows the line: a tab goes to the next multiple of eight, a wide letter (Chinese,
// Japanese, Korean, emoji) takes two columns, an accent of its own none. The line's size for a
// column after its end.
size_t ByteAtColumn(std::string_view line, int column);

}  // namespace zendry
