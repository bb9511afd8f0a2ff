#pragma once

#include <string_view>

namespace zendry {

// What the program did to find its answers, for who looks for the reason of a wrong one: a line
// "TEXT --> DETAIL" at the end of the file that the variable ZENDRY_LOG names. Without the variable
// nothing is written; a file that can't be written is passed over.
void TraceMessage(std::string_view text, std::string_view detail);

}  // namespace zendry
