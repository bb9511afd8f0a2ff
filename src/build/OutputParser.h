#pragma once

#include <string>
#include <string_view>

#include "base/Shell.h"

namespace zendry {

// What one line of a tool means for the error list. Nothing here shows or counts anything.
struct LineMeaning {
  enum Kind { cNothing, cNewRow, cAppendToLastRow };
  enum Severity { cPlain, cWarning, cError };

  Kind kind = cNothing;
  // What the counters take, also of a line that makes no row yet.
  Severity severity = cPlain;
  ErrorRow row;  // of a new row; for an appendix only its text
};

// What the reader of compiler lines remembers from one line to the next.
struct CompileLines {
  std::string lastErrorFile;
  int lastErrorLine = 0;
  std::string pendingMessage;  // plain notes that wait to be put in front of the next row
};

// A line of gcc or g++: "file:line: text" or "file:line:column: text". Errors, warnings and notes
// at a new place give a row; a further note at the last row's place waits; a line indented by two
// blanks belongs to the last row. The severity is the first letter of the text.
LineMeaning ReadCompileLine(CompileLines& state, std::string_view line);

// A line of the linker. Only an undefined reference counts as an error.
LineMeaning ReadLinkLine(std::string_view line);

// A line of the archiver: a row when it speaks of an error. It is never counted.
LineMeaning ReadArchiveLine(std::string_view line);

}  // namespace zendry
