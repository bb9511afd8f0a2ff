#pragma once

#include <vector>

#include "code/CodeTokens.h"

namespace zendry {

// A call, or a construction in braces, whose arguments are still being written.
struct OpenCall {
  int bracket = 0;    // the token of its "(" or "{"
  int argument = 0;   // the argument that the tokens end in, from 0
  int arguments = 0;  // the number of arguments that have been begun

  friend bool operator==(const OpenCall&, const OpenCall&) = default;
};

// The calls that the end of the tokens is in, the innermost first. The search ends at the beginning
// of a block, at a ";", and where the budget ends. Brackets that hold no arguments, such as those
// of a condition, an index or a list of initial values, are passed over.
std::vector<OpenCall> OpenCalls(const CodeTokens& tokens, StepBudget& budget);

// True if the token at `at` is in the body of a function, false among the declarations of a file,
// a namespace or a class.
bool IsInFunction(const CodeTokens& tokens, int at, StepBudget& budget);

}  // namespace zendry
