#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

// The texts of the commands that are written to gdb, one line each, without the line end. What the
// user has typed is taken into a command only if gdb reads it as part of that command.

namespace zendry {

// What "step" and its kin do; the numbers are those of Step.
enum class GdbStep { cInto = 0, cOver = 1, cOut = 2, cInstruction = 3 };

// The command line that starts gdb on a program. No script beside the program or in the current
// folder is run, whatever the user's gdbinit allows; the printers of the system's libraries are.
std::string GdbStartLine(std::string_view gdb, std::string_view program);

// The commands to be sent at the first prompt, when gdb has read the user's gdbinit, so that none
// of its lines can silence us. Some of them are unknown to an older gdb: its errors mean nothing.
std::span<const std::string_view> GdbSettings();

// True if a text can be part of a command: it isn't blank and has no line end and no NUL.
bool IsGdbText(std::string_view text);

// "FILE:LINE" as gdb reads a place, quoted if need be; the line counts from 1. Nothing for a name
// that gdb can't be given so: it has a line end, or quotes beside characters that need quotes.
std::optional<std::string> GdbPlaceText(std::string_view file, int line);

// "break FILE:LINE if CONDITION", or "tbreak ..."; an empty condition is none. A name that
// GdbPlaceText can't give is handed over by gdb's Python; it has no condition then: send
// GdbCondition when the number is known. Nothing for a name or a condition with a line end.
std::optional<std::string> GdbBreak(std::string_view file, int line, std::string_view condition);
std::optional<std::string> GdbTemporaryBreak(std::string_view file, int line);

// "clear FILE:LINE". Nothing for a name that GdbPlaceText can't give: use GdbDelete.
std::optional<std::string> GdbClear(std::string_view file, int line);
std::string GdbDelete(int number);

// "condition N EXPRESSION"; an empty expression removes the condition. Nothing for a line end.
std::optional<std::string> GdbCondition(int number, std::string_view expression);

// "until FILE:LINE": runs to the line, at most to the end of the function.
std::optional<std::string> GdbUntil(std::string_view file, int line);

std::string_view GdbStepCommand(GdbStep kind);
std::string GdbSelectFrame(int level);

// "display EXPRESSION" and "print EXPRESSION". Nothing for a text that isn't one (IsGdbText).
std::optional<std::string> GdbDisplayCommand(std::string_view expression);
std::optional<std::string> GdbPrint(std::string_view expression);
std::string GdbUndisplay(int number);

// The commands that give the program its parameters, which are split as for any program that is
// started here. Only where they contain redirections ("<", ">", "|", "&", ";") are they handed to
// the shell as they are. Nothing for a line end.
std::optional<std::vector<std::string>> GdbArguments(std::string_view parameters);

// "set inferior-tty PATH": the program reads and writes there and not in gdb's stream.
std::optional<std::string> GdbTerminal(std::string_view path);

}  // namespace zendry
