#include "tags/LineInput.h"

#include <algorithm>
#include <cstring>
#include <span>

#include "tags/BodyText.h"
#include "tags/TagData.h"
#include "tags/TagParser.h"

namespace zendry {
namespace {

// Bytes that are read at once. The rest of a line is kept before them.
constexpr size_t cChunk = 64 * 1024;
constexpr size_t cSpare = 2;  // for the newline that ends a line that is too long
constexpr size_t cSmallestBuffer = cChunk + 2 * LineInput::cLookAhead + cSpare;

const char* Find(const char* begin, const char* end, char c) {
  const void* found = std::memchr(begin, c, static_cast<size_t>(end - begin));
  return found == nullptr ? end : static_cast<const char*>(found);
}

// Turns CR and CR LF into LF within the text; returns its new end. `afterReturn` is true on entry
// if a CR came before the text, and on return if a CR ends it. The places of the newlines that are
// left out go to `tails`; the text begins at `place`.
char* NormalizeLineEnds(char* begin, char* end, bool& afterReturn, size_t place,
                        std::vector<size_t>& tails) {
  if (!afterReturn && Find(begin, end, '\r') == end) return end;
  char* out = begin;
  for (const char* in = begin; in != end; ++in) {
    const bool isTail = *in == '\n' && afterReturn;
    afterReturn = *in == '\r';
    if (isTail)
      tails.push_back(place + static_cast<size_t>(out - begin));
    else
      *out++ = afterReturn ? '\n' : *in;
  }
  return out;
}

}  // namespace

void LineInput::Start(FileReader& newReader, TagData* newStore) {
  reader = &newReader;
  store = newStore;
  linePushback = lineNumber = tagLine = 0;
  isTooLong = eof = endsInReturn = false;
  linePlace = tailsBefore = 0;
  tails.clear();
  const std::span<char> whole = newReader.InMemory();
  isReaderDone = !whole.empty() && std::memchr(whole.data(), '\r', whole.size()) == nullptr;
  if (!isReaderDone) buffer.resize(cSmallestBuffer);
  next = isReaderDone ? whole.data() : buffer.data();
  readPlace = isReaderDone ? whole.size() : 0;
  end = next + readPlace;
  hasZeros = Find(next, end, '\0') != end;
  lineStart = cursor = lineEnd = next;
  branches.Start();
}

int LineInput::TakePushback() {
  const int c = linePushback;
  linePushback = 0;
  return c;
}

bool LineInput::NextLine() {
  while (cursor == lineEnd) {
    if (eof) return false;
    ReadLine();
  }
  return true;
}

// Lines are passed over together if none of them can be too long or have a byte 0.
const char* LineInput::EndOfLinesToPass() const {
  const bool canStop = hasZeros || static_cast<size_t>(end - lineStart) > longestLine;
  return lineEnd == next && !canStop ? end : lineEnd;
}

LineInput::PassedText LineInput::PassBodyText() {
  PassedText passed{false, cursor};
  if (cursor == lineEnd) return passed;
  for (;;) {
    const BodyText body = zendry::PassBodyText(cursor, EndOfLinesToPass());
    if (body.newlines == 0) {
      cursor = body.stop;
      return passed;
    }
    const bool isStop = body.stop != end && body.stop != lineEnd;
    const std::string_view text(cursor, static_cast<size_t>(body.stop - cursor));
    const size_t start = text.rfind('\n') + 1;
    lineNumber += body.newlines - 1;
    tagLine += body.newlines - 1;
    next += text.data() + start - next;
    cursor = lineEnd = next;
    const bool hasLine = NextLine();
    passed = {true, cursor};
    if (!hasLine) return passed;
    cursor += text.size() - start;
    if (isStop) return passed;
  }
}

void LineInput::Stop() {
  eof = true;
  cursor = lineEnd;
  linePushback = '\n';
}

void LineInput::ReadLine() {
  while (end - next < cLookAhead && !isReaderDone) Fill();
  const char* newline;
  for (size_t searched = 0;;) {
    const size_t ahead = std::min<size_t>(static_cast<size_t>(end - next), longestLine + 1);
    newline = Find(next + searched, next + ahead, '\n');
    if (newline != next + ahead || ahead > longestLine || isReaderDone) break;
    searched = ahead;
    Fill();
  }
  const bool hasNewline = newline != end && *newline == '\n';
  const bool isLong = static_cast<size_t>(newline - next) > longestLine;
  eof = isLong || !hasNewline;
  lineStart = cursor = next;
  const size_t place = readPlace - static_cast<size_t>(end - next);
  while (tailsBefore < tails.size() && tails[tailsBefore] <= place) ++tailsBefore;
  linePlace = place + tailsBefore;
  lineEnd = newline + (hasNewline && !isLong ? 1 : 0);
  next += lineEnd - cursor;
  if (cursor == lineEnd) return;
  ++lineNumber;
  ++tagLine;
  if (*cursor == '#' && store != nullptr) ScanInclude(newline);
  if (isLong) CutTooLong(cursor);
  if (hasZeros) lineEnd = Find(cursor, lineEnd, '\0');
}

// Puts a newline after the longest part of the line that is still read. There is room for it, since
// nothing after it is read any more.
void LineInput::CutTooLong(const char* start) {
  isTooLong = true;
  theTagParser.logMessage("Line to long");
  theTagParser.gaveUp = true;
  char* forced = next + (start - next) + longestLine + 1;
  *forced = '\n';
  lineEnd = forced + 1;
  end = std::max(end, forced + 1);
}

void LineInput::Fill() {
  const size_t rest = static_cast<size_t>(end - next);
  if (static_cast<size_t>(buffer.data() + buffer.size() - end) < cChunk + cSpare) {
    std::memmove(buffer.data(), next, rest);
    if (rest + cChunk + cSpare > buffer.size()) buffer.resize(2 * buffer.size());
    next = buffer.data();
    end = next + rest;
  }
  const size_t got = reader->read(end, cChunk);
  isReaderDone = got == 0;
  char* newEnd = NormalizeLineEnds(end, end + got, endsInReturn, readPlace, tails);
  readPlace += static_cast<size_t>(newEnd - end);
  hasZeros = hasZeros || Find(end, newEnd, '\0') != newEnd;
  end = newEnd;
}

void LineInput::ScanInclude(const char* lastByte) {
  branches.Take({cursor, static_cast<size_t>(lastByte - cursor)});
  includeScan.Start();
  for (const char* at = cursor + 1; at < lastByte && includeScan.IsRunning(); ++at)
    if (includeScan.Feed(*at))
      store->addInclude(includeScan.Found().name, includeScan.Found().quoted,
                        branches.IsElsewhere());
}

}  // namespace zendry
