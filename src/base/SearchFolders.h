#pragma once

#include <string>
#include <vector>

namespace zendry {

// The folders that a compiler run with these arguments searches for headers, as they are written:
// -I, -iquote, -isystem and -idirafter, with the folder after them or as the next argument.
std::vector<std::string> SearchFolders(const std::vector<std::string>& arguments);

}  // namespace zendry
