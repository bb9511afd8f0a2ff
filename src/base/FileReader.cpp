#include "base/FileReader.h"

#include <algorithm>
#include <utility>

namespace zendry {

FileReader::~FileReader() = default;

int FileReader::getc() {
  return position < text.size() ? static_cast<unsigned char>(text[position++]) : -1;
}

void FileReader::ungetc(int) {
  if (position > 0) --position;
}

mavro::FileResult FileReader::open(const char* path) {
  mavro::FileText file = mavro::ReadFileText(path);
  if (file.Ok()) stream = &text;
  text = std::move(file.text);
  position = 0;
  return file;
}

mavro::FileResult FileReader::Rewind(const char* path) {
  if (stream == &text) {
    position = 0;
    return {};
  }
  close();
  return open(path);
}

void FileReader::close() {
  stream = nullptr;
  text = {};
  position = 0;
}

size_t FileReader::read(char* buffer, size_t size) {
  const size_t count = std::min(size, text.size() - position);
  std::copy_n(text.data() + position, count, buffer);
  position += count;
  return count;
}

}  // namespace zendry
