#pragma once

#include <string>
#include <string_view>

#include "FileText.h"

namespace mavro {

// Writes a file that can be made again from others, as a print of a text. As SaveFileText, but the
// call does not wait until a new file is on the disk: after a power cut it may be empty or missing.
// A file that is there before is only replaced by one that is on the disk.
FileResult SaveProduct(const std::string& path, std::string_view content);

}  // namespace mavro
