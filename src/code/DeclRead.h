#pragma once

#include <optional>
#include <string_view>

#include "code/CodeTokens.h"
#include "code/TypeText.h"

namespace zendry {

// A declaration of a name, as it is in the text.
struct CodeDecl {
  TypeText type;      // as written, with the pointers and "[]" of this name; "auto" stays so
  int name = 0;       // the token that is declared
  int begin = 0;      // the token where the type begins
  int initBegin = 0;  // tokens of the initial value; equal without one
  int initEnd = 0;
  bool isRange = false;  // the initial value is the range of a "for"
  bool isAlias = false;  // of a type: by "using" or "typedef"
  int binding = -1;      // the position in "auto [a, b]"; -1 for a single name
};

// The declaration of the name at this token, if it is declared there.
std::optional<CodeDecl> DeclarationAt(const CodeTokens& tokens, int name, StepBudget& budget);

// The first declaration of `name` when going back from the token `before` and out of the blocks
// around it. Blocks that have been closed are skipped, with the parameters before them.
std::optional<CodeDecl> FindDeclaration(const CodeTokens& tokens, std::string_view name, int before,
                                        StepBudget& budget);

// The first token of the statement, parameter list or list of captures around a token.
int StatementStart(const CodeTokens& tokens, int index, StepBudget& budget);
// The first token of the type that ends directly before the token `end`; -1 without one.
int TypeStart(const CodeTokens& tokens, int end);
// True for the name of "struct Name {" and "enum class Name : int {".
bool IsTypeHead(const CodeTokens& tokens, int name);
// True for the name of "template <class Name".
bool IsTemplateParameter(const CodeTokens& tokens, int name);
// The token before the block that ends with this "}", and before the parameters of its function.
int BeforeBlock(const CodeTokens& tokens, int close);

// The names of the template parameters of the class whose name is the token at `name`.
std::vector<std::string> TemplateParameters(const CodeTokens& tokens, int name);

}  // namespace zendry
