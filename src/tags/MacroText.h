#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace zendry {

// The definition of a macro, as it is written.
struct MacroText {
  bool takesArguments = false;
  std::vector<std::string> parameters;
  bool isVariadic = false;  // the last parameter stands for all arguments that are left
  std::string body;         // its lines joined, at most 8 KB of them
};

constexpr size_t cLongestExpansion = 0x10000;  // bytes

// The macro of that name which a text defines on a line; nothing without one there. Line numbers
// begin with 1.
std::optional<MacroText> ReadMacro(std::string_view text, int line, std::string_view name);

// The body of a macro with these texts in place of its parameters. Nothing if it takes another
// number of arguments, or if that is longer than cLongestExpansion. A parameter after a single "#"
// becomes an empty string literal.
std::optional<std::string> Expand(const MacroText& macro,
                                  const std::vector<std::string>& arguments);

}  // namespace zendry
