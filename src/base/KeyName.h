#pragma once

#include <string>

namespace mavro {
struct Action;
}

namespace zendry {

// The key of a command alone, such as "Ctrl+F7"; empty for null and for a command without a key.
std::string KeyName(const mavro::Action* action);

}  // namespace zendry
