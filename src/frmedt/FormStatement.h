#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace zendry {

// A line without the blanks that mean nothing: none at its ends, one at the most between two words.
// Literals stay as they are, and so do comments but for the blanks around them.
std::string PlainStatement(std::string_view line);

// True if the brackets of a text are closed and its last statement is ended. Comments alone are,
// too.
bool IsWholeStatement(std::string_view text);

// A declaration of a region: a class and the names of its controls.
struct FormDeclaration {
  std::string className;
  std::vector<std::string> names;
};
// The declaration that a line is; without names if it is none.
FormDeclaration ReadDeclaration(std::string_view line);

}  // namespace zendry
