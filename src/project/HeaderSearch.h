#pragma once

#include <functional>
#include <optional>
#include <string>

#include "code/SymbolPlaces.h"

namespace zendry {

class Project;

// The text of a file that is open; nothing for others, which are read from the disk.
using OpenTextOf = std::function<std::optional<std::string>(const std::string& path)>;

// Looks for the declaration of a name that no tags have with its place: in the file `path` and in
// those that it includes, the system's too, the nearest first. It reads and parses files, so it is
// for a command of the user only; after a second it gives up.
std::optional<CodePlace> FindInHeaders(const Project& project, const std::string& path,
                                       const UnplacedName& sought, const OpenTextOf& openText);

}  // namespace zendry
