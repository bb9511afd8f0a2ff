#pragma once

#include <map>
#include <string>

#include "base/CaretText.h"

namespace zendry {

// A letter, a digit or "_".
bool IsWordChar(int c);
// Blank, TAB and all line ends.
bool IsWhiteSpace(int c);

// Reads an editor's text byte by byte in both directions and passes over comments. It sees the text
// through a window of a few thousand bytes, so that a large file is never copied whole. The text
// must not change as long as the scanner lives.
class TextScanner {
 public:
  static constexpr int cWindow = 4000;
  static constexpr int cWindowLead = 500;  // bytes of a window before the requested one
  static constexpr int cNearReach = 64;

  enum class Reach { cWholeText, cNearCaret };

  // Starts at the caret. cNearCaret: forward reading ends 64 bytes after it.
  explicit TextScanner(const CaretText& text, Reach reach = Reach::cWholeText);

  // Reads the byte before `position` and steps back. A comment is passed over: a line comment from
  // the line's first "//" on, together with the newline. 0 at the start of the text.
  int readBack();
  // Reads the byte at `position` and steps on, past comments. 0 at the limit.
  int readForward();
  // The byte at a place, comments or not; 0 outside the text.
  int At(int place);

  const CaretText& editor;
  int position = 0;
  const int limit;  // where readForward() ends

 private:
  using Skips = std::map<int, int>;

  void MoveWindow(int place);
  int LineCommentStart(int newline);
  int BlockCommentStart(int star);
  int Remember(Skips& skips, int from, int reached, int found);

  const int length;
  int windowStart = 0;
  std::string window;
  // The ends of long skips, so that repeated reading over the same one stays cheap.
  Skips lineSkips;
  Skips blockSkips;
};

}  // namespace zendry
