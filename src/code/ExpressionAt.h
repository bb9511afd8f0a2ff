#pragma once

#include <string>
#include <string_view>

namespace zendry {

// The expression around a column of a line, as a debugger can print it: names joined by "." and
// "->" up to the name at the column or just before it, and an index after that. Empty when there is
// none. Asserts that `pos` is in the line.
std::string ExpressionAt(std::string_view line, int pos);

}  // namespace zendry
