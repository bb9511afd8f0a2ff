#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace mavro {

// Hands a bare "\n" on as "\r\n", as tools themselves write where the line rules below come from; a
// "\r\n" stays. Pieces may be cut anywhere.
class NewlineConverter {
 public:
  void Append(std::string_view piece, std::string& text);

 private:
  bool afterReturn = false;  // the last byte seen was "\r"
};

// Cuts what a child prints into lines.
//
// Blocking rule: as long as the first "\n" stands at a position p above 0, the first p-1 characters
// are a line (so the "\r" goes) and p+1 are taken away. A "\n" at position 0 stops the delivery;
// all that follows is the rest.
//
// Attached rule: each line is what stands up to and with its "\n".
//
// With the converter before it, a blank line is "\r\n" and its "\n" stands at position 1: a blank
// first line is delivered as an empty line like any other. The stop at position 0 shows only with
// text that didn't pass the converter.
class LineBuffer {
 public:
  enum class Rule { cBlocking, cAttached };
  explicit LineBuffer(Rule rule) : rule(rule) {}

  void Append(std::string_view bytes);
  // Takes the next whole line out into `line`; false if there is none yet. Bytes that were searched
  // are not searched again, so a long line costs its length.
  bool Next(std::string& line);
  // What is left when the output has ended, whatever it holds.
  std::string TakeRest();

 private:
  Rule rule;
  std::string buffer;
  size_t begin = 0;     // what stands before it has been delivered
  size_t searched = 0;  // no "\n" between `begin` and here
};

}  // namespace mavro
