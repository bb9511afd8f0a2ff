#include "build/OutputParser.h"

#include <utility>

#include "base/ParseInt.h"

namespace zendry {

namespace {

constexpr size_t cNone = std::string_view::npos;
constexpr size_t cMaxLineDigits = 5;
constexpr size_t cDriveLength = 2;  // a drive's colon is before this position

bool IsBlank(char c) {
  return c == ' ' || (c >= '\t' && c <= '\r');
}

bool IsDigit(char c) {
  return c >= '0' && c <= '9';
}

// The place before a compiler's message, and the message.
struct Place {
  std::string_view file;
  int line = 0;
  std::string_view text;  // empty when the line doesn't have this form
};

// Removes the column between line number and text, if there is one.
std::string_view WithoutColumn(std::string_view text) {
  size_t end = 0;
  while (end < text.size() && IsDigit(text[end])) ++end;
  const bool isColumn = end > 0 && end < text.size() && text[end] == ':';
  return isColumn ? text.substr(end + 1) : text;
}

Place ReadPlace(std::string_view line) {
  const size_t fileEnd = line.find(':', cDriveLength);
  if (fileEnd == cNone) return {};
  const std::string_view file = line.substr(0, fileEnd);
  line.remove_prefix(fileEnd + 1);
  const size_t digits = line.find(':');
  if (digits == cNone || digits < 1 || digits > cMaxLineDigits) return {};
  const int number = ParseInt(line.substr(0, digits));
  const std::string_view rest = WithoutColumn(line.substr(digits + 1));
  // One character is skipped unread: the blank after the colon.
  return {file, number, rest.empty() ? rest : rest.substr(1)};
}

LineMeaning::Severity SeverityOf(std::string_view text) {
  constexpr size_t cShortestWord = 4;
  if (text.size() < cShortestWord) return LineMeaning::cPlain;
  switch (text[0]) {
    case 'e':
    case 'b':
      return LineMeaning::cError;
    case 'w':
    case 'o':
      return LineMeaning::cWarning;
    default:
      return LineMeaning::cPlain;
  }
}

LineMeaning NewRow(std::string_view file, std::string text) {
  return {LineMeaning::cNewRow, LineMeaning::cPlain, {std::string(file), 0, std::move(text)}};
}

}  // namespace

LineMeaning ReadCompileLine(CompileLines& state, std::string_view line) {
  LineMeaning meaning;
  if (line.size() > 1 && IsBlank(line[0]) && IsBlank(line[1])) {
    meaning.kind = LineMeaning::cAppendToLastRow;
    meaning.row.text = line;
    return meaning;
  }
  const Place place = ReadPlace(line);
  if (place.text.empty()) return meaning;
  meaning.severity = SeverityOf(place.text);
  state.pendingMessage += place.text;
  const bool samePlace = place.line == state.lastErrorLine && place.file == state.lastErrorFile;
  if (samePlace && meaning.severity == LineMeaning::cPlain) return meaning;
  state.lastErrorLine = place.line;
  state.lastErrorFile = place.file;
  meaning.kind = LineMeaning::cNewRow;
  meaning.row = {state.lastErrorFile, place.line, std::move(state.pendingMessage)};
  state.pendingMessage.clear();
  return meaning;
}

LineMeaning ReadLinkLine(std::string_view line) {
  const size_t first = line.find(':');
  if (first == cNone) return {};
  const std::string_view rest = line.substr(first + 1);
  if (rest.find("undefined reference") == cNone) return NewRow("LINKER", std::string(line));
  LineMeaning meaning = NewRow(rest.substr(0, rest.find(':')), "LINKER: " + std::string(rest));
  meaning.severity = LineMeaning::cError;
  return meaning;
}

LineMeaning ReadArchiveLine(std::string_view line) {
  if (line.find("error") == cNone) return {};
  return NewRow("AR: ", std::string(line));
}

}  // namespace zendry
