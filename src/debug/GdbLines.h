#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "debug/GdbListener.h"

// What single lines of gdb mean. Lines come without their ends.

namespace zendry {

// The number in an annotation such as "exited 3"; 0 without one.
int AnnotationNumber(std::string_view annotation);

// The place in an annotation "source FILE:LINE:CHARACTER:MIDDLE:ADDRESS", the file's path tidied.
// FILE may contain colons.
std::optional<GdbPlace> ReadSource(std::string_view annotation);

// "Breakpoint N at ADDRESS: file F, line L.", "Breakpoint N at ADDRESS: F. (K locations)" or
// "Breakpoint N (F:L) pending."; also with "Temporary " before it.
std::optional<GdbBreakpoint> ReadBreakpoint(std::string_view line);

// The frame in "FUNCTION (ARGS) at F:L", whatever stands before the function. Nothing if the line
// has no place at its end.
std::optional<GdbFrame> ReadFrame(std::string_view line);

// True if nothing that follows can belong to this line of a call stack. Only asked of lines without
// a place: these end after the arguments, or after the library that has the function.
bool IsFrameWithoutPlace(std::string_view line);

// The thread's label in `Thread 2 "name" hit ...` or `... received signal ...`, which is taken off
// the line, so that it reads as in a program with one thread. Empty, and the line as it was, if it
// names none.
std::string TakeThread(std::string_view& line);

// N of "Breakpoint N, " and "Temporary breakpoint N, ", with which the line of a stop begins.
std::optional<int> ReadHit(std::string_view line);

// The name and the text of a signal.
struct GdbSignal {
  std::string name;
  std::string text;
};

// "Program received signal NAME, TEXT." or "Program terminated with signal NAME, TEXT.".
std::optional<GdbSignal> ReadSignal(std::string_view line);

// The number in "N: " at the beginning of a display's line, which is taken off.
std::optional<int> TakeDisplayNumber(std::string_view& line);

// The value after "$N = ". Nothing if the line isn't a result.
std::optional<std::string_view> ReadResult(std::string_view line);

}  // namespace zendry
