#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace mavro {

// The local files that a list of addresses names, one address a line, as programs hand dragged
// files over: absolute paths, bytes as they are. Addresses of other schemes and of files on hosts
// other than `host` are left out, as are comments and paths with a NUL. A "%" without two
// hexadecimal digits behind it stands for itself.
std::vector<std::string> LocalPathsOf(std::string_view uriList, std::string_view host);

}  // namespace mavro
