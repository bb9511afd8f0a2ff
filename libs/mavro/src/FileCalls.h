#pragma once

#include <sys/stat.h>
#include <sys/types.h>

namespace mavro {

// The system calls that a save makes, in a table, so that tests can let any of them fail. Each has
// the meaning and the result of the system call of the same name.
struct FileCalls {
  ssize_t (*readlink)(const char* path, char* buffer, size_t size);
  int (*openat)(int folder, const char* path, int flags, mode_t mode);
  int (*fstatat)(int folder, const char* path, struct stat* status, int flags);
  int (*faccessat)(int folder, const char* path, int mode, int flags);
  int (*fstat)(int file, struct stat* status);
  ssize_t (*read)(int file, void* buffer, size_t size);
  ssize_t (*write)(int file, const void* bytes, size_t size);
  off_t (*lseek)(int file, off_t offset, int whence);
  int (*ftruncate)(int file, off_t size);
  int (*fallocate)(int file, int mode, off_t offset, off_t size);
  int (*fsync)(int file);
  int (*flock)(int file, int operation);
  int (*fchmod)(int file, mode_t mode);
  int (*fchown)(int file, uid_t user, gid_t group);
  ssize_t (*flistxattr)(int file, char* names, size_t size);
  ssize_t (*fgetxattr)(int file, const char* name, void* value, size_t size);
  int (*fsetxattr)(int file, const char* name, const void* value, size_t size, int flags);
  int (*fremovexattr)(int file, const char* name);
  ssize_t (*lgetxattr)(const char* path, const char* name, void* value, size_t size);
  int (*renameat)(int fromFolder, const char* from, int toFolder, const char* to);
  int (*unlinkat)(int folder, const char* path, int flags);
};

FileCalls& TheFileCalls();

}  // namespace mavro
