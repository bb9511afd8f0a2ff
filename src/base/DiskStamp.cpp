#include "base/DiskStamp.h"

#include <sys/stat.h>

#include <cerrno>

namespace zendry {

DiskStamp ReadDiskStamp(const std::string& path) {
  constexpr int64_t cNanosecondsPerSecond = 1'000'000'000;
  struct stat info;
  if (stat(path.c_str(), &info) != 0) {
    DiskStamp nothing;
    nothing.isKnown = errno == ENOENT || errno == ENOTDIR;
    return nothing;
  }
  const int64_t changed = info.st_mtim.tv_sec * cNanosecondsPerSecond + info.st_mtim.tv_nsec;
  return {true, true, info.st_dev, info.st_ino, info.st_size, changed};
}

}  // namespace zendry
