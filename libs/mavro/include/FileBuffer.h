#pragma once

#include <cstddef>
#include <memory>
#include <span>
#include <string>
#include <string_view>

#include "FileText.h"

namespace mavro {

// Reads many files, one after the other, into the same memory.
class FileBuffer {
 public:
  // Reads a whole file, as ReadFileText does. After an error the text is empty.
  FileResult Read(const std::string& path);
  // The content of the file that was read last, until the next call.
  std::string_view Text() const { return {bytes.get(), length}; }
  // The same, to be changed in place. One byte behind it may be written too.
  std::span<char> Bytes() { return {bytes.get(), length}; }

 private:
  bool Grow(size_t wanted);

  std::unique_ptr<char[]> bytes;
  size_t room = 0;
  size_t length = 0;
};

}  // namespace mavro
