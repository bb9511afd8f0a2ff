#pragma once

#include <string>

namespace zendry {

class Project;

// The header that belongs to a source, or the source that belongs to a header: the file of the same
// name with another extension, in the same folder or in another folder of the project's files.
// Empty when there is no such file, and for a path that is neither a source nor a header.
std::string FindCounterpart(const std::string& path, const Project& project);

}  // namespace zendry
