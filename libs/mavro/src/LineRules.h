#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace mavro {

// Converts a bare "\n" to "\r\n", the line end that the rules below expect; a "\r\n" is unchanged.
// The input may be split at any byte.
class NewlineConverter {
 public:
  void Append(std::string_view piece, std::string& text);

 private:
  bool afterReturn = false;  // the last byte seen was "\r"
};

// Cuts what a child prints into lines.
//
// Blocking rule: as long as the first "\n" is at a position p above 0, the first p-1 characters are
// a line (this drops the "\r") and p+1 characters are removed. A "\n" at position 0 stops the
// delivery; everything from there is the rest.
//
// Attached rule: each line is the text up to and including its "\n".
//
// After the converter, a blank line is "\r\n" and its "\n" is at position 1: a blank first line is
// delivered as an empty line like any other. The stop at position 0 happens only with text that
// didn't pass the converter.
class LineBuffer {
 public:
  enum class Rule { cBlocking, cAttached };
  explicit LineBuffer(Rule rule) : rule(rule) {}

  void Append(std::string_view bytes);
  // Moves the next complete line into `line`; false if there is none yet. No byte is searched
  // twice, so the cost of a long line is linear.
  bool Next(std::string& line);
  // Returns the rest after the end of the output, whatever it contains.
  std::string TakeRest();

 private:
  Rule rule;
  std::string buffer;
  size_t begin = 0;     // everything before it has been delivered
  size_t searched = 0;  // no "\n" between `begin` and here
};

}  // namespace mavro
