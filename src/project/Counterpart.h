#pragma once

#include <string>

namespace zendry {

class Project;

// The header that belongs to a source, or the source that belongs to a header: the file of the same
// name with another extension, beside it or in a folder of the project's files. Empty when there is
// none, and for a file that is neither.
std::string FindCounterpart(const std::string& path, const Project& project);

}  // namespace zendry
