#pragma once

#include <cstdint>
#include <string>

namespace zendry {

// What tells one state of a file on disk from another without reading it. Equal stamps mean that
// nobody has written the file in between, as far as the file system says.
struct DiskStamp {
  bool exists = false;
  bool isKnown = true;  // false when the system refused to say, which tells nothing about the file
  uint64_t device = 0;
  uint64_t inode = 0;
  int64_t size = 0;     // bytes
  int64_t changed = 0;  // nanoseconds since the epoch
  // The same of the last change of the file or its attributes, which nobody can put back.
  int64_t touched = 0;
  friend bool operator==(const DiskStamp&, const DiskStamp&) = default;
};

// The stamp of a path, links followed; `exists` is false when there is nothing or nobody can say.
DiskStamp ReadDiskStamp(const std::string& path);

}  // namespace zendry
