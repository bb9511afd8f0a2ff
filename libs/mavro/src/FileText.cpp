#include "FileText.h"

#include <fcntl.h>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <new>
#include <utility>

#include "RegularFile.h"

namespace mavro {

namespace {

// An editor that counts positions in 32 bits can't show a longer file, and a sparse file would only
// use up the memory.
constexpr off_t cMaxBytes = 0x7fffffff;

// The error in errno.
FileResult LastError(const std::string& path) {
  FileResult result{path + ": " + std::strerror(errno)};
  struct stat status;
  result.isMissing = lstat(path.c_str(), &status) != 0;
  return result;
}

// A file may grow while it is read, or report no size or a larger one, as files below /proc do; so
// the size is only a hint.
FileText ReadToEnd(const std::string& path, int file, off_t sizeHint) {
  std::string text;
  size_t filled = 0;
  text.resize(static_cast<size_t>(sizeHint) + 1);
  for (;;) {
    const ssize_t count = read(file, text.data() + filled, text.size() - filled);
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) return {LastError(path)};
    if (count == 0) break;
    filled += static_cast<size_t>(count);
    // One byte more was asked for: the file ends here.
    if (filled == static_cast<size_t>(sizeHint)) break;
    if (filled > static_cast<size_t>(cMaxBytes)) return {Unreadable(path)};
    if (filled == text.size()) text.resize(filled * 2 + 4096);
  }
  text.resize(filled);
  return {{}, std::move(text)};
}

bool HasKind(const std::string& path, mode_t kind) {
  struct stat status;
  return stat(path.c_str(), &status) == 0 && (status.st_mode & S_IFMT) == kind;
}

// Makes `path` a folder of our own that no other user can read.
bool EnsurePrivateFolder(const std::string& path) {
  if (mkdir(path.c_str(), 0700) == 0) return true;
  struct stat status;
  if (errno != EEXIST || stat(path.c_str(), &status) != 0 || !S_ISDIR(status.st_mode)) return false;
  if ((status.st_mode & 077) != 0 && chmod(path.c_str(), 0700) != 0) return false;
  return access(path.c_str(), R_OK | W_OK | X_OK) == 0;
}

}  // namespace

FileResult Unreadable(const std::string& path) {
  return {path + ": can't be read"};
}

RegularFile OpenRegularFile(const std::string& path) {
  // The kind is checked before opening too, since opening a device can have side effects.
  struct stat status;
  if (stat(path.c_str(), &status) != 0) return {LastError(path)};
  if (S_ISDIR(status.st_mode)) return {{path + ": is a folder"}};
  if (!S_ISREG(status.st_mode)) return {{path + ": is not a regular file"}};
  Descriptor file(open(path.c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
  if (!file.IsOpen() || fstat(file.Number(), &status) != 0) return {LastError(path)};
  if (!S_ISREG(status.st_mode) || status.st_size > cMaxBytes) return {Unreadable(path)};
  return {{}, std::move(file), status.st_size};
}

FileText ReadFileText(const std::string& path) {
  const RegularFile opened = OpenRegularFile(path);
  if (!opened.Ok()) return {opened};
  try {
    return ReadToEnd(path, opened.file.Number(), opened.size);
  } catch (const std::bad_alloc&) {
    return {Unreadable(path)};
  }
}

std::string ProfileFolder() {
  const char* home = std::getenv("HOME");
  if (!home || !*home) {
    const passwd* entry = getpwuid(getuid());
    home = entry && entry->pw_dir ? entry->pw_dir : "";
  }
  std::string folder = home;
  while (folder.ends_with('/')) folder.pop_back();
  return folder;
}

std::string RescueFolder() {
  const std::string settings = ProfileFolder() + "/.zendry";
  if (mkdir(settings.c_str(), 0700) != 0 && errno != EEXIST) return {};
  const std::string rescue = settings + "/rescue";
  return EnsurePrivateFolder(rescue) ? rescue : std::string();
}

bool FileExists(const std::string& path) {
  return HasKind(path, S_IFREG);
}

bool FolderExists(const std::string& path) {
  return HasKind(path, S_IFDIR);
}

}  // namespace mavro
