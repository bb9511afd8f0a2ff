#include "FileBuffer.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <new>

#include "RegularFile.h"

namespace mavro {

namespace {

constexpr size_t cMostBytes = 0x7fffffff;

}  // namespace

// Keeps what has been read.
bool FileBuffer::Grow(size_t wanted) {
  if (wanted <= room) return true;
  const size_t newRoom = std::max(wanted, 2 * room);
  char* larger = new (std::nothrow) char[newRoom];
  if (!larger) return false;
  if (length > 0) std::memcpy(larger, bytes.get(), length);
  bytes.reset(larger);
  room = newRoom;
  return true;
}

// A file may grow while it is read, or report no size; so the size is only a hint.
FileResult FileBuffer::Read(const std::string& path) {
  length = 0;
  const RegularFile opened = OpenRegularFile(path);
  if (!opened.Ok()) return opened;
  const auto fail = [&](FileResult result) {
    length = 0;
    return result;
  };
  if (!Grow(static_cast<size_t>(opened.size) + 1)) return fail(Unreadable(path));
  for (;;) {
    const ssize_t count = read(opened.file.Number(), bytes.get() + length, room - length);
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) return fail({path + ": " + std::strerror(errno)});
    if (count == 0) return {};
    length += static_cast<size_t>(count);
    // One byte more was asked for: the file ends here.
    if (length == static_cast<size_t>(opened.size)) return {};
    if (length > cMostBytes) return fail(Unreadable(path));
    if (length == room && !Grow(2 * room)) return fail(Unreadable(path));
  }
}

}  // namespace mavro
