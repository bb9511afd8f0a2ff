#include "code/OpenCalls.h"

#include <algorithm>

namespace zendry {

namespace {

// Words before parentheses that hold no arguments.
constexpr std::string_view cNoCallees =
    "if while for switch return sizeof catch throw case co_return co_await co_yield and or not "
    "alignas alignof decltype defined delete do else in noexcept requires static_assert typeid new "
    "__attribute__ __declspec asm operator const override final mutable _Static_assert _Alignof";
// Words before a brace that begins a block.
constexpr std::string_view cBlockWords =
    "else do try const noexcept override final mutable extern namespace class struct union enum";
// What a list of initial values follows.
constexpr std::string_view cBeforeValues = "= , ( { [ return : ? co_return co_yield";
constexpr std::string_view cClassWords = "class struct union enum namespace";
constexpr std::string_view cScopeWords = "class struct union namespace extern";
constexpr std::string_view cEndsHead = "; { } ( ) = return new";
constexpr int cLongestHead = 64;  // tokens of a class's head

// True if the name before this brace is that of the class or namespace whose block begins here, or
// the type that a lambda returns.
bool IsHead(const CodeTokens& tokens, int brace) {
  for (int at = brace - 1; at >= 0 && at > brace - cLongestHead; --at) {
    if (tokens.IsOneOf(at, cClassWords) || tokens.Is(at, "->")) return true;
    if (tokens.IsOneOf(at, cEndsHead)) return false;
  }
  return false;
}

enum class Bracket { cCall, cPassed, cBlock };

Bracket KindOfBrace(const CodeTokens& tokens, int at) {
  const int before = at - 1;
  if (tokens.IsOneOf(before, cBeforeValues)) return Bracket::cPassed;
  const bool isName = tokens.IsWord(before) && !tokens.IsOneOf(before, cBlockWords);
  const bool isTemplate = tokens.Is(before, ">") && tokens.AngleStart(before) > 0;
  if ((isName || isTemplate) && !IsHead(tokens, at)) return Bracket::cCall;
  return Bracket::cBlock;
}

Bracket KindOf(const CodeTokens& tokens, int at) {
  if (tokens.Is(at, "[")) return Bracket::cPassed;
  if (tokens.Is(at, "{")) return KindOfBrace(tokens, at);
  const int before = at - 1;
  const bool isCallee = (tokens.IsWord(before) && !tokens.IsOneOf(before, cNoCallees)) ||
                        (tokens.IsOneOf(before, ") ]") && tokens.IsClosing(before)) ||
                        (tokens.Is(before, ">") && tokens.AngleStart(before) > 0);
  return isCallee ? Bracket::cCall : Bracket::cPassed;
}

// Counts the arguments after the bracket.
OpenCall CountArguments(const CodeTokens& tokens, int bracket, StepBudget& budget) {
  OpenCall call{bracket};
  const int count = tokens.Count();
  for (int at = bracket + 1; at < count && budget.Take(); ++at) {
    call.arguments = std::max(call.arguments, call.argument + 1);
    if (tokens.IsOpening(at)) {
      at = tokens.Partner(at);
    } else if (tokens.Is(at, "<")) {
      // Template arguments; otherwise something is less than something.
      const int close = tokens.AngleEnd(at);
      if (close > at && tokens.IsOneOf(close + 1, "( { ::")) at = close;
    } else if (tokens.IsOneOf(at, "( [ {")) {
      break;  // the caret is in here
    } else if (tokens.Is(at, ",")) {
      ++call.argument;
      call.arguments = call.argument + 1;
    }
  }
  return call;
}

// True if the block that begins here holds declarations.
bool HoldsDeclarations(const CodeTokens& tokens, int brace) {
  for (int at = brace - 1; at >= 0 && at > brace - cLongestHead; --at) {
    if (tokens.IsOneOf(at, cScopeWords)) return true;
    if (tokens.IsOneOf(at, cEndsHead)) return false;
  }
  return false;
}

}  // namespace

bool IsInFunction(const CodeTokens& tokens, int at, StepBudget& budget) {
  for (--at; at >= 0 && budget.Take(); --at) {
    if (tokens.IsClosing(at))
      at = tokens.Partner(at);
    else if (tokens.Is(at, "{") && !tokens.IsOneOf(at - 1, "= ,"))
      return !HoldsDeclarations(tokens, at);
  }
  return false;
}

std::vector<OpenCall> OpenCalls(const CodeTokens& tokens, StepBudget& budget) {
  std::vector<OpenCall> calls;
  for (int at = tokens.Count() - 1; at >= 0 && budget.Take(); --at) {
    if (tokens.IsClosing(at)) {
      at = tokens.Partner(at);
      continue;
    }
    if (tokens.Is(at, ";") || tokens.Is(at, "}")) break;
    if (!tokens.IsOneOf(at, "( [ {")) continue;
    const Bracket kind = KindOf(tokens, at);
    if (kind == Bracket::cBlock) break;
    if (kind == Bracket::cCall) calls.push_back(CountArguments(tokens, at, budget));
  }
  return calls;
}

}  // namespace zendry
