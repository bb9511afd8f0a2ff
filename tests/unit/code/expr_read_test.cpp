#include "code/ExprRead.h"

#include <gtest/gtest.h>

#include <string>

namespace zendry {
namespace {

std::string ToText(const Expr& expr) {
  using Kind = ExprStep::Kind;
  std::string told;
  for (const ExprStep& step : expr) {
    if (!told.empty()) told += ' ';
    switch (step.kind) {
      case Kind::cName:
        told += Print(step.type);
        break;
      case Kind::cThis:
        told += "this";
        break;
      case Kind::cValue:
        told += "value:" + Print(step.type);
        break;
      case Kind::cMember:
        told += "." + step.name;
        break;
      case Kind::cArrow:
        told += "->" + step.name;
        break;
      case Kind::cCall:
        told += "()";
        break;
      case Kind::cIndex:
        told += "[]";
        break;
      case Kind::cDeref:
        told += "*";
        break;
      case Kind::cAddress:
        told += "&";
        break;
    }
  }
  return told;
}

std::string Read(const std::string& text) {
  const CodeTokens tokens(text);
  StepBudget budget;
  const auto expr = ReadExpr(tokens, 0, tokens.Count(), budget);
  return expr ? ToText(*expr) : "none";
}

// The operand at the end of a text.
std::string Operand(const std::string& text) {
  const CodeTokens tokens(text);
  StepBudget budget;
  const int start = OperandStart(tokens, tokens.Count(), budget);
  if (start < 0) return "none";
  return text.substr(static_cast<size_t>(tokens.Start(start)));
}

TEST(ReadExpr, StepsInTheirOrder) {
  const std::pair<const char*, const char*> rows[] = {
      {"a", "a"},
      {"this->a", "this ->a"},
      {"a.b(c).d->e[1]", "a .b () .d ->e []"},
      {"ns::A<B>::c(1)", "ns::A<B>::c ()"},
      {"*a", "a *"},
      {"&a.b", "a .b &"},
      {"*a.b()", "a .b () *"},
      {"(*a).b", "a * .b"},
      {"((a))", "a"},
      {"(A*)b", "value:A*"},
      {"((A*)b)->c", "value:A* ->c"},
      {"((A*)0)->c", "value:A* ->c"},
      {"(A*)b->c", "value:A*"},
      {"(a).b", "a .b"},
      {"(a)[1]", "a []"},
      {"static_cast<A*>(b)->c", "value:A* ->c"},
      {"dynamic_cast<const A<B>&>(b).c", "value:A<B> .c"},
      {"new A", "value:A*"},
      {"new ns::A<B>(1, 2)", "value:ns::A<B>*"},
      {"new A[3]", "value:A*"},
      {"A{1}.b", "A () .b"},
      {"std::make_unique<A>(1)", "std::make_unique<A> ()"},
      {"c ? a : b", "a"},
      {"c ? (d ? a : b) : e", "a"},
      {"++a", "a"},
      {"a++", "a"},
      {"a.get<B>()", "a .get ()"},
      {"a.template get<B>()", "a .get ()"},
      {"a(\")\", ']')", "a ()"},
  };
  for (const auto& [text, expected] : rows) EXPECT_EQ(Read(text), expected) << text;
}

TEST(ReadExpr, OtherForms_AreNone) {
  for (const char* text : {"",
                           "1",
                           "\"a\"",
                           "a + b",
                           "a b",
                           "a.",
                           "a->",
                           ".a",
                           "(a",
                           "a)",
                           "()",
                           "a[",
                           "a]",
                           "*",
                           "&",
                           "new",
                           "(A*)",
                           "a::",
                           "::",
                           "a ? b",
                           "! a",
                           "- a",
                           "a, b",
                           "a = b",
                           "[] {}",
                           "{a}",
                           "static_cast",
                           "static_cast<",
                           "static_cast<A>",
                           "static_cast<>(a)",
                           "return a",
                           "a ? : b",
                           "a.get<B>",
                           "a.get<B> c",
                           "a.get<B"})
    EXPECT_EQ(Read(text), "none") << text;
}

TEST(ReadExpr, GroupThatEndsAfterTheExpression_IsNone) {
  const CodeTokens tokens("(a).b(c)[d]");
  StepBudget budget;
  EXPECT_FALSE(ReadExpr(tokens, 0, 2, budget));
  EXPECT_TRUE(ReadExpr(tokens, 0, 3, budget));
  EXPECT_FALSE(ReadExpr(tokens, 0, 7, budget));
  EXPECT_TRUE(ReadExpr(tokens, 0, 8, budget));
  EXPECT_FALSE(ReadExpr(tokens, 0, 10, budget));
}

TEST(ReadExpr, Parentheses_AreReadTo11Deep) {
  EXPECT_EQ(Read(std::string(11, '(') + "a" + std::string(11, ')')), "a");
  EXPECT_EQ(Read(std::string(12, '(') + "a" + std::string(12, ')')), "none");
}

TEST(ReadExpr, DeepOrOutside_IsNone) {
  EXPECT_EQ(Read(std::string(1000, '(') + "a" + std::string(1000, ')')), "none");
  EXPECT_EQ(Read(std::string(1000, '*') + "a"), "none");
  const CodeTokens tokens("a");
  StepBudget budget;
  EXPECT_FALSE(ReadExpr(tokens, -1, 1, budget));
  EXPECT_FALSE(ReadExpr(tokens, 1, 1, budget));
  EXPECT_FALSE(ReadExpr(tokens, 1, 0, budget));
  StepBudget none{0};
  EXPECT_FALSE(ReadExpr(tokens, 0, 1, none));
}

TEST(OperandStart, IsWhatTheOperatorWorksOn) {
  const std::pair<const char*, const char*> rows[] = {
      {"x = a", "a"},
      {"x = a.b(c)->d[1]", "a.b(c)->d[1]"},
      {"return ns::A<B>::f(1)", "ns::A<B>::f(1)"},
      {"return (a)", "(a)"},
      {"if (a)", "(a)"},
      {"f(a", "a"},
      {"*a", "a"},
      {"(*a)", "(*a)"},
      {"x + static_cast<A*>(b)", "static_cast<A*>(b)"},
      {"a < b", "b"},
      {"A{1}", "A{1}"},
      {"::a", "::a"},
      {"a\n  // b\n  .c()", "a\n  // b\n  .c()"},
      {"f(1)(2)[3]", "f(1)(2)[3]"},
      {"x ? a : b", "b"},
      {"!a", "a"},
      {"{ a", "a"},
  };
  for (const auto& [text, expected] : rows) EXPECT_EQ(Operand(text), expected) << text;
}

TEST(OperandStart, WithoutOperand_IsNone) {
  for (const char* text : {"", "+", "5", "\"a\"", "[1]", "{}", "[] {}", "a >", "<a>", ")", "]", "}",
                           "(", "a.", ".", "a::", "= {1}"})
    EXPECT_EQ(Operand(text), "none") << text;
}

}  // namespace
}  // namespace zendry
