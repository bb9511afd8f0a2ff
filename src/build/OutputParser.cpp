#include "build/OutputParser.h"

#include <algorithm>
#include <utility>

#include "base/ParseInt.h"

namespace zendry {

namespace {

constexpr size_t cNone = std::string_view::npos;
constexpr size_t cMaxLineDigits = 5;
constexpr size_t cMaxColumnDigits = 6;
constexpr size_t cLongestHeld = 1000;
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
  int column = 0;         // 0 without one
  std::string_view text;  // empty when the line doesn't have this form
};

// Takes the column between line number and text off, if there is one; 0 without one.
int TakeColumn(std::string_view& text) {
  size_t end = 0;
  while (end < text.size() && IsDigit(text[end])) ++end;
  const bool isColumn = end > 0 && end < text.size() && text[end] == ':';
  if (!isColumn) return 0;
  const int column = end <= cMaxColumnDigits ? ParseInt(text.substr(0, end)) : 0;
  text.remove_prefix(end + 1);
  return column;
}

bool IsNameOf(std::string_view line, const std::string& file) {
  return line.size() > file.size() && line[file.size()] == ':' && line.starts_with(file);
}

// Where the name at the start of a line ends: at the first colon, unless a longer name is known.
size_t EndOfName(const CompileLines& state, std::string_view line) {
  for (const std::string& name : state.unusualNames)
    if (IsNameOf(line, name)) return name.size();
  return line.find(':', cDriveLength);
}

bool IsContinuation(const CompileLines& state, std::string_view line) {
  return line.size() > 1 && IsBlank(line[0]) && IsBlank(line[1]) &&
         std::none_of(state.unusualNames.begin(), state.unusualNames.end(),
                      [line](const std::string& name) { return IsNameOf(line, name); });
}

// "                 from a.cpp:3:" follows "In file included from".
bool IsIncludeChain(std::string_view line) {
  line.remove_prefix(std::min(line.size(), line.find_first_not_of(" \t")));
  return line.starts_with("from ") && (line.ends_with(':') || line.ends_with(','));
}

// A chain of 200 includes would make a row that nobody can read.
void Hold(CompileLines& state, std::string_view note) {
  if (state.pendingMessage.size() > cLongestHeld) return;
  note.remove_prefix(std::min(note.size(), note.find_first_not_of(" \t")));
  if (!state.pendingMessage.empty()) state.pendingMessage += ' ';
  state.pendingMessage += note;
}

Place ReadPlace(const CompileLines& state, std::string_view line) {
  const size_t fileEnd = EndOfName(state, line);
  if (fileEnd == cNone) return {};
  const std::string_view file = line.substr(0, fileEnd);
  line.remove_prefix(fileEnd + 1);
  const size_t digits = line.find(':');
  if (digits == cNone || digits < 1 || digits > cMaxLineDigits) return {};
  const int number = ParseInt(line.substr(0, digits));
  std::string_view rest = line.substr(digits + 1);
  const int column = TakeColumn(rest);
  // One character is skipped unread: the blank after the colon.
  return {file, number, column, rest.empty() ? rest : rest.substr(1)};
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
  if (IsContinuation(state, line)) {
    if (IsIncludeChain(line)) {
      Hold(state, line);
      return meaning;
    }
    meaning.kind = LineMeaning::cAppendToLastRow;
    meaning.row.text = line;
    return meaning;
  }
  const Place place = ReadPlace(state, line);
  if (place.text.empty()) return meaning;
  meaning.severity = SeverityOf(place.text);
  const bool samePlace = place.line == state.lastErrorLine && place.file == state.lastErrorFile;
  if (samePlace && meaning.severity == LineMeaning::cPlain) {
    Hold(state, place.text);
    return meaning;
  }
  state.lastErrorLine = place.line;
  state.lastErrorFile = place.file;
  meaning.kind = LineMeaning::cNewRow;
  meaning.row = {state.lastErrorFile, place.line, std::string(place.text) + TakeHeldNotes(state),
                 place.column};
  return meaning;
}

std::string TakeHeldNotes(CompileLines& state) {
  const std::string notes = std::exchange(state.pendingMessage, "");
  return notes.empty() ? "" : " " + notes;
}

bool IsLinkerLine(std::string_view line) {
  if (line.find(": undefined reference to ") != cNone) return true;
  const size_t nameEnd = line.find(": ");
  if (nameEnd == cNone) return false;
  const std::string_view name = line.substr(0, nameEnd);
  return name == "collect2" || name == "ld" || name.ends_with("/ld");
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

LinePlace PlaceInLinkLine(std::string_view line) {
  for (size_t start = 0; start < line.size();) {
    const size_t fileEnd = line.find(':', start);
    if (fileEnd == cNone) break;
    size_t end = fileEnd + 1;
    while (end < line.size() && IsDigit(line[end])) ++end;
    const size_t digits = end - fileEnd - 1;
    const bool isPlace = digits >= 1 && digits <= cMaxLineDigits && end < line.size() &&
                         line[end] == ':' && fileEnd > start;
    if (isPlace)
      return {line.substr(start, fileEnd - start), ParseInt(line.substr(fileEnd + 1, digits))};
    start = line.find_first_not_of(' ', fileEnd + 1);
  }
  return {};
}

std::string_view SourceInLinkLine(std::string_view line) {
  const size_t end = line.find(":(");
  if (end == cNone) return {};
  const std::string_view name = line.substr(0, end);
  const size_t tool = name.rfind(": ");
  return tool == cNone ? name : name.substr(tool + 2);
}

LineMeaning ReadArchiveLine(std::string_view line) {
  if (line.find("error") == cNone) return {};
  return NewRow("AR: ", std::string(line));
}

}  // namespace zendry
