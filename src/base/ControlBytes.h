#pragma once

#include <string>
#include <string_view>

namespace zendry {

// A tool's text, made safe to show. Control bytes, which a terminal would obey, become marks such
// as "<1b>". Characters that change the direction of writing, which would show a line in another
// order than it has, become marks such as "<U+202E>". Tabs, newlines and the carriage return before
// a newline stay. Bytes that aren't valid UTF-8 stay too, unless they are control bytes of an 8-bit
// terminal.
std::string MarkControlBytes(std::string_view text);

}  // namespace zendry
