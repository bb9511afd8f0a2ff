#pragma once

#include <string>
#include <string_view>

namespace mavro {

// A path's folder with its "/" at the end: what precedes the last component. Empty for a name
// alone.
std::string FolderOf(std::string_view path);

// Whether a path names a folder, links followed.
bool IsFolder(const std::string& path);

}  // namespace mavro
