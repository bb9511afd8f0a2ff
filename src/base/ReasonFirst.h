#pragma once

#include <string>
#include <string_view>

namespace zendry {

// An error for the status bar, which shows the beginning of what it is given: "can't write PATH:
// REASON" as "REASON: can't write PATH", beginning with a capital. What gives no reason stays.
std::string ReasonFirst(std::string_view error);

}  // namespace zendry
