#pragma once

#include <optional>

namespace mavro {

// Where a bar goes from `position` by a ScrollCode; nothing for what moves no bar. The answer lies
// between 0 and the number before `maximum`.
std::optional<int> ScrollStep(int code, int position, int page, int maximum);

}  // namespace mavro
