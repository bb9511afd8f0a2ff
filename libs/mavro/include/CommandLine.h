#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace mavro {

// Splits a command line into arguments by the quoting rules of the C runtime: blanks and tabs
// separate, double quotes group, 2n backslashes before a quote mean n backslashes, 2n+1 mean n
// backslashes and a literal quote. Every text can be split; an unclosed quote extends to the end.
std::vector<std::string> SplitCommandLine(std::string_view line);

// Quotes one argument so that SplitCommandLine returns the original. An argument that needs no
// quotes is returned unchanged.
std::string QuoteArgument(std::string_view argument);

}  // namespace mavro
