#pragma once

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "base/FileReader.h"
#include "tags/IncludeScan.h"
#include "tags/PlatformBranches.h"

namespace zendry {

class TagData;

// Reads a source line by line: counts lines, makes every line end a newline, and records the names
// that lines beginning with "#" include. A line is handed out as the bytes between `cursor` and
// `lineEnd`, so that a caller can read it without a call per byte.
//
// A byte 0 ends its line early; the rest of the line isn't read. A line over the longest that is
// set ends the source.
class LineInput {
 public:
  static constexpr size_t cLongestLine = 1023;
  static constexpr ptrdiff_t cLookAhead = 2048;

  // Starts at the first byte of an open reader. Includes go to the store, if there is one.
  void Start(FileReader& newReader, TagData* newStore);
  // The next byte of the source, -1 at its end.
  int lineGetc() {
    if (linePushback != 0) [[unlikely]]
      return TakePushback();
    if (cursor != lineEnd) [[likely]]
      return static_cast<unsigned char>(*cursor++);
    return NextLine() ? static_cast<unsigned char>(*cursor++) : -1;
  }
  // Goes to the next line that has a byte; false at the end.
  bool NextLine();
  // Text that comes next, over the ends of lines, comments and directives included: at least
  // `cLookAhead` bytes from the beginning of this line, if there are as many.
  std::string_view Ahead() const {
    const ptrdiff_t size = std::min(std::max(lineEnd - lineStart, cLookAhead), end - lineStart);
    return {cursor, static_cast<size_t>(size - (cursor - lineStart))};
  }
  // The place in the source of a byte of this line, or of its end. It counts the source's own
  // bytes.
  int PlaceOf(const char* at) const {
    return static_cast<int>(linePlace + static_cast<size_t>(at - lineStart));
  }
  // What was passed of the line that is read now.
  struct PassedText {
    bool isNewLine = false;  // another line has begun
    const char* from = nullptr;
  };
  // Goes to the next byte that counts in a body, over the ends of lines; to the end of the source
  // if there is none.
  PassedText PassBodyText();
  // Gives up the rest of the source: only a newline still comes.
  void Stop();

  size_t longestLine = cLongestLine;  // a longer line ends the source
  const char* lineStart = nullptr;
  const char* cursor = nullptr;
  const char* lineEnd = nullptr;  // after the newline, if the line has one
  int linePushback = 0;           // a byte to return first, 0 for none
  int lineNumber = 0;             // lines started
  bool isTooLong = false;         // a line has ended the source
  int tagLine = 0;                // the number that tags carry

 private:
  int TakePushback();
  const char* EndOfLinesToPass() const;
  void ReadLine();
  void Fill();
  void ScanInclude(const char* lastByte);
  void CutTooLong(const char* start);

  FileReader* reader = nullptr;
  TagData* store = nullptr;
  std::vector<char> buffer;  // not used for a source that is in memory and has no CR
  char* next = nullptr;      // first byte that isn't part of a line yet
  char* end = nullptr;       // after the last byte that was read
  bool eof = true;           // no more lines are read
  bool isReaderDone = true;
  bool endsInReturn = false;  // the last byte read was CR; a newline after it belongs to it
  bool hasZeros = false;      // a byte 0 has been read
  size_t linePlace = 0;       // of this line in the source
  size_t readPlace = 0;       // of `end`, line ends counted as one byte
  std::vector<size_t> tails;  // places after the CR of each CR LF, counted so
  size_t tailsBefore = 0;     // how many of them are before this line
  IncludeScanner includeScan;
  PlatformBranches branches;
};

}  // namespace zendry
