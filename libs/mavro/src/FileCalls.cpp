#include "FileCalls.h"

#include <fcntl.h>
#include <stdio.h>
#include <sys/file.h>
#include <sys/xattr.h>
#include <unistd.h>

namespace mavro {

FileCalls& TheFileCalls() {
  static FileCalls calls = {
      .readlink = ::readlink,
      .openat = [](int folder, const char* path, int flags,
                   mode_t mode) { return ::openat(folder, path, flags, mode); },
      .fstatat = ::fstatat,
      .faccessat = ::faccessat,
      .fstat = ::fstat,
      .read = ::read,
      .write = ::write,
      .lseek = ::lseek,
      .ftruncate = ::ftruncate,
      .fallocate = ::fallocate,
      .fsync = ::fsync,
      .flock = ::flock,
      .fchmod = ::fchmod,
      .fchown = ::fchown,
      .flistxattr = ::flistxattr,
      .fgetxattr = ::fgetxattr,
      .fsetxattr = ::fsetxattr,
      .fremovexattr = ::fremovexattr,
      .lgetxattr = ::lgetxattr,
      .renameat = ::renameat,
      .unlinkat = ::unlinkat,
  };
  return calls;
}

}  // namespace mavro
