#pragma once

#include <string>

namespace mavro {

// A text for the rules of typing: bytes, lines and the style of each byte. Lines and positions
// count from 0.
class SciText {
 public:
  virtual ~SciText() = default;
  virtual int Length() const = 0;
  virtual int LineOf(int position) const = 0;
  virtual int LineStart(int line) const = 0;
  virtual int LineEnd(int line) const = 0;  // before the line end
  // Bytes from `start` up to `end`, both clipped to the text.
  virtual std::string Range(int start, int end) const = 0;
  // Appends the same bytes to `to`.
  virtual void AppendRange(int start, int end, std::string& to) const { to += Range(start, end); }
  // The style that the lexer has given a byte.
  virtual int StyleAt(int position) const = 0;
  // The number of blank columns before the first letter of a line.
  virtual int Indentation(int line) const = 0;
};

}  // namespace mavro
