#pragma once

#include <string>
#include <string_view>

#include "WindresResource.h"

namespace zendry {

// Reads a script after the C preprocessor. `file` names the text until the first line marker. No
// other file is read: for resources in files, the result has the file names. Ends at the first
// error; `text` may have any bytes.
ResourceList ReadScript(std::string_view text, const std::string& file);

}  // namespace zendry
