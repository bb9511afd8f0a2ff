#include "base/ToolColumns.h"

namespace zendry {

namespace {

// A walk along a line, a character a step.
struct Walk {
  size_t at = 0;
  int column = 1;

  void Step(std::string_view line) {
    constexpr int cTabStops = 8;
    column = line[at] == '\t' ? (column - 1) / cTabStops * cTabStops + cTabStops + 1 : column + 1;
    ++at;
    while (at < line.size() && (static_cast<unsigned char>(line[at]) & 0xC0) == 0x80) ++at;
  }
};

}  // namespace

size_t ByteInColumn(std::string_view line, int column) {
  Walk walk;
  while (walk.at < line.size() && walk.column < column) walk.Step(line);
  return walk.at;
}

int ColumnOfByte(std::string_view line, size_t byte) {
  Walk walk;
  while (walk.at < line.size() && walk.at < byte) walk.Step(line);
  return walk.column;
}

}  // namespace zendry
