#pragma once

#include <string>
#include <string_view>

namespace zendry {

// Text of a tool as it may be shown: control bytes, which a terminal would obey, stand as marks
// such as "<1b>", and the characters that turn the direction of writing, which would show a line in
// another order than it has, as "<U+202E>". Tabs, newlines and the carriage return before a newline
// stay; so do bytes that are no valid UTF-8, unless they are control bytes of an 8-bit terminal.
std::string MarkControlBytes(std::string_view text);

}  // namespace zendry
