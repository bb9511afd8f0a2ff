#pragma once

namespace mavro {

// Called with the message of a broken precondition before the process ends, so that unsaved text
// can be written to the rescue folder. It must not throw and should allocate as little as possible.
using LastWords = void (*)();

// Registers a function to run once when a precondition breaks. At most eight are kept; they run in
// the order of registration, each at most once even if it fails itself.
void AddLastWords(LastWords hook);

// Prints "FILE:LINE: assertion failed: EXPRESSION" to standard error, runs the last words and ends
// the process with SIGABRT, in every build type. FILE is printed from "libs/" or "src/" on.
[[noreturn]] void AssertionFailed(const char* expression, const char* file, int line);

}  // namespace mavro

// Guards a precondition. The message is the expression itself.
#define MAVRO_ASSERT(expression) \
  ((expression) ? static_cast<void>(0) : ::mavro::AssertionFailed(#expression, __FILE__, __LINE__))

// The same with a fixed text, for messages that other programs or tests compare with.
#define MAVRO_ASSERT_AS(expression, message) \
  ((expression) ? static_cast<void>(0) : ::mavro::AssertionFailed(message, __FILE__, __LINE__))
