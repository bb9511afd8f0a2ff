#pragma once

#include <string_view>

namespace zendry {

// True if what is typed at the end of a text is code: it is in no comment, literal or number, and
// not in the name of an included file.
bool IsCodeAt(std::string_view textToCaret);

}  // namespace zendry
