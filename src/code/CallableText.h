#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "code/CallTip.h"
#include "code/CodeTokens.h"

namespace zendry {

// Reads from the tokens of a text what can be called, as it is declared there.

// The type before the function whose name is the token at `name`; the one after "->" if that is
// given. Empty for a constructor. Words that aren't part of the type are left out.
std::string ResultBefore(const CodeTokens& tokens, int name, StepBudget& budget);
// True for the function with its name at this token if it is deleted.
bool IsDeleted(const CodeTokens& tokens, int name);
// What is declared with its name at this token, if that can be called: a pointer to a function, a
// lambda, a "std::function", or a name for such a type. Nothing for functions.
std::optional<Callable> CallableAt(const CodeTokens& tokens, int name, StepBudget& budget);
// The macro `name` with arguments that a text defines in one of its first lines.
std::optional<Callable> MacroIn(std::string_view text, std::string_view name);
// The types of the parameters in a list with its brackets, without names and default values: the
// same for a prototype and the function's definition.
std::string ParameterTypes(std::string_view parameters);

}  // namespace zendry
