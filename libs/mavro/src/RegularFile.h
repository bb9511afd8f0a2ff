#pragma once

#include <sys/types.h>

#include <string>

#include "Descriptor.h"

namespace mavro {

// A regular file opened for reading. It is closed if the file is missing, unreadable, not a regular
// file, or has 2 GiB or more. Opening never blocks and has no effect on a device.
struct RegularFile {
  Descriptor file;
  off_t size = 0;  // when it was opened; the file may change later
};
RegularFile OpenRegularFile(const std::string& path);

}  // namespace mavro
