#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace mavro {

// Splits a command line into arguments by the quoting rules of the C runtime: blanks and tabs
// separate, double quotes group, 2n backslashes before a quote stand for n, 2n+1 for n and a
// literal quote. Every text splits; an unclosed quote runs to the end.
std::vector<std::string> SplitCommandLine(std::string_view line);

// Writes one argument so that SplitCommandLine gives it back. An argument that needs no quotes
// comes back unchanged.
std::string QuoteArgument(std::string_view argument);

}  // namespace mavro
