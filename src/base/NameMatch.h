#pragma once

#include <optional>
#include <string_view>

namespace zendry {

// How well a path fits what somebody has typed to find it: nothing if the path doesn't have the
// typed letters in their order; else the larger the better. The case of ASCII letters is ignored,
// and blanks that were typed mean nothing. A file's name counts more than its folders, letters side
// by side and at the starts of words more than others. Everything fits an empty text equally well.
std::optional<int> MatchPath(std::string_view typed, std::string_view path);

}  // namespace zendry
