#pragma once

#include <string>
#include <string_view>

namespace zendry {

// The path of a local file's address, "file:///p/a%20b.cpp"; empty for any other text.
std::string PathOfUri(std::string_view uri);

// The address of a file. `path` is absolute.
std::string UriOfPath(std::string_view path);

}  // namespace zendry
