#include "base/DiskStamp.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

namespace zendry {

namespace {

int64_t Nanoseconds(const timespec& time) {
  constexpr int64_t cPerSecond = 1'000'000'000;
  return time.tv_sec * cPerSecond + time.tv_nsec;
}

}  // namespace

DiskStamp ReadDiskStamp(const std::string& path) {
  struct stat info;
  if (stat(path.c_str(), &info) != 0) {
    DiskStamp nothing;
    nothing.isKnown = errno == ENOENT || errno == ENOTDIR;
    return nothing;
  }
  return {S_ISREG(info.st_mode),
          true,
          info.st_dev,
          info.st_ino,
          info.st_size,
          Nanoseconds(info.st_mtim),
          Nanoseconds(info.st_ctim)};
}

bool IsWriteProtected(const std::string& path) {
  if (faccessat(AT_FDCWD, path.c_str(), W_OK, AT_EACCESS) == 0) return false;
  return errno == EACCES || errno == EPERM || errno == EROFS;
}

bool AreOneFile(const DiskStamp& a, const DiskStamp& b) {
  return a.exists && b.exists && a.device == b.device && a.inode == b.inode;
}

}  // namespace zendry
