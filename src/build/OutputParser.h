#pragma once

#include <string>
#include <string_view>

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
  std::string pendingMessage;  // plain notes to be put before the next row's text
};

// A line of gcc or g++: "file:line: text" or "file:line:column: text". Errors, warnings and notes
// at a new place give a row; a further note at the last row's place waits; a line indented by two
// blanks belongs to the last row. The severity is the first letter of the text.
LineMeaning ReadCompileLine(CompileLines& state, std::string_view line);

// A line of the linker. Only an undefined reference counts as an error.
LineMeaning ReadLinkLine(std::string_view line);

// A line of the archiver: a row if it reports an error. It is never counted.
LineMeaning ReadArchiveLine(std::string_view line);

}  // namespace zendry
