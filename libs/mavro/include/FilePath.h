#pragma once

#include <string>
#include <string_view>

namespace mavro {

// The folder of a path: the part before the last component, with the "/" at its end. Empty for a
// name alone.
std::string FolderOf(std::string_view path);

// True if the path names a folder; links are followed.
bool IsFolder(const std::string& path);

}  // namespace mavro
