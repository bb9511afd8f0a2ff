#pragma once

#include <string_view>
#include <vector>

#include "code/CompletionList.h"

namespace zendry {

class CodeTokens;

// The names that the functions around the end of a text declare, the nearest first: variables of
// the blocks that are still open, parameters, captures with a value, names of structured bindings,
// aliases of types and classes.
std::vector<CompletionRow> LocalNames(const CodeTokens& tokens);
// The token where the nearest of them with that name is declared; else that of a template parameter
// of the nearest template before the end. -1 without one.
int LocalDeclaration(const CodeTokens& tokens, std::string_view name);
// The token of a parameter of the templates whose declarations the tokens end in; -1 without one.
int HeadParameter(const CodeTokens& tokens, std::string_view name);

}  // namespace zendry
