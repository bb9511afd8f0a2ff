#include "code/ExprRead.h"

#include "code/DeclScan.h"

namespace zendry {

namespace {

using Kind = ExprStep::Kind;

constexpr int cMostDepth = 24;  // of expressions within each other
constexpr std::string_view cCasts = "static_cast dynamic_cast const_cast reinterpret_cast";
// Words before parentheses that don't call anything.
constexpr std::string_view cNoCalls =
    "if while for switch return sizeof catch throw case co_return co_await co_yield and or not";

// The end of the operand before a bracket that closes at `at`; -1 when the bracket follows no
// operand.
int BeforeGroup(const CodeTokens& tokens, int at) {
  if (!tokens.IsClosing(at)) return -1;
  const int before = tokens.Partner(at) - 1;
  const bool isOperand =
      (tokens.IsWord(before) && !tokens.IsOneOf(before, cNoCalls)) ||
      (tokens.Is(before, ">") && tokens.AngleStart(before) >= 0) ||
      (tokens.IsOneOf(before, ") ]") && tokens.IsClosing(before) && !tokens.Is(at, "}"));
  return isOperand ? before : -1;
}

class Reader {
 public:
  Reader(const CodeTokens& theTokens, StepBudget& theBudget)
      : tokens(theTokens), budget(theBudget) {}

  // Reads from `at` up to `end` and leaves `at` after the expression.
  bool Unary(int end) {
    if (++depth > cMostDepth || at >= end || !budget.Take()) return false;
    const bool isRead = UnaryWithin(end);
    --depth;
    return isRead;
  }
  // The expression between two places as a whole.
  bool Whole(int begin, int end) {
    const int choice = FindChoice(begin, end);
    at = choice < 0 ? begin : choice + 1;
    if (!Unary(end)) return false;
    return choice < 0 ? at == end : tokens.Is(at, ":");
  }

  Expr steps;

 private:
  void Put(Kind kind, TypeText type = {}) { steps.push_back({kind, std::move(type), {}, at, at}); }

  bool UnaryWithin(int end) {
    const bool isDeref = tokens.Is(at, "*");
    if (isDeref || tokens.Is(at, "&")) {
      ++at;
      if (!Unary(end)) return false;
      Put(isDeref ? Kind::cDeref : Kind::cAddress);
      return true;
    }
    if (tokens.IsOneOf(at, "++ -- co_await")) {
      ++at;
      return Unary(end);
    }
    if (tokens.Is(at, "new")) return New(end);
    return Primary(end) && Postfix(end);
  }

  // "c ? a : b": the place of the "?".
  int FindChoice(int begin, int end) {
    for (int i = begin; i < end && budget.Take(); ++i) {
      if (tokens.Is(i, "?")) return i;
      if (tokens.IsOpening(i)) i = tokens.Partner(i);
    }
    return -1;
  }

  // A type with its pointers, which ends exactly at `end`.
  std::optional<TypeText> TypeUpTo(int begin, int end) {
    std::optional<TypeText> type = ReadType(tokens, begin);
    if (!type) return std::nullopt;
    type->pointers = ReadPointers(tokens, begin);
    return begin == end ? type : std::nullopt;
  }

  bool New(int end) {
    ++at;
    std::optional<TypeText> type = ReadType(tokens, at);
    if (!type || at > end) return false;
    type->pointers = ReadPointers(tokens, at) + 1;
    Put(Kind::cValue, *type);
    while (at < end && tokens.IsOneOf(at, "( [ {") && tokens.IsOpening(at))
      at = tokens.Partner(at) + 1;
    return at <= end;
  }

  bool Primary(int end) {
    if (tokens.Is(at, "this")) {
      Put(Kind::cThis);
      ++at;
      return true;
    }
    if (tokens.Is(at, "(")) return Parentheses(end);
    if (tokens.IsOneOf(at, cCasts)) return NamedCast(end);
    const int place = at;
    std::optional<TypeText> name = ReadType(tokens, at);
    if (!name || at > end) return false;
    steps.push_back({Kind::cName, std::move(*name), {}, place, at});
    // "Foo{1}" is a value of Foo.
    if (at < end && tokens.Is(at, "{")) return Group(end, Kind::cCall);
    return true;
  }

