#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "base/Shell.h"

namespace zendry {

// The meaning of one line of a tool for the error list. This only reads: callers show and count.
struct LineMeaning {
  enum Kind { cNothing, cNewRow, cAppendToLastRow };
  enum Severity { cPlain, cWarning, cError };

  Kind kind = cNothing;
  // For the counters; also set for a line that makes no row yet.
  Severity severity = cPlain;
  ErrorRow row;  // for a new row; for an appendix only its text
};

// The state that the reader of compiler lines keeps between two lines.
struct CompileLines {
  std::string lastErrorFile;
  int lastErrorLine = 0;
  std::string pendingMessage;  // plain notes to be put after the next row's text
  // Names of sources that the form "file:line:" alone can't tell: with a colon, or blanks in front.
  std::vector<std::string> unusualNames;
};

// A place that a line names.
struct LinePlace {
  std::string_view file;  // empty when there is none
  int line = 0;
};

// A line of gcc or g++: "file:line: text" or "file:line:column: text". Errors, warnings and notes
// at a new place give a row; a further note at the last row's place waits for the next row, and so
// do the lines "from file:line:" of a chain of includes; any other line indented by two blanks
// belongs to the last row. The severity is the first letter of the text.
LineMeaning ReadCompileLine(CompileLines& state, std::string_view line);

// The notes that still wait when the tool has ended, with a blank before them; they belong to the
// last row.
std::string TakeHeldNotes(CompileLines& state);

// True for a line that the linker prints within a compiler's run: an undefined reference, or a line
// that begins with the linker's name.
bool IsLinkerLine(std::string_view line);

// A line of the linker. Only an undefined reference counts as an error.
LineMeaning ReadLinkLine(std::string_view line);

// The first "file:line:" in a line of the linker, which may begin with the linker's or an object's
// name.
LinePlace PlaceInLinkLine(std::string_view line);

// The source before an offset, as in "ld: a.c:(.text+0x9): ...": all that the linker knows without
// debug information. Empty when there is none.
std::string_view SourceInLinkLine(std::string_view line);

// A line of the archiver: a row if it reports an error. It is never counted.
LineMeaning ReadArchiveLine(std::string_view line);

}  // namespace zendry
