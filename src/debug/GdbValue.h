#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "debug/GdbListener.h"

namespace zendry {

// The longest value, error or frame that is kept; what is longer is cut and ends in "...".
constexpr size_t cLongestValue = 65536;
// No line is added to a column's text that has reached this.
constexpr size_t cLongestColumn = 255;

// Adds what fits of `more` to a text that is kept up to `most` bytes. A text that is full ends in
// "..." and takes nothing more. A UTF-8 character is never cut.
void AppendBounded(std::string& text, std::string_view more, size_t most);

// Hides what libstdc++ keeps in a std::string, where gdb prints values without the library's own
// printers: `{x = 1, name = {_M_dataplus = {_M_p = 0x55 "text"}}}` becomes `{x = 1, name "text" }`.
std::string TidyValue(std::string value);

// Collects the lines of a value.
class ValueText {
 public:
  // Begins a value with its first line.
  void Begin(std::string_view line);
  // Adds a further line, without its end.
  void Append(std::string_view line);
  // The value so far, tidied.
  GdbValue Take();

 private:
  std::string text;
  std::string column;
};

}  // namespace zendry