  // "(Foo*)p" or an expression.
  bool Parentheses(int end) {
    const int close = tokens.Partner(at);
    if (close < 0 || close >= end) return false;
    const int open = at;
    const bool beginsOperand =
        close + 1 < end && (tokens.IsWord(close + 1) || tokens.IsOneOf(close + 1, "( * & 0"));
    if (beginsOperand) {
      if (std::optional<TypeText> type = TypeUpTo(open + 1, close)) {
        at = close + 1;
        Put(Kind::cValue, *type);
        SkipCastOperand(end);
        return true;
      }
    }
    if (++depth > cMostDepth || !Whole(open + 1, close)) return false;
    --depth;
    at = close + 1;
    return true;
  }

  // What a cast is applied to has no part in its type.
  void SkipCastOperand(int end) {
    while (at < end && tokens.IsOneOf(at, "* & ++ -- 0")) ++at;
    while (at < end && budget.Take()) {
      if (tokens.IsOpening(at) && !tokens.Is(at, "{"))
        at = tokens.Partner(at) + 1;
      else if (tokens.IsWord(at) || tokens.IsOneOf(at, ". -> :: ++ --"))
        ++at;
      else
        return;
    }
  }

  bool NamedCast(int end) {
    const int close = tokens.AngleEnd(at + 1);
    if (close < 0 || close >= end) return false;
    const std::optional<TypeText> type = TypeUpTo(at + 2, close);
    at = close + 1;
    if (!type || !tokens.Is(at, "(") || !tokens.IsOpening(at)) return false;
    Put(Kind::cValue, *type);
    at = tokens.Partner(at) + 1;
    return at <= end;
  }

  bool Group(int end, Kind kind) {
    const int close = tokens.Partner(at);
    if (close < at || close >= end) return false;
    steps.push_back({kind, {}, {}, at + 1, close});
    at = close + 1;
    return true;
  }

  bool Postfix(int end) {
    while (at < end && budget.Take()) {
      if (tokens.Is(at, "(")) {
        if (!Group(end, Kind::cCall)) return false;
      } else if (tokens.Is(at, "[")) {
        if (!Group(end, Kind::cIndex)) return false;
      } else if (tokens.IsOneOf(at, ". ->")) {
        if (!Member(end)) return false;
      } else if (tokens.IsOneOf(at, "++ --")) {
        ++at;
      } else {
        return true;
      }
    }
    return at == end;
  }

  bool Member(int end) {
    const Kind kind = tokens.Is(at, ".") ? Kind::cMember : Kind::cArrow;
    ++at;
    if (tokens.Is(at, "template")) ++at;
    if (at >= end || !tokens.IsWord(at)) return false;
    ExprStep step{kind, {}, std::string(tokens.Text(at)), at, at + 1};
    ++at;
    // "x.get<Foo>()"
    if (tokens.Is(at, "<")) {
      const int close = tokens.AngleEnd(at);
      if (close > 0 && close < end && tokens.Is(close + 1, "(")) at = close + 1;
    }
    steps.push_back(std::move(step));
    return true;
  }

  const CodeTokens& tokens;
  StepBudget& budget;
  int at = 0;
  int depth = 0;
};

}  // namespace

int OperandStart(const CodeTokens& tokens, int end, StepBudget& budget) {
  int at = end - 1;
  while (at >= 0 && budget.Take()) {
    if (tokens.IsOneOf(at, ") ] }")) {
      const int before = BeforeGroup(tokens, at);
      if (before < 0) return tokens.Is(at, ")") ? tokens.Partner(at) : -1;
      at = before;
      continue;
    }
    if (tokens.Is(at, ">")) at = tokens.AngleStart(at) - 1;
    if (!tokens.IsWord(at)) return -1;
    if (tokens.Is(at - 1, "template")) --at;
    if (tokens.Is(at - 1, "::")) {
      if (!tokens.IsWord(at - 2) && !tokens.Is(at - 2, ">")) return at - 1;
      at -= 2;
    } else if (tokens.IsOneOf(at - 1, ". ->")) {
      at -= 2;
    } else {
      return at;
    }
  }
  return -1;
}

std::optional<Expr> ReadExpr(const CodeTokens& tokens, int begin, int end, StepBudget& budget) {
  Reader reader(tokens, budget);
  if (begin < 0 || begin >= end || !reader.Whole(begin, end)) return std::nullopt;
  return std::move(reader.steps);
}

}  // namespace zendry
