#pragma once

#include <string>
#include <string_view>

namespace zendry {

// True for letters, digits and "_", of which the first is no digit.
bool IsWord(std::string_view text);
// True for such words with "::" between them.
bool IsClassName(std::string_view text);
// A text as it may lie between quotes in source: quotes that would end it, and a backslash at its
// end, get a backslash before them.
std::string BetweenQuotes(std::string_view text);

}  // namespace zendry
