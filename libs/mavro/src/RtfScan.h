#pragma once

#include <string>
#include <string_view>

namespace mavro {

// A piece of rich text as it is written.
struct RtfToken {
  enum Kind { cEnd, cOpen, cClose, cText, cWord, cByte, cBinary };
  Kind kind = cEnd;
  std::string_view text;   // of cText; the word of cWord without its backslash
  int number = 0;          // what follows a word, or the value of cByte
  bool hasNumber = false;  // a word without one has the number 0 here
};

// Cuts rich text into tokens. Every call consumes at least a byte or answers cEnd.
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

// Joins the two halves in which a character beyond the first plane is told.
class UnitJoiner {
 public:
  // UTF-8 of what `unit` completes; empty for a first half. Half a pair becomes the sign for a
  // character that is lost.
  std::string Take(int unit);
  // What is left at the end.
  std::string Rest();

 private:
  int high = 0;
};

// UTF-8 of a byte in code page 1252.
std::string WindowsCharacter(unsigned char byte);
// Length of the character that a text which isn't empty starts with.
size_t CharacterBytes(std::string_view text);

}  // namespace mavro
