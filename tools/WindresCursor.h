#pragma once

#include <string>
#include <string_view>

#include "WindresResource.h"

namespace zendry {

// One word of a script.
struct RcToken {
  enum Kind { cEnd, cWord, cNumber, cString, cWideString, cSign };
  Kind kind = cEnd;
  std::string text;     // of a string: its value as UTF-8, escapes resolved
  uint64_t number = 0;  // of cNumber
  bool isLong = false;  // the number ended in L
  Place place;

  bool IsSign(char sign) const { return kind == cSign && text[0] == sign; }
  bool IsString() const { return kind == cString || kind == cWideString; }
  // Compares without case.
  bool IsWord(std::string_view capitals) const;
  bool IsBegin() const { return IsSign('{') || IsWord("BEGIN"); }
  bool IsEnd() const { return IsSign('}') || IsWord("END"); }
};

// Reads the words of a preprocessed script. From the line markers it knows the file and line that
// each word comes from. Throws ScriptError if the text is not a script.
class RcCursor {
 public:
  // Until the first line marker the text is that of `file`.
  RcCursor(std::string_view text, const std::string& file) : text(text), place{file, 1} {}

  const RcToken& Peek();
  RcToken Next();
  // Takes the next word if it is this sign.
  bool Match(char sign);
  // Takes a file's name: text in quotes, or all text up to the next blank. Backslashes become
  // slashes.
  std::string TakeFileName();

  [[noreturn]] void Fail(const Place& where, const std::string& message) const;
  // Fails at the next word: the message is "expected ", `what`, and the word found.
  [[noreturn]] void FailExpected(const std::string& what);

 private:
  bool AtEnd() const { return position >= text.size(); }
  char Look(size_t ahead = 0) const {
    return position + ahead < text.size() ? text[position + ahead] : '\0';
  }
  void SkipBlanks();
  void ReadDirective();
  RcToken Scan();
  RcToken ScanNumber(std::string_view word);
  RcToken ScanString(bool isWide);
  void ScanEscape(RcToken& token);
  uint32_t TakeDigits(int base, int most);
  std::string_view TakeQuoted();

  std::string_view text;
  size_t position = 0;
  Place place;
  RcToken ahead;
  bool hasAhead = false;
  size_t aheadStart = 0;  // the position of `ahead`
};

}  // namespace zendry
