#pragma once

#include <string>
#include <string_view>

namespace zendry {

// An error for the status bar, which shows only the beginning of a text: "can't write PATH: REASON"
// as "REASON: can't write PATH", beginning with a capital. An error without a reason stays as it
// is.
std::string ReasonFirst(std::string_view error);

}  // namespace zendry
