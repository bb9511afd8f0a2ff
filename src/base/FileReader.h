#pragma once

#include <cstddef>
#include <cstdio>

namespace zendry {

// The source of the tag parser's bytes: a file on disk. Another source derives from this class and
// overrides every operation.
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
  // False when it can't be opened. A reader that is open already stays as it is: close it first.
  virtual bool open(const char* path);
  // Does nothing when it isn't open.
  virtual void close();
  // Puts up to `size` bytes into `buffer`, the same that as many calls of getc() would give, and
  // returns their number. Only 0 means the end; a smaller number than `size` doesn't.
  virtual size_t read(char* buffer, size_t size);

  bool IsOpen() const { return stream != nullptr; }

 protected:
  // A derived reader keeps its source here; not null means open.
  void* stream = nullptr;
};

}  // namespace zendry
