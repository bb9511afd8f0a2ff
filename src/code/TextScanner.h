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
// through a window of a few thousand bytes, so that a place in a large file costs no copy of it.
// The text must not change as long as the scanner lives.
class TextScanner {
 public:
  static constexpr int cWindow = 4000;
  static constexpr int cWindowLead = 500;  // what of a window lies before the byte asked for
  static constexpr int cNearReach = 64;

  enum class Reach { cWholeText, cNearCaret };

  // Stands at the caret. cNearCaret: nothing is read forward more than 64 bytes behind it.
  explicit TextScanner(const CaretText& text, Reach reach = Reach::cWholeText);

  // Reads the byte before `position` and steps back. A comment is passed over: one in a line from
  // its first "//" on, together with the newline. 0 at the start of the text.
  int readBack();
  // Reads the byte at `position` and steps on, past comments. 0 at the limit.
  int readForward();
  // The byte at a place, comments or not; 0 outside the text.
  int At(int place);

  const CaretText& editor;
  int position = 0;
  const int limit;  // end of what readForward reads

 private:
  using Skips = std::map<int, int>;

  void MoveWindow(int place);
  int LineCommentStart(int newline);
  int BlockCommentStart(int star);
  int Remember(Skips& skips, int from, int reached, int found);

  const int length;
  int windowStart = 0;
  std::string window;
  // Where long skips lead, so that reading over the same one again and again stays cheap.
  Skips lineSkips;
  Skips blockSkips;
};

}  // namespace zendry
