#include "base/FileTimes.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace zendry {

namespace {

std::optional<FileTimes::Time> ReadTime(const char* path) {
  constexpr mode_t cReadableByAll = S_IRUSR | S_IRGRP | S_IROTH;
  constexpr FileTimes::Time cSecond = 1'000'000'000;  // nanoseconds
  struct stat info;
  if (stat(path, &info) != 0) return {};
  if (!S_ISREG(info.st_mode)) return {};
  const bool isReadable = (info.st_mode & cReadableByAll) == cReadableByAll ||
                          faccessat(AT_FDCWD, path, R_OK, AT_EACCESS) == 0;
  if (!isReadable) return {};
  return info.st_mtim.tv_sec * cSecond + info.st_mtim.tv_nsec;
}

}  // namespace

std::optional<FileTimes::Time> FileTimes::Of(const std::string& path) {
  const auto [entry, isNew] = times.try_emplace(path);
  if (isNew) {
    ++asked;
    if (path.find('\0') == std::string::npos) entry->second = ReadTime(Shortest(path));
  }
  return entry->second;
}

const char* FileTimes::Shortest(const std::string& path) const {
  const size_t above = currentFolder.size();
  const bool isBelow =
      above > 0 && path.size() > above && path[above] != '/' && path.starts_with(currentFolder);
  return path.c_str() + (isBelow ? above : 0);
}

void FileTimes::Forget(const std::string& path) {
  times.erase(path);
}

}  // namespace zendry
