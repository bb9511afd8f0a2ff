#include "FileText.h"

#include <dirent.h>
#include <fcntl.h>
#include <limits.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <initializer_list>
#include <random>
#include <vector>

#include "Descriptor.h"
#include "FileCalls.h"
#include "FileParts.h"
#include "FileProduct.h"

// Saving a file: a new file is written beside the old one and renamed over it. If a new file can't
// replace the old one (further links, a foreign owner, a folder without write permission), the old
// file is written in place, after a copy of the old content has been made.

namespace mavro {

namespace {

constexpr int cMaxLinks = 40;  // the same limit as the kernel's
constexpr int cMaxNames = 100;
constexpr char cTemporaryPrefix[] = ".zendry-save-";
constexpr size_t cRandomDigits = 16;
constexpr size_t cMaxNameInCopy = 200;

// The reason why a step failed, in words; empty on success.
using Reason = std::string;

Reason LastError() {
  return std::strerror(errno);
}

// A text of the user is on the disk when a save returns. A product can be made again: a new one is
// only handed to the system.
enum class Kind { cText, cProduct };

// The file to write, after links have been followed.
struct Target {
  Descriptor folder;
  std::string name;
  Kind kind = Kind::cText;
  bool exists = false;
  struct stat old = {};

  // A file that is there is only replaced by one that is on the disk.
  bool IsSynced() const { return exists || kind == Kind::cText; }
};

// The result of writing a new file in the folder of the old one.
struct Attempt {
  enum Outcome { cDone, cFailed, cNeedsInPlace };
  Outcome outcome = cDone;
  Reason reason;
};

Attempt Failed(Reason reason) {
  return {Attempt::cFailed, std::move(reason)};
}

// The failure in errno. After one of the curable errors, the old file (if there is one) may still
// be written in place.
Attempt FailedOrInPlace(const Target& target, std::initializer_list<int> curable) {
  const int error = errno;
  const bool cure = target.exists && std::count(curable.begin(), curable.end(), error) > 0;
  return {cure ? Attempt::cNeedsInPlace : Attempt::cFailed, std::strerror(error)};
}

std::string RandomDigits() {
  std::random_device source;
  char text[cRandomDigits + 1];
  std::snprintf(text, sizeof text, "%08x%08x", source(), source());
  return text;
}

size_t FolderLength(const std::string& path) {
  const size_t slash = path.rfind('/');
  return slash == std::string::npos ? 0 : slash + 1;
}

// If `path` is a link, follows it and all further links, so that the file at their end is written.
// That file need not exist.
Reason FollowLinks(std::string& path) {
  char link[PATH_MAX];
  for (int i = 0; i <= cMaxLinks; ++i) {
    const ssize_t length = TheFileCalls().readlink(path.c_str(), link, sizeof link);
    if (length < 0) return errno == EINVAL || errno == ENOENT ? Reason() : LastError();
    const std::string_view to(link, static_cast<size_t>(length));
    path = to.starts_with('/') ? std::string(to) : path.substr(0, FolderLength(path)).append(to);
  }
  return std::strerror(ELOOP);
}

Reason WhyKindIsRefused(mode_t mode) {
  switch (mode & S_IFMT) {
    case S_IFREG:
      return {};
    case S_IFDIR:
      return "it is a folder";
    case S_IFIFO:
      return "it is a pipe";
    case S_IFSOCK:
      return "it is a socket";
    default:
      return "it is a device";
  }
}

// Finds the file that `path` names and checks that it may be written. A file without write
// permission is refused even if its folder would let us replace it.
Reason FindTarget(std::string path, Target& target) {
  if (path.empty()) return "the name is empty";
  if (path.find('\0') != std::string::npos) return "the name holds a NUL byte";
  if (Reason reason = FollowLinks(path); !reason.empty()) return reason;
  const size_t length = FolderLength(path);
  target.name = path.substr(length);
  if (target.name.empty()) return "it is a folder";
  const std::string folder = length ? path.substr(0, length) : "./";
  const FileCalls& calls = TheFileCalls();
  target.folder =
      Descriptor(calls.openat(AT_FDCWD, folder.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC, 0));
  if (!target.folder.IsOpen()) return LastError();
  const int at = target.folder.Number();
  if (calls.fstatat(at, target.name.c_str(), &target.old, AT_SYMLINK_NOFOLLOW) != 0)
    return errno == ENOENT ? Reason() : LastError();
  target.exists = true;
  if (Reason reason = WhyKindIsRefused(target.old.st_mode); !reason.empty()) return reason;
  return calls.faccessat(at, target.name.c_str(), W_OK, AT_EACCESS) == 0 ? Reason() : LastError();
}

// Writes a text into a file, in one part or in many. The disk writes the pieces of a large text
// while the next ones are handed over. The system keeps each write in memory of one size: for large
// ones it must find memory that nobody has used, which on a virtual machine costs more than the
// writing.
class Writer {
 public:
  explicit Writer(int newFile) : file(newFile) {}

