#pragma once

#include <optional>
#include <string_view>

#include "code/CodeTokens.h"
#include "code/TypeText.h"

namespace zendry {

// A declaration of a name as it stands in the text.
struct CodeDecl {
  TypeText type;      // as written, with the pointers and "[]" of this name; "auto" stays so
  int name = 0;       // the token that is declared
  int initBegin = 0;  // tokens of what the name begins with; equal without any
  int initEnd = 0;
  bool isRange = false;  // what it begins with is the range of a "for"
  bool isAlias = false;  // of a type: by "using" or "typedef"
  int binding = -1;      // the place in "auto [a, b]"; -1 for a name of its own
};

// The declaration of the name at this token, if it is declared there.
std::optional<CodeDecl> DeclarationAt(const CodeTokens& tokens, int name, StepBudget& budget);

// The declaration of `name` that is met first going back from the token `before`, out of the blocks
// around it: what lies in a block that has been closed isn't seen, nor are the parameters before
// such a block.
std::optional<CodeDecl> FindDeclaration(const CodeTokens& tokens, std::string_view name, int before,
                                        StepBudget& budget);

// The names of the template parameters of the class whose name is the token at `name`.
std::vector<std::string> TemplateParameters(const CodeTokens& tokens, int name);

}  // namespace zendry
