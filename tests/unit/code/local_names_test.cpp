#include "code/LocalNames.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>

#include "code/CodeTokens.h"

namespace zendry {
namespace {

// "name:type" for each local at the end of the text, the nearest first.
std::string Locals(const std::string& text) {
  std::string locals;
  for (const CompletionRow& row : LocalNames(CodeTokens(text)))
    locals += (locals.empty() ? "" : " ") + row.name + ":" + row.type;
  return locals;
}

TEST(LocalNames, VariablesOfOpenBlocks_NearestFirst) {
  EXPECT_EQ(Locals("void f() {\n  int a = 1;\n  {\n    Foo* b;\n    {\n      "), "b:Foo* a:int");
  EXPECT_EQ(Locals("void f() {\n  const ns::Foo& a = g();\n  static unsigned long b;\n  "),
            "b:long a:ns::Foo");
  EXPECT_EQ(Locals("void f() {\n  int a, *b = 0, c[3];\n  "), "c:int* b:int* a:int");
  EXPECT_EQ(Locals("void f() {\n  std::vector<int> v{1, 2};\n  struct Foo s = {1};\n  "),
            "s:Foo v:std::vector<int>");
}

TEST(LocalNames, ClosedBlocksAndOtherFunctions_HaveNone) {
  EXPECT_EQ(Locals("int g(int p) { int q; }\nvoid f() {\n  { int a; }\n  "), "");
  EXPECT_EQ(Locals("void f() {\n  for (int i = 0; i < 3; ++i) { int k; }\n  "), "");
  EXPECT_EQ(Locals("void f() {\n  for (int i = 0; i < 3; ++i) g();\n  "), "");
  EXPECT_EQ(Locals("int global;\nvoid f() {\n  "), "");
  EXPECT_EQ(Locals("int global;\n"), "");
  EXPECT_EQ(Locals("void f() {\n  auto g = [](int p) { return p; };\n  "), "g:auto");
}

TEST(LocalNames, Parameters) {
  EXPECT_EQ(Locals("int f(int a, const Foo& b, char** c) {\n  "), "c:char** b:Foo a:int");
  EXPECT_EQ(Locals("Foo::Foo(int a, int b) : Base(a), x(b * a), y{b} {\n  "), "b:int a:int");
  EXPECT_EQ(Locals("class Foo {\n public:\n  int x;\n  int f(int a) const noexcept {\n    "),
            "a:int");
  EXPECT_EQ(Locals("namespace n {\nint global;\nstruct P* f(struct P* a) {\n  "), "a:P*");
  EXPECT_EQ(Locals("auto f(Foo a) -> Bar {\n  "), "a:Foo");
  EXPECT_EQ(Locals("template <class T> void f(T t) {\n  "), "t:T");
}

TEST(LocalNames, LoopsAndConditions) {
  EXPECT_EQ(Locals("void f() {\n  for (int i = 0, n = 3; i < n; ++i) {\n    "), "n:int i:int");
  EXPECT_EQ(Locals("void f() {\n  for (int i = 0; "), "i:int");
  EXPECT_EQ(Locals("void f() {\n  for (const auto& x : xs) "), "x:auto");
  EXPECT_EQ(Locals("void f() {\n  if (Foo* p = g()) {\n  "), "p:Foo*");
  EXPECT_EQ(Locals("void f() {\n  if (a & b) {\n  "), "");
  EXPECT_EQ(Locals("void f() {\n  while (auto x = g()) {\n    if (x) "), "x:auto");
  EXPECT_EQ(Locals("void f() {\n  try {\n  } catch (const Error& e) {\n    "), "e:Error");
}

TEST(LocalNames, LambdasAndBindings) {
  EXPECT_EQ(Locals("void f(int a) {\n  auto g = [n = a](Foo p) mutable {\n    "),
            "p:Foo n:auto g:auto a:int");
  EXPECT_EQ(Locals("void f(int a) {\n  run(a, [&](Foo p) {\n    "), "p:Foo a:int");
  EXPECT_EQ(Locals("void f() {\n  auto [x, y] = g();\n  "), "y:auto x:auto");
  EXPECT_EQ(Locals("void f() {\n  for (auto& [k, v] : m) {\n    "), "v:auto k:auto");
}

TEST(LocalNames, Types) {
  EXPECT_EQ(Locals("void f() {\n  using Row = std::vector<int>;\n  typedef Foo Bar;\n  "),
            "Bar:Foo Row:std::vector<int>");
}

TEST(LocalNames, Expressions_DeclareNothing) {
  EXPECT_EQ(Locals("void f() {\n  return a * b;\n  delete c;\n  g(a * b, c & d);\n  x = y;\n  "),
            "");
  EXPECT_EQ(Locals("void f() {\n  g(a * b, "), "");
  EXPECT_EQ(Locals("void f() {\n  goto done;\n  throw e;\n  std::cout << a;\n  case B:\n  "), "");
}

TEST(LocalNames, ParametersWhoseTypesFollowThem) {
  EXPECT_EQ(Locals("local int f(strm, count)\nz_streamp strm;\nint *count;\n{\n  int k;\n  "),
            "k:int count:int* strm:z_streamp");
  EXPECT_EQ(Locals("f(a, b)\nconst char *a, b[];\n{\n  "), "b:char* a:char*");
  EXPECT_EQ(Locals("void f() {\n  if (x) y;\n  {\n    "), "");
  EXPECT_EQ(Locals("void f() {\n  g(x);\n  int k;\n  {\n    "), "k:int");
  EXPECT_EQ(Locals("int a;\nint b;\n{\n  "), "");
}

TEST(LocalNames, ProductOfVariables_DeclaresNothing) {
  EXPECT_EQ(Locals("void f() {\n  int x = 1, y = 2;\n  x * y;\n  "), "y:int x:int");
  EXPECT_EQ(Locals("void f(int x) {\n  x & y;\n  x && z;\n  "), "x:int");
  EXPECT_EQ(Locals("int x;\nvoid f() {\n  x * y;\n  "), "");
  EXPECT_EQ(Locals("void f() {\n  using X = Foo;\n  X * y;\n  "), "y:X* X:Foo");
  EXPECT_EQ(Locals("class X;\nvoid f() {\n  X * y;\n  X * z = x;\n  "), "z:X* y:X*");
}

TEST(LocalNames, BrokenText_EndsWithoutHarm) {
  const std::string text =
      "Foo::Foo(int a) : b(a), c{a} { for (auto& [k, v] : m) if (int x = 1) { [q = x](T t) { } } "
      "class A { enum { e }; void f() { int z = {1}; } }; } ) ] } { ( [";
  for (size_t length = 0; length <= text.size(); ++length) Locals(text.substr(0, length));
}

}  // namespace
}  // namespace zendry
