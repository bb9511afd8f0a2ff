#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace mavro {

// The local files that a list of addresses names, one address per line, the format in which
// programs pass dragged files. The paths are absolute, with unchanged bytes. Addresses of other
// schemes, files on hosts other than `host`, comments and paths with a NUL are left out. A "%"
// without two hexadecimal digits after it means itself.
std::vector<std::string> LocalPathsOf(std::string_view uriList, std::string_view host);

}  // namespace mavro
