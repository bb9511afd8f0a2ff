#pragma once

#include <optional>

namespace mavro {

// The position of a bar after a ScrollCode; no value for a code that doesn't move the bar. The
// result is between 0 and the number before `maximum`.
std::optional<int> ScrollStep(int code, int position, int page, int maximum);

}  // namespace mavro
