#include "base/LoadResult.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

namespace zendry {

std::string WhyUnreadable(const std::string& path) {
  struct stat status;
  if (stat(path.c_str(), &status) != 0) return path + ": " + std::strerror(errno);
  if (S_ISDIR(status.st_mode)) return path + ": is a folder";
  if (!S_ISREG(status.st_mode)) return path + ": is not a regular file";
  if (faccessat(AT_FDCWD, path.c_str(), R_OK, AT_EACCESS) != 0)
    return path + ": " + std::strerror(errno);
  return path + ": can't be read";
}

bool IsTaken(const std::string& path) {
  struct stat status;
  return lstat(path.c_str(), &status) == 0;
}

}  // namespace zendry
