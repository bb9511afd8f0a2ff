#include "base/FileReader.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace zendry {
namespace {

FILE* File(void* stream) {
  return static_cast<FILE*>(stream);
}

}  // namespace

// The stream of a derived reader isn't ours, so only a file is closed here: a derived reader closes
// itself in its own destructor.
FileReader::~FileReader() {
  FileReader::close();
}

int FileReader::getc() {
  return stream == nullptr ? -1 : std::fgetc(File(stream));
}

void FileReader::ungetc(int c) {
  if (stream != nullptr) std::ungetc(c, File(stream));
}

// Opening a pipe would wait for a writer; only regular files are sources.
bool FileReader::open(const char* path) {
  const int file = ::open(path, O_RDONLY | O_NONBLOCK | O_CLOEXEC);
  if (file < 0) return false;
  struct stat status;
  const bool isRegular = fstat(file, &status) == 0 && S_ISREG(status.st_mode);
  if (isRegular)
    stream = fdopen(file, "rb");
  else
    ::close(file);
  return stream != nullptr;
}

void FileReader::close() {
  if (stream != nullptr) std::fclose(File(stream));
  stream = nullptr;
}

size_t FileReader::read(char* buffer, size_t size) {
  return stream == nullptr ? 0 : std::fread(buffer, 1, size, File(stream));
}

}  // namespace zendry
