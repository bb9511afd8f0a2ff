#include "tags/EditorReader.h"

#include <algorithm>

#include "Assert.h"
#include "base/EditorText.h"

namespace zendry {

namespace {

constexpr char cEndByte = static_cast<char>(0xFF);

}  // namespace

// The base must not close the stream: it isn't a file.
EditorReader::~EditorReader() {
  EditorReader::close();
}

int EditorReader::getc() {
  if (position >= chunkLength && !Slide()) return -1;
  return static_cast<signed char>(window[static_cast<size_t>(position++)]);
}

void EditorReader::ungetc(int) {
  MAVRO_ASSERT(position >= 1 || baseOffset == 0);
  if (position >= 1) --position;
}

mavro::FileResult EditorReader::open(const char*) {
  stream = &text;
  documentLength = text.Length();
  baseOffset = 0;
  position = 0;
  Fetch();
  return {};
}

void EditorReader::close() {
  stream = nullptr;
}

// Stops before a byte that reads as the end; getc() reads that.
size_t EditorReader::read(char* buffer, size_t size) {
  if (position >= chunkLength && !Slide()) return 0;
  const auto first = window.begin() + position;
  const auto count = std::min(size, static_cast<size_t>(chunkLength - position));
  const auto last = std::find(first, first + static_cast<std::ptrdiff_t>(count), cEndByte);
  std::copy(first, last, buffer);
  position += static_cast<int>(last - first);
  return static_cast<size_t>(last - first);
}

// Moves the window on; false at the end of the text.
bool EditorReader::Slide() {
  if (baseOffset + position >= documentLength) return false;
  baseOffset += cSlide;
  Fetch();
  position = cKept;
  return true;
}

void EditorReader::Fetch() {
  chunkLength = std::min(documentLength - baseOffset, cWindow);
  text.CopyRange(baseOffset, baseOffset + chunkLength, window.data());
}

}  // namespace zendry
