#pragma once

#include <string>
#include <string_view>

namespace mavro {

// How letters are compared: cFolded ignores the case of ASCII letters.
enum class LetterCase { cExact, cFolded };

// Looks for one byte string in texts. It compares two of its rarer bytes in whole blocks of the
// text, so that most of a text costs less than reading it from memory.
class ByteFind {
 public:
  // An empty string is found nowhere.
  ByteFind(std::string_view newWanted, LetterCase newLetters);

  // The first place at or after `from`; npos if there is none.
  size_t Next(std::string_view text, size_t from) const;
  // The last place that begins at or after `from` and ends at or before `before`; npos if there is
  // none.
  size_t Last(std::string_view text, size_t from, size_t before) const;
  size_t Length() const { return wanted.size(); }

 private:
  // A byte of the wanted string; `mask` is set in both before they are compared.
  struct Probe {
    size_t offset = 0;
    unsigned char mask = 0;
    unsigned char byte = 0;
  };
  Probe ProbeAt(size_t offset) const;
  bool IsAt(const char* place) const;

  std::string wanted;  // in lower case if letters are folded
  LetterCase letters;
  Probe rare, other;
};

// The number of bytes of a kind in a text.
size_t CountBytes(std::string_view text, char byte);

}  // namespace mavro
