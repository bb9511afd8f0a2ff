#pragma once

#include <vector>

#include "code/CompletionList.h"

namespace zendry {

class CodeTokens;

// The names that the functions around the end of a text declare, the nearest first: variables of
// the blocks that are still open, parameters, captures with a value, names of structured bindings
// and aliases of types.
std::vector<CompletionRow> LocalNames(const CodeTokens& tokens);

}  // namespace zendry
