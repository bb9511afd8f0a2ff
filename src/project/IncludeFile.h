#pragma once

#include <string>

namespace zendry {

class Project;

// The file that an "#include" in the file `from` names: beside it, among the project's files, in
// the folders that the project's switches name, or in those of the system's compilers. Empty if
// there is none.
std::string FindIncludedFile(const Project& project, const std::string& from,
                             const std::string& name, bool isQuoted);

}  // namespace zendry
