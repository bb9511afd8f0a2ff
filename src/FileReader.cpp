#include "FileReader.h"

namespace zendry {
namespace {

FILE* File(void* stream) {
  return static_cast<FILE*>(stream);
}

}  // namespace

// What a derived reader keeps is none of ours, so nothing but a file is closed here: a derived
// reader closes itself in its own destructor.
FileReader::~FileReader() {
  FileReader::close();
}

int FileReader::getc() {
  return stream == nullptr ? -1 : std::fgetc(File(stream));
}

void FileReader::ungetc(int c) {
  if (stream != nullptr) std::ungetc(c, File(stream));
}

bool FileReader::open(const char* path) {
  stream = std::fopen(path, "rb");
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
