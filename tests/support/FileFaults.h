#pragma once

#include <signal.h>

#include <cerrno>
#include <type_traits>

#include "FileCalls.h"

namespace test {

// Makes system calls of a save fail, as long as it lives: the calls are counted from 1, and the one
// with the number `first`, or all from there on, fail with `error`. One at a time.
//
//   test::FileFaults faults(3, ENOSPC);
//   SaveFileText(path, text);
//   EXPECT_TRUE(faults.hit);
class FileFaults {
 public:
  enum class Extent { cOne, cAllFrom };

  FileFaults(int first, int error, Extent extent = Extent::cOne)
      : saved(mavro::TheFileCalls()), working(saved), first(first), error(error), extent(extent) {
    current = this;
    working.write = WritePart;
    Install<&mavro::FileCalls::readlink>(saved.readlink);
    Install<&mavro::FileCalls::openat>(saved.openat);
    Install<&mavro::FileCalls::fstatat>(saved.fstatat);
    Install<&mavro::FileCalls::faccessat>(saved.faccessat);
    Install<&mavro::FileCalls::fstat>(saved.fstat);
    Install<&mavro::FileCalls::read>(saved.read);
    Install<&mavro::FileCalls::write>(saved.write);
    Install<&mavro::FileCalls::lseek>(saved.lseek);
    Install<&mavro::FileCalls::ftruncate>(saved.ftruncate);
    Install<&mavro::FileCalls::fallocate>(saved.fallocate);
    Install<&mavro::FileCalls::fsync>(saved.fsync);
    Install<&mavro::FileCalls::flock>(saved.flock);
    Install<&mavro::FileCalls::fchmod>(saved.fchmod);
    Install<&mavro::FileCalls::fchown>(saved.fchown);
    Install<&mavro::FileCalls::flistxattr>(saved.flistxattr);
    Install<&mavro::FileCalls::fgetxattr>(saved.fgetxattr);
    Install<&mavro::FileCalls::fsetxattr>(saved.fsetxattr);
    Install<&mavro::FileCalls::fremovexattr>(saved.fremovexattr);
    Install<&mavro::FileCalls::lgetxattr>(saved.lgetxattr);
    Install<&mavro::FileCalls::renameat>(saved.renameat);
    Install<&mavro::FileCalls::unlinkat>(saved.unlinkat);
  }
  ~FileFaults() {
    mavro::TheFileCalls() = saved;
    current = nullptr;
  }
  FileFaults(const FileFaults&) = delete;
  FileFaults& operator=(const FileFaults&) = delete;

  // An `error` that is no error: the process is killed before the call is made.
  static constexpr int cKill = -1;

  bool hit = false;          // a call has failed
  bool hitRemoving = false;  // a file that should go couldn't be removed

 private:
  template <auto member, class Result, class... Values>
  void Install(Result (*)(Values...)) {
    mavro::TheFileCalls().*member = CallOrFail<member, Result, Values...>;
  }

  template <auto member, class Result, class... Values>
  static Result CallOrFail(Values... values) {
    if (!current->IsDue()) return (current->working.*member)(values...);
    if (current->error == cKill) raise(SIGKILL);
    if constexpr (std::is_same_v<decltype(member), decltype(&mavro::FileCalls::unlinkat)>)
      current->hitRemoving |= member == &mavro::FileCalls::unlinkat;
    errno = current->error;
    return -1;
  }

  bool IsDue() {
    ++count;
    const bool due = extent == Extent::cOne ? count == first : count >= first;
    hit |= due;
    return due;
  }

  static inline FileFaults* current = nullptr;
  static ssize_t WritePart(int file, const void* bytes, size_t size) {
    constexpr size_t cPart = 40'000;
    return current->saved.write(file, bytes, size < cPart ? size : cPart);
  }

  mavro::FileCalls saved, working;
  int first, error;
  Extent extent;
  int count = 0;
};

}  // namespace test
