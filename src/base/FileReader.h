#pragma once

#include <cstddef>
#include <span>

#include "FileBuffer.h"

namespace zendry {

// The source of the tag parser's bytes: a file on disk, read when it is opened. Another source
// derives from this class and overrides every operation.
class FileReader {
 public:
  FileReader() = default;
  FileReader(const FileReader&) = delete;
  FileReader& operator=(const FileReader&) = delete;
  virtual ~FileReader();

  // The next byte as 0..255, -1 at the end.
  virtual int getc();
  // Takes back the byte that getc() gave last.
  virtual void ungetc(int c);
  // An error when it can't be opened. A reader that is open already must be closed first.
  virtual mavro::FileResult open(const char* path);
  // Goes back to the first byte of the open source. A file isn't read again; readers of other kinds
  // are closed and opened.
  virtual mavro::FileResult Rewind(const char* path);
  // Does nothing when it isn't open.
  virtual void close();
  // Puts up to `size` bytes into `buffer`, the same that as many calls of getc() would give, and
  // returns their number. Only 0 means the end; a smaller number than `size` doesn't.
  virtual size_t read(char* buffer, size_t size);
  // The whole open source where it stands in memory, instead of reading it; the caller may change
  // it, and one byte behind it, as long as the lines in it stay where they are. Empty for readers
  // of other kinds.
  std::span<char> InMemory() { return stream == &file ? file.Bytes() : std::span<char>(); }

  bool IsOpen() const { return stream != nullptr; }

 protected:
  // A derived reader keeps its source here; not null means open.
  void* stream = nullptr;

 private:
  mavro::FileBuffer file;
  size_t position = 0;
};

}  // namespace zendry
