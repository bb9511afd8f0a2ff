#pragma once

#include <string_view>

namespace zendry {

// Logs how the program found its answers, so that the reason of a wrong one can be found. Appends a
// line "TEXT --> DETAIL" to the file that the environment variable ZENDRY_LOG names. Without the
// variable nothing is written; a file that can't be written is ignored.
void TraceMessage(std::string_view text, std::string_view detail);

}  // namespace zendry
