#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "debug/GdbListener.h"

// The exception that has ended a program: where its stack shows it, how gdb is asked for its type
// and text, and the words for the user. The program has been aborted, so nothing of it is called:
// its memory is read. Known for the C++ library of gcc on 64-bit x86; elsewhere the type is
// missing.

namespace zendry {

// An end by std::terminate.
struct Termination {
  std::optional<int> throwLevel;  // the frame that throws; none if there is no exception
};

// Nothing for any other stack. The frames are those of a stop, the innermost first.
std::optional<Termination> FindTermination(const std::vector<GdbFrame>& stack);

// To be sent in this order. Errors mean that something is unknown.
struct ThrownCommands {
  std::vector<std::string> preparations;
  std::string type;  // prints what ThrownType reads
  std::string text;  // prints what GdbQuotedText reads: what() of the library's own exceptions
};
ThrownCommands AskForThrown(int level);

// The text between the quotes of a value such as `0x5555 <name> "text"`; empty without one.
std::string GdbQuotedText(std::string_view value);
// The type as it is written in a program: "std::runtime_error" of `0x7fff "St13runtime_error"`.
std::string ThrownType(std::string_view value);

// "The program has thrown an exception that nobody catches: TYPE: TEXT", as far as it is known.
std::string TerminationWords(const Termination& termination, const std::string& type,
                             const std::string& text);

}  // namespace zendry
