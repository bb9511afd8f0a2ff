#pragma once

#include <sys/types.h>

#include <string>

#include "Descriptor.h"

namespace mavro {

// A regular file opened for reading; closed when it is missing, can't be read, is something else or
// has 2 GiB and more. Opening never blocks and has no effect on a device.
struct RegularFile {
  Descriptor file;
  off_t size = 0;  // when it was opened; files go on changing
};
RegularFile OpenRegularFile(const std::string& path);

}  // namespace mavro
