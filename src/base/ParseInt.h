#pragma once

#include <string_view>

namespace zendry {

// The number at the head of a text as the C library's atoi reads it: white space, a sign, digits;
// 0 without digits. Unlike there, a number too large becomes the largest of its sign.
int ParseInt(std::string_view text);

}  // namespace zendry
