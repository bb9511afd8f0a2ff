#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace zendry {

// Statements that begin with a shorter name are not read.
constexpr size_t cShortestName = 3;

// A line cut into words, as the regions of a form are read.
struct LineTokens {
  static constexpr size_t cMost = 6;

  bool Has(size_t number) const { return number < words.size(); }
  // The word of a number from 0; empty without one.
  std::string_view Word(size_t number) const;
  // True if a part of one of the first `count` words was in quotes: no name can be written so.
  bool HasQuoted(size_t count) const;

  std::vector<std::string> words;  // cMost at the most; further ones are passed over
  std::vector<bool> isQuoted;      // for each word
  std::string rest;                // the line from the end of the word with the number `limit`
};

// Cuts a line at blanks, control characters, bytes from 0x80 up and the characters .,<>()[]=; which
// count as other characters between quotes. A quote with a backslash before it is no quote. A word
// that the end of the line ends is dropped.
LineTokens Tokenize(std::string_view line, size_t limit);

// A line without the blanks and control characters around it.
std::string_view Trimmed(std::string_view line);

// Reduces the rest of a statement to its value: takes the operator before it and the ";" behind it
// away. Returns the operator.
char TrimValue(std::string& text);

}  // namespace zendry
