#include "code/DeclRead.h"

#include <gtest/gtest.h>

#include <string>

namespace zendry {
namespace {

// The declaration of `x` that is met first from the end: its type, and after "=" or ":" what it
// begins with.
std::string Decl(const std::string& text) {
  const CodeTokens tokens(text);
  StepBudget budget;
  const auto decl = FindDeclaration(tokens, "x", tokens.Count(), budget);
  if (!decl) return "none";
  std::string told = (decl->isAlias ? "alias " : "") + Print(decl->type);
  if (decl->binding >= 0) told += "#" + std::to_string(decl->binding);
  if (decl->initBegin < decl->initEnd) told += decl->isRange ? " :" : " =";
  for (int i = decl->initBegin; i < decl->initEnd; ++i) told += " " + std::string(tokens.Text(i));
  return told;
}

TEST(FindDeclaration, OfEveryForm) {
  const std::pair<const char*, const char*> rows[] = {
      {"Foo x;", "Foo"},
      {"const ns::Foo<int>* const x = y;", "ns::Foo<int>* = y"},
      {"Foo x(1, 2);", "Foo = 1 , 2"},
      {"Foo x{1};", "Foo = 1"},
      {"Foo x[3][4];", "Foo**"},
      {"Foo a, x;", "Foo"},
      {"Foo a(1), *b = f(c, d), *x = 0;", "Foo* = 0"},
      {"Foo a{1, 2}, x;", "Foo"},
      {"std::map<int, A> a = std::map<int, A>(), x;", "std::map<int,A>"},
      {"void f(Foo& x, int b)", "Foo"},
      {"void f(int b, std::map<int, Foo> x)", "std::map<int,Foo>"},
      {"for (auto& x : y.z())", "auto : y . z ( )"},
      {"for (const auto& [a, x] : y)", "auto#1 : y"},
      {"auto [x, b] = f();", "auto#0 = f ( )"},
      {"auto [x, b]{c};", "auto#0 = c"},
      {"[x = f(1), y]", "auto = f ( 1 )"},
      {"if (auto* x = f(); x)", "auto* = f ( )"},
      {"catch (const std::exception& x)", "std::exception"},
      {"auto x = a < b ? c : d;", "auto = a < b ? c : d"},
      {"using x = A<B>*;", "alias A<B>*"},
      {"typedef A<B> *x;", "alias A<B>*"},
      {"typedef A y, x;", "alias A"},
      {"struct Foo x;", "Foo"},
      {"Foo &&x = y;", "Foo = y"},
      {"Foo x() const;", "Foo"},
      {"auto x(int a) const -> Foo*;", "Foo* = int a"},
      {"public: Foo x;", "Foo"},
      {"MACRO\nFoo x;", "Foo"},
      {"Foo x = {1, 2}, y;", "Foo = { 1 , 2 }"},
      {"::Foo x;", "Foo"},
  };
  for (const auto& [text, expected] : rows) EXPECT_EQ(Decl(text), expected) << text;
}

TEST(FindDeclaration, Uses_AreNone) {
  for (const char* text : {"",
                           "x",
                           "x;",
                           "x = 1;",
                           "f(x);",
                           "f(a, x);",
                           "f(a + b, x);",
                           "return x;",
                           "new x;",
                           "delete x;",
                           "a.b x;",
                           "a->b x;",
                           "goto x;",
                           "a[x];",
                           "a[b, x];",
                           "class x;",
                           "using namespace x;",
                           "using x;",
                           "case x:",
                           "a = x;",
                           "a::x;",
                           "namespace x = y;",
                           "operator x();",
                           "throw x;",
                           "5 x;",
                           "\"a\" x;",
                           "> x;",
                           "a > x;",
                           "< x;",
                           "* x;",
                           "& x;",
                           ", x;",
                           "(, x)",
                           "[x]",
                           "[&x]",
                           "[, x]",
                           "auto [x",
                           "auto [x;",
                           "using x =",
                           "using x = ;",
                           "typedef",
                           "typedef x;"})
    EXPECT_EQ(Decl(text), "none") << text;
}

TEST(FindDeclaration, InitialValueWithoutEnd_EndsWithTheText) {
  EXPECT_EQ(Decl("(A x = b < c"), "A = b < c");
  EXPECT_EQ(Decl("{ for (A x : b < c"), "A : b < c");
  EXPECT_EQ(Decl("A x = (b"), "A = ( b");
  EXPECT_EQ(Decl("( auto [x, b = c"), "none");
}

TEST(FindDeclaration, NearestOfTheOpenBlocks) {
  EXPECT_EQ(Decl("A x; B x;"), "B");
  EXPECT_EQ(Decl("A x; { B x; }"), "A");
  EXPECT_EQ(Decl("A x; { B x;"), "B");
  EXPECT_EQ(Decl("A x; void f(B x) const { C x; }"), "A");
  EXPECT_EQ(Decl("A x; for (B x : y) { }"), "A");
  EXPECT_EQ(Decl("A x; } }"), "A");
  EXPECT_EQ(Decl("A x{1};"), "A = 1");
}

TEST(FindDeclaration, StatementOf512Tokens_IsReadToItsStart) {
  const auto names = [](int count) {
    std::string text;
    for (int i = 0; i < count; ++i) text += ", a";
    return text + ", x;";
  };
  EXPECT_EQ(Decl("typedef A a" + names(254)), "alias A");
  EXPECT_EQ(Decl("typedef A* a" + names(254)), "A");
}

TEST(FindDeclaration, ParenthesisWithoutPartner_BeforeABlock) {
  EXPECT_EQ(Decl("A x; ) { B x; }"), "A");
  EXPECT_EQ(Decl("A x; ) const { B x; }"), "A");
}

TEST(FindDeclaration, Budget_EndsTheSearch) {
  const CodeTokens tokens("A x; " + std::string(1000, ';'));
  StepBudget budget{100};
  EXPECT_FALSE(FindDeclaration(tokens, "x", tokens.Count(), budget));
}

TEST(DeclarationAt, OutsideOfTheText_IsNone) {
  const CodeTokens tokens("A x;");
  StepBudget budget;
  EXPECT_FALSE(DeclarationAt(tokens, -1, budget));
  EXPECT_FALSE(DeclarationAt(tokens, 100, budget));
}

TEST(TemplateParameters, AreNamed) {
  const auto names = [](const std::string& text) {
    const CodeTokens tokens(text);
    int name = 0;
    while (name < tokens.Count() && !tokens.Is(name, "Foo")) ++name;
    std::string joined;
    for (const std::string& each : TemplateParameters(tokens, name)) joined += each + " ";
    return joined;
  };
  EXPECT_EQ(names("template <class T, typename U = int, int N> class Foo"), "T U N ");
  EXPECT_EQ(names("template <class T = A<B>> struct Foo"), "T ");
  EXPECT_EQ(names("template <> class Foo"), "");
  EXPECT_EQ(names("class Foo"), "");
  EXPECT_EQ(names("> class Foo"), "");
  EXPECT_EQ(names("A<T> class Foo"), "");
  EXPECT_EQ(names("Foo"), "");
  EXPECT_EQ(names(""), "");
}

}  // namespace
}  // namespace zendry
