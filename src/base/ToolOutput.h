#pragma once

#include <optional>
#include <string>
#include <vector>

namespace zendry {

// Runs a program that answers a question and returns what it prints, errors too; messages are in
// English. Nothing if it can't be started, doesn't end within some seconds, or prints more than a
// megabyte. `arguments` begin with the program, which is searched along PATH if its name has no
// slash. No dialog is shown.
std::optional<std::string> ToolOutput(const std::vector<std::string>& arguments);

}  // namespace zendry
