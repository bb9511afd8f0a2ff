#pragma once

#include <string>

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

// True if a frame's text shows that the program ends because nobody catches an exception.
bool IsUncaughtException(const std::string& frame);

}  // namespace zendry