  Reason Write(std::string_view part) {
    constexpr size_t cWrite = 256 << 10, cPiece = 2 << 20;
    while (!part.empty()) {
      if (handedOver >= cPiece) StartDisk();
      const ssize_t count = TheFileCalls().write(file, part.data(), std::min(part.size(), cWrite));
      if (count < 0 && errno == EINTR) continue;
      if (count < 0) return LastError();
      part.remove_prefix(static_cast<size_t>(count));
      handedOver += static_cast<size_t>(count);
    }
    return {};
  }

 private:
  void StartDisk() {
    sync_file_range(file, 0, 0, SYNC_FILE_RANGE_WRITE);
    handedOver = 0;
  }

  const int file;
  size_t handedOver = 0;  // since the disk was started
};

Reason WriteAll(int file, std::string_view content) {
  return Writer(file).Write(content);
}

Reason WriteParts(int file, const TextParts& content) {
  Writer writer(file);
  Reason reason;
  content([&](std::string_view part) {
    reason = writer.Write(part);
    return reason.empty();
  });
  return reason;
}

// A file system that can't sync returns EINVAL; this is not a failure.
Reason Sync(int file) {
  return TheFileCalls().fsync(file) == 0 || errno == EINVAL ? Reason() : LastError();
}

// Begins to write a file to the disk. File systems of the network fail when a file is closed, if
// they have no room; then it must still be known.
Reason HandOver(int file) {
  sync_file_range(file, 0, 0, SYNC_FILE_RANGE_WRITE);
  const int copy = dup(file);
  return copy >= 0 && close(copy) == 0 ? Reason() : LastError();
}

// Syncs a new name to the disk. A folder with write but no read permission can't be opened for
// this.
Reason SyncFolder(int folder) {
  const Descriptor file(TheFileCalls().openat(folder, ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC, 0));
  if (!file.IsOpen()) return errno == EACCES ? Reason() : LastError();
  return Sync(file.Number());
}

// Group: temporary files. The process that writes one holds a lock on it, so a file without a lock
// was left by a killed process.

bool IsTemporaryName(std::string_view name) {
  if (!name.starts_with(cTemporaryPrefix)) return false;
  name.remove_prefix(sizeof cTemporaryPrefix - 1);
  return name.size() == cRandomDigits &&
         name.find_first_not_of("0123456789abcdef") == std::string_view::npos;
}

void RemoveIfLeftOver(int folder, const char* name) {
  const int flags = O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC;
  const Descriptor file(openat(folder, name, flags));
  struct stat status;
  if (!file.IsOpen() || fstat(file.Number(), &status) != 0) return;
  // A save by the superuser gives its file to the owner of the replaced file.
  const bool isOurs = status.st_uid == geteuid() || geteuid() == 0;
  if (!S_ISREG(status.st_mode) || !isOurs) return;
  if (flock(file.Number(), LOCK_EX | LOCK_NB) == 0) unlinkat(folder, name, 0);
}

// Removes the temporary files that killed saves left in the folder.
void RemoveLeftOvers(int folder) {
  const int copy = openat(folder, ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  DIR* entries = copy >= 0 ? fdopendir(copy) : nullptr;
  if (!entries) return;
  while (const dirent* entry = readdir(entries))
    if (IsTemporaryName(entry->d_name)) RemoveIfLeftOver(folder, entry->d_name);
  closedir(entries);
}

// Locks a new temporary file. False if another save took it for a leftover and removed it.
bool LockTemporary(int file) {
  const FileCalls& calls = TheFileCalls();
  if (calls.flock(file, LOCK_EX | LOCK_NB) != 0) return errno != EWOULDBLOCK;
  struct stat status;
  return calls.fstat(file, &status) != 0 || status.st_nlink > 0;
}

// Makes an empty file with a new name. The result is closed, and errno is set, on failure.
Descriptor MakeTemporary(int folder, mode_t mode, std::string& name) {
  const int flags = O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC;
  for (int i = 0; i < cMaxNames; ++i) {
    name = cTemporaryPrefix + RandomDigits();
    Descriptor file(TheFileCalls().openat(folder, name.c_str(), flags, mode));
    if (!file.IsOpen() && errno == EEXIST) continue;
    if (!file.IsOpen() || LockTemporary(file.Number())) return file;
  }
  errno = EEXIST;
  return Descriptor();
}

// Group: properties that the new file takes over from the old one.

constexpr char cAccessList[] = "system.posix_acl_access";
constexpr size_t cMostValue = 65536;  // the kernel's limit for a value, and for a list of names

// True for extended attributes of the user. Those of other kinds belong to the system, which sets
// them for every new file.
bool IsKeptAttribute(std::string_view name) {
  return name.starts_with("user.");
}

Attempt CopyAttribute(const Target& target, int from, int to, const char* name) {
  const FileCalls& calls = TheFileCalls();
  char value[cMostValue];
  const ssize_t size = calls.fgetxattr(from, name, value, sizeof value);
  if (size < 0) return errno == ENODATA ? Attempt() : Failed(LastError());
  if (calls.fsetxattr(to, name, value, static_cast<size_t>(size), 0) == 0) return {};
  return FailedOrInPlace(target, {EPERM, EACCES, ENOTSUP});
}

Attempt CopyAttributes(const Target& target, int to) {
  const FileCalls& calls = TheFileCalls();
  const int flags = O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC;
  const Descriptor from(calls.openat(target.folder.Number(), target.name.c_str(), flags, 0));
  // A file may be writable but not readable; then its attributes can't be read either.
  if (!from.IsOpen()) return errno == EACCES ? Attempt() : Failed(LastError());
  std::vector<char> names(cMostValue);
  const ssize_t size = calls.flistxattr(from.Number(), names.data(), names.size());
  if (size < 0) return errno == ENOTSUP ? Attempt() : Failed(LastError());
  for (const char* name = names.data(); name < names.data() + size; name += std::strlen(name) + 1) {
    if (!IsKeptAttribute(name)) continue;
    Attempt attempt = CopyAttribute(target, from.Number(), to, name);
    if (attempt.outcome != Attempt::cDone) return attempt;
  }
  return {};
}

// The new file must not keep the access list that its folder gives to new files. The old file's
// list is read by its path: it may be readable even if the content is not.
Attempt CopyAccessList(const Target& target, int to) {
  const FileCalls& calls = TheFileCalls();
  const std::string path =
      "/proc/self/fd/" + std::to_string(target.folder.Number()) + "/" + target.name;
  char value[cMostValue];
  const ssize_t size = calls.lgetxattr(path.c_str(), cAccessList, value, sizeof value);
  if (size < 0 && errno == ENOTSUP) return {};
  if (size < 0 && errno != ENODATA) return FailedOrInPlace(target, {ENOENT});
  const int done = size < 0 ? calls.fremovexattr(to, cAccessList)
                            : calls.fsetxattr(to, cAccessList, value, static_cast<size_t>(size), 0);
  if (done == 0 || (size < 0 && errno == ENODATA)) return {};
  return FailedOrInPlace(target, {EPERM, EACCES, ENOTSUP});
}

// Gives the new file the old one's owner, group, access list and attributes.
Attempt TakeOver(const Target& target, int file) {
  const FileCalls& calls = TheFileCalls();
  struct stat status;
  if (calls.fstat(file, &status) != 0) return Failed(LastError());
  const bool same = status.st_uid == target.old.st_uid && status.st_gid == target.old.st_gid;
  if (!same && calls.fchown(file, target.old.st_uid, target.old.st_gid) != 0)
    return FailedOrInPlace(target, {EPERM, EINVAL});
  Attempt attempt = CopyAccessList(target, file);
  return attempt.outcome == Attempt::cDone ? CopyAttributes(target, file) : attempt;
}

// Group: replacing.

// The mode is set after the content, since writing clears the set-id bits.
Attempt Fill(const Target& target, int file, const TextParts& content) {
  if (target.exists) {
    Attempt attempt = TakeOver(target, file);
    if (attempt.outcome != Attempt::cDone) return attempt;
  }
  if (Reason reason = WriteParts(file, content); !reason.empty()) return Failed(reason);
  if (target.exists && TheFileCalls().fchmod(file, target.old.st_mode & 07777) != 0)
    return Failed(LastError());
  Reason reason = target.IsSynced() ? Sync(file) : HandOver(file);
  return reason.empty() ? Attempt() : Failed(reason);
}

Attempt Replace(const Target& target, const TextParts& content) {
  const FileCalls& calls = TheFileCalls();
  const int folder = target.folder.Number();
  RemoveLeftOvers(folder);
  std::string name;
  const Descriptor file = MakeTemporary(folder, target.exists ? 0600 : 0666, name);
  if (!file.IsOpen()) return FailedOrInPlace(target, {EACCES, EPERM});
  Attempt attempt = Fill(target, file.Number(), content);
  if (attempt.outcome == Attempt::cDone &&
      calls.renameat(folder, name.c_str(), folder, target.name.c_str()) != 0) {
    // The folder is sticky and the file is another user's, or the file is a mount point.
    attempt = FailedOrInPlace(target, {EPERM, EACCES, EBUSY, EXDEV});
  }
  if (attempt.outcome != Attempt::cDone) {
    calls.unlinkat(folder, name.c_str(), 0);
    return attempt;
  }
  if (!target.IsSynced()) return {};
  if (Reason reason = SyncFolder(folder); !reason.empty()) return Failed(reason);
  return {};
}

// Group: writing in place.

// A copy of the old content in the rescue folder. It is kept unless Remove is called.
struct RescueCopy {
  Descriptor folder;
  Descriptor file;
  std::string folderPath;
  std::string name;

  std::string Path() const { return folderPath + "/" + name; }
  void Remove() { TheFileCalls().unlinkat(folder.Number(), name.c_str(), 0); }
};

// Copies from the start of one file to the start of another.
Reason CopyContent(int from, int to) {
  const FileCalls& calls = TheFileCalls();
  if (calls.lseek(from, 0, SEEK_SET) != 0 || calls.lseek(to, 0, SEEK_SET) != 0) return LastError();
  std::vector<char> buffer(1 << 16);
  for (;;) {
    const ssize_t count = calls.read(from, buffer.data(), buffer.size());
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) return LastError();
    if (count == 0) return {};
    const std::string_view part(buffer.data(), static_cast<size_t>(count));
    if (Reason reason = WriteAll(to, part); !reason.empty()) return reason;
  }
}

Reason MakeRescueCopy(int old, const std::string& name, RescueCopy& copy) {
  const FileCalls& calls = TheFileCalls();
  copy.folderPath = RescueFolder();
  if (copy.folderPath.empty()) return "there is no rescue folder";
  copy.folder = Descriptor(
      calls.openat(AT_FDCWD, copy.folderPath.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC, 0));
  if (!copy.folder.IsOpen()) return LastError();
  copy.name = "old-" + RandomDigits() + "-" + name.substr(0, cMaxNameInCopy);
  const int flags = O_RDWR | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC;
  copy.file = Descriptor(calls.openat(copy.folder.Number(), copy.name.c_str(), flags, 0600));
  if (!copy.file.IsOpen()) return LastError();
  Reason reason = CopyContent(old, copy.file.Number());
  if (reason.empty()) reason = Sync(copy.file.Number());
  if (reason.empty()) reason = SyncFolder(copy.folder.Number());
  if (!reason.empty()) copy.Remove();
  return reason;
}

// Reserves disk space for the growth of the file, so that a full disk is noticed before any byte
// has changed.
Reason Reserve(int file, off_t oldSize, size_t newSize) {
  const FileCalls& calls = TheFileCalls();
  const off_t size = static_cast<off_t>(newSize);
  if (size <= oldSize) return {};
  if (calls.fallocate(file, FALLOC_FL_KEEP_SIZE, oldSize, size - oldSize) == 0) return {};
  return errno == ENOSPC || errno == EDQUOT || errno == EIO ? LastError() : Reason();
}

Reason Overwrite(int file, const TextParts& content, size_t size) {
  const FileCalls& calls = TheFileCalls();
  if (calls.lseek(file, 0, SEEK_SET) != 0) return LastError();
  if (Reason reason = WriteParts(file, content); !reason.empty()) return reason;
  if (calls.ftruncate(file, static_cast<off_t>(size)) != 0) return LastError();
  return Sync(file);
}

// Writing clears the set-id bits. Only the owner can restore them; for other users they stay
// cleared, as the system intends.
void RestoreMode(int file, mode_t mode) {
  struct stat now;
  if (TheFileCalls().fstat(file, &now) == 0 && now.st_mode != mode)
    TheFileCalls().fchmod(file, mode & 07777);
}

Reason Restore(int file, const RescueCopy& copy, off_t size) {
  if (Reason reason = CopyContent(copy.file.Number(), file); !reason.empty()) return reason;
  if (TheFileCalls().ftruncate(file, size) != 0) return LastError();
  return Sync(file);
}

// Opens the old file for writing in place; it must still be the same file that was checked.
Reason OpenOld(const Target& target, Descriptor& file, struct stat& now) {
  const FileCalls& calls = TheFileCalls();
  const int flags = O_RDWR | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC;
  file = Descriptor(calls.openat(target.folder.Number(), target.name.c_str(), flags, 0));
  if (!file.IsOpen() || calls.fstat(file.Number(), &now) != 0) return LastError();
  const bool same = now.st_dev == target.old.st_dev && now.st_ino == target.old.st_ino;
  return same ? Reason() : "another file has taken its place meanwhile";
}

size_t SizeOf(const TextParts& content) {
  size_t size = 0;
  content([&](std::string_view part) {
    size += part.size();
    return true;
  });
  return size;
}

Reason WriteInPlace(const Target& target, const TextParts& content) {
  Descriptor file;
  struct stat old;
  if (Reason reason = OpenOld(target, file, old); !reason.empty()) return reason;
  RescueCopy copy;
  if (Reason reason = MakeRescueCopy(file.Number(), target.name, copy); !reason.empty())
    return "its old content can't be put aside: " + reason;
  const size_t size = SizeOf(content);
  Reason reason = Reserve(file.Number(), old.st_size, size);
  if (reason.empty()) {
    reason = Overwrite(file.Number(), content, size);
    if (!reason.empty() && !Restore(file.Number(), copy, old.st_size).empty())
      return reason + "; its old content is in " + copy.Path();
    RestoreMode(file.Number(), old.st_mode);
  }
  copy.Remove();
  return reason;
}

// Group: appending.

// A failure restores the old length of the file, if possible.
Reason Append(int file, off_t end, off_t oldSize, std::string_view bytes) {
  const FileCalls& calls = TheFileCalls();
  if (oldSize > end && calls.ftruncate(file, end) != 0) return LastError();
  if (calls.lseek(file, end, SEEK_SET) != end) return LastError();
  Reason reason = WriteAll(file, bytes);
  if (reason.empty()) reason = Sync(file);
  if (!reason.empty() && calls.ftruncate(file, end) != 0) reason += "; a part of it is there";
  return reason;
}

Reason SyncFolderOf(const std::string& path) {
  const std::string folder = path.substr(0, FolderLength(path)) + ".";
  const int flags = O_PATH | O_DIRECTORY | O_CLOEXEC;
  const Descriptor opened(TheFileCalls().openat(AT_FDCWD, folder.c_str(), flags, 0));
  return opened.IsOpen() ? SyncFolder(opened.Number()) : LastError();
}

FileResult ResultOf(const std::string& path, const Reason& reason) {
  return {reason.empty() ? std::string() : "can't write " + path + ": " + reason};
}

TextParts OnePart(std::string_view content) {
  return [content](const TakePart& take) { take(content); };
}

FileResult Save(const std::string& path, const TextParts& content, Kind kind) {
  Target target;
  target.kind = kind;
  Reason reason = FindTarget(path, target);
  if (reason.empty()) {
    Attempt attempt{Attempt::cNeedsInPlace, {}};
    if (!target.exists || target.old.st_nlink == 1) attempt = Replace(target, content);
    reason =
        attempt.outcome == Attempt::cNeedsInPlace ? WriteInPlace(target, content) : attempt.reason;
  }
  return ResultOf(path, reason);
}

}  // namespace

FileResult SaveFileText(const std::string& path, std::string_view content) {
  return Save(path, OnePart(content), Kind::cText);
}

FileResult SaveProduct(const std::string& path, std::string_view content) {
  return Save(path, OnePart(content), Kind::cProduct);
}

FileResult SaveFileParts(const std::string& path, const TextParts& content) {
  return Save(path, content, Kind::cText);
}

FileResult AppendFileText(const std::string& path, size_t offset, std::string_view bytes) {
  const FileCalls& calls = TheFileCalls();
  const int flags = O_WRONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC | (offset == 0 ? O_CREAT : 0);
  const Descriptor file(calls.openat(AT_FDCWD, path.c_str(), flags, 0600));
  struct stat status;
  if (!file.IsOpen() || calls.fstat(file.Number(), &status) != 0)
    return ResultOf(path, LastError());
  const off_t end = static_cast<off_t>(offset);
  Reason reason = WhyKindIsRefused(status.st_mode);
  if (reason.empty() && status.st_size < end) reason = "it has become shorter";
  if (!reason.empty()) return ResultOf(path, reason);
  reason = Append(file.Number(), end, status.st_size, bytes);
  if (reason.empty() && offset == 0) reason = SyncFolderOf(path);
  return ResultOf(path, reason);
}

}  // namespace mavro
