#pragma once

#include <sys/types.h>

#include <string>

#include "Descriptor.h"
#include "FileText.h"

namespace mavro {

// A regular file opened for reading. An error, and nothing open, if the file is missing,
// unreadable, not a regular file, or has 2 GiB or more. Opening never blocks and has no effect on a
// device.
struct [[nodiscard]] RegularFile : FileResult {
  Descriptor file = {};
  off_t size = 0;  // when it was opened; the file may change later
};
RegularFile OpenRegularFile(const std::string& path);

// The error of a file whose content can't be had for a reason that the system has no words for.
FileResult Unreadable(const std::string& path);

}  // namespace mavro
