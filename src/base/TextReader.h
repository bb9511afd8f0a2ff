#pragma once

#include <string_view>

#include "base/FileReader.h"

namespace zendry {

// Hands a text in memory to the tag parser. The text must outlive it.
class TextReader : public FileReader {
 public:
  explicit TextReader(std::string_view newText) : text(newText) {}
  ~TextReader() override { TextReader::close(); }

  int getc() override {
    return position < text.size() ? static_cast<unsigned char>(text[position++]) : -1;
  }
  void ungetc(int) override {
    if (position > 0) --position;
  }
  mavro::FileResult open(const char*) override {
    stream = this;
    position = 0;
    return {};
  }
  void close() override { stream = nullptr; }
  size_t read(char* buffer, size_t size) override {
    const size_t count = text.copy(buffer, size, position);
    position += count;
    return count;
  }

 private:
  std::string_view text;
  size_t position = 0;
};

}  // namespace zendry
