#pragma once

#include <optional>
#include <string>
#include <vector>

#include "code/CodeTokens.h"
#include "code/TypeText.h"

namespace zendry {

// One step of the evaluation of an expression, from its head on.
struct ExprStep {
  enum class Kind {
    cName,     // head: a name with its scopes and template arguments, in `type`
    cThis,     // head
    cValue,    // head: a value of `type`, by a cast or by "new"
    cMember,   // ".name"
    cArrow,    // "->name"
    cCall,     // "(...)"; the arguments are between `begin` and `end`
    cIndex,    // "[...]"
    cDeref,    // "*"
    cAddress,  // "&"
  };

  Kind kind = Kind::cName;
  TypeText type;
  std::string name;  // of a member
  int begin = 0;     // tokens of a call's arguments, and the place of a name
  int end = 0;
};

using Expr = std::vector<ExprStep>;

// The first token of the operand that ends before the token `end` and that a member operator there
// would work on: a name with its scopes, calls, indexes and member operators, or an expression in
// parentheses. -1 when there is none.
int OperandStart(const CodeTokens& tokens, int end, StepBudget& budget);

// The expression that the tokens from `begin` to `end` form. For "c ? a : b" the first value
// counts. Nothing for an expression of another form, such as "a + b".
std::optional<Expr> ReadExpr(const CodeTokens& tokens, int begin, int end, StepBudget& budget);

}  // namespace zendry
