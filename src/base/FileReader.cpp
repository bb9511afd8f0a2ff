#include "base/FileReader.h"

#include <string_view>

namespace zendry {

FileReader::~FileReader() = default;

int FileReader::getc() {
  const std::string_view text = file.Text();
  return position < text.size() ? static_cast<unsigned char>(text[position++]) : -1;
}

void FileReader::ungetc(int) {
  if (position > 0) --position;
}

mavro::FileResult FileReader::open(const char* path) {
  mavro::FileResult result = file.Read(path);
  if (result.Ok()) stream = &file;
  position = 0;
  return result;
}

mavro::FileResult FileReader::Rewind(const char* path) {
  if (stream == &file) {
    position = 0;
    return {};
  }
  close();
  return open(path);
}

void FileReader::close() {
  stream = nullptr;
  file = {};
  position = 0;
}

size_t FileReader::read(char* buffer, size_t size) {
  const size_t count = file.Text().copy(buffer, size, position);
  position += count;
  return count;
}

}  // namespace zendry
