#pragma once

#include <string>
#include <string_view>

#include "debug/GdbListener.h"

// Sentences for the status line, from what gdb has said.

namespace zendry {

// Why the program has stopped: "Stopped at breakpoint 2 in main", "The program has received
// SIGSEGV: Segmentation fault". Names the thread where gdb does.
std::string StopWords(const GdbStop& stop);

// "The program has ended with exit code 3", or by which signal.
std::string EndWords(const GdbEnd& end);

// The name of the function that a frame's text begins with: "outer" of "#1  0x1151 in outer (k=1)".
std::string FunctionOf(const std::string& frame);

// True for a line that gdb prints in every session, whatever happens in the program: what it reads,
// threads that come and go, "Continuing.".
bool IsRoutine(std::string_view line);

}  // namespace zendry
