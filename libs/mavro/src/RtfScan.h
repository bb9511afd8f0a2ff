#pragma once

#include <string>
#include <string_view>

namespace mavro {

// A token of rich text.
struct RtfToken {
  enum Kind { cEnd, cOpen, cClose, cText, cWord, cByte, cBinary };
  Kind kind = cEnd;
  std::string_view text;   // of cText; the word of cWord without its backslash
  int number = 0;          // the number after a word, or the value of cByte
  bool hasNumber = false;  // if false, `number` is 0
};

// Cuts rich text into tokens. Every call consumes at least one byte or returns cEnd.
class RtfScan {
 public:
  explicit RtfScan(std::string_view itsBytes) : bytes(itsBytes) {}
  RtfToken Next();

 private:
  char Peek(size_t ahead = 0) const { return at + ahead < bytes.size() ? bytes[at + ahead] : '\0'; }
  RtfToken Control();
  RtfToken Word();
  RtfToken Byte();

  std::string_view bytes;
  size_t at = 0;
};

// Joins the two halves (surrogates) of a character beyond the first plane.
class UnitJoiner {
 public:
  // The UTF-8 of the character that `unit` completes; empty for a first half. An unpaired half
  // becomes the replacement character.
  std::string Take(int unit);
  // The rest at the end.
  std::string Rest();

 private:
  int high = 0;
};

// UTF-8 of a byte in code page 1252.
std::string WindowsCharacter(unsigned char byte);
// The length of the first character of a text, which must not be empty.
size_t CharacterBytes(std::string_view text);

}  // namespace mavro
