#pragma once

#include <cstddef>
#include <cstdio>

namespace zendry {

// Where the tag parser takes its bytes from: a file on disk. Another source of bytes derives from
// it and overrides every operation.
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
  // False when it can't be opened. A reader that is open stays as it is: close it before.
  virtual bool open(const char* path);
  // Nothing happens when it isn't open.
  virtual void close();
  // Puts up to `size` bytes into `buffer`, the ones that as many calls of getc() would give, and
  // says how many. Fewer than `size`, but for 0, don't mean the end.
  virtual size_t read(char* buffer, size_t size);

  bool IsOpen() const { return stream != nullptr; }

 protected:
  // A derived reader keeps here what it reads from; not null means open.
  void* stream = nullptr;
};

}  // namespace zendry
