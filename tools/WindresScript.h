#pragma once

#include <string>
#include <string_view>

#include "WindresResource.h"

namespace zendry {

// Reads a script after the C preprocessor. `file` names the text until the first line marker. No
// other file is read: resources that are files keep their names. Ends at the first error; the
// bytes may hold anything.
ResourceList ReadScript(std::string_view text, const std::string& file);

}  // namespace zendry
