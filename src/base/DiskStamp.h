#pragma once

#include <cstdint>
#include <string>

namespace zendry {

// Distinguishes one state of a file on disk from another without reading it. Equal stamps mean that
// the file hasn't been written in between, as far as the file system says.
struct DiskStamp {
  bool exists = false;  // as a regular file
  bool isKnown = true;  // false when the system refused to say; nothing is known of the file then
  uint64_t device = 0;
  uint64_t inode = 0;
  int64_t size = 0;     // bytes
  int64_t changed = 0;  // nanoseconds since the epoch
  // The same for the last change of the file or its attributes, a time that can't be set back.
  int64_t touched = 0;
  friend bool operator==(const DiskStamp&, const DiskStamp&) = default;
};

// The stamp of a path, links followed; `exists` is false when there is no regular file or the
// system can't say.
DiskStamp ReadDiskStamp(const std::string& path);

// True for a file that may be read but not written, by its mode or that of its disk.
bool IsWriteProtected(const std::string& path);

// True if both exist and are states of one file: two names can lead to it. For names that are
// nowhere on the disk this is false, even if they are equal.
bool AreOneFile(const DiskStamp& a, const DiskStamp& b);

}  // namespace zendry
