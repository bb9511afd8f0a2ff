#include "code/CallTip.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "CodeText.h"
#include "code/CallableText.h"
#include "code/OpenCalls.h"

namespace zendry {
namespace {

// The parameters of a signature, joined by "|", and "..." for one that takes more.
std::string Parameters(const Callable& callable) {
  const CallSignature signature = SignatureOf(callable);
  std::string text;
  for (const auto& [start, end] : signature.parameters)
    text += (text.empty() ? "" : "|") + signature.label.substr(start, end - start);
  return text + (signature.takesMore ? "..." : "");
}

TEST(SignatureOf, FindsEachParameter) {
  const std::pair<const char*, const char*> cases[] = {
      {"()", ""},
      {"(void)", ""},
      {"(void* p)", "void* p"},
      {"(int a, int b)", "int a|int b"},
      {"(int a, int b) const", "int a|int b"},
      {"(std::map<int, char> m, int n)", "std::map<int, char> m|int n"},
      {"(int (*f)(int, int), int n)", "int (*f)(int, int)|int n"},
      {"(char c = ',', const char* s = \"),(\")", "char c = ','|const char* s = \"),(\""},
      {"(Foo f = Foo(1, 2), int n)", "Foo f = Foo(1, 2)|int n"},
      {"(const char* f, ...)", "const char* f|......"},
      {"(Args&&... args)", "Args&&... args..."},
      {"{int x, int y}", "int x|int y"},
      {"(int a, ", "int a"},
      {"", ""},
      {"(,)", ""},
  };
  for (const auto& [parameters, expected] : cases)
    EXPECT_EQ(Parameters({"void", "f", parameters}), expected) << parameters;
}

TEST(SignatureOf, Label_IsWrittenAsDeclared) {
  EXPECT_EQ(SignatureOf({"int", "f", "(int a) const"}).label, "int f(int a)");
  EXPECT_EQ(SignatureOf({"char *", "f", "()"}).label, "char *f()");
  EXPECT_EQ(SignatureOf({"char*", "f", "()"}).label, "char* f()");
  EXPECT_EQ(SignatureOf({"", "A::A", "()"}).label, "A::A()");
}

TEST(CallSignature, TakesArguments_UpToItsParameters) {
  const CallSignature two = SignatureOf({"", "f", "(int a, int b)"});
  EXPECT_TRUE(two.Takes(0));
  EXPECT_TRUE(two.Takes(2));
  EXPECT_FALSE(two.Takes(3));
  EXPECT_EQ(two.ParameterFor(1), 1);
  EXPECT_EQ(two.ParameterFor(2), -1);
  const CallSignature more = SignatureOf({"", "f", "(int a, ...)"});
  EXPECT_TRUE(more.Takes(9));
  EXPECT_EQ(more.ParameterFor(0), 0);
  EXPECT_EQ(more.ParameterFor(9), 1);
}

// The calls that a text ends in, each as its bracket's place, argument and number of arguments.
std::string Calls(const std::string& text) {
  const CodeTokens tokens(text);
  StepBudget budget;
  std::string shown;
  for (const OpenCall& call : OpenCalls(tokens, budget))
    shown += std::to_string(tokens.Start(call.bracket)) + ":" + std::to_string(call.argument) +
             "/" + std::to_string(call.arguments) + " ";
  return shown;
}

TEST(OpenCalls, TheInnermostFirst) {
  const std::pair<const char*, const char*> cases[] = {
      {"f(", "1:0/0 "},
      {"f(a", "1:0/1 "},
      {"f(a,", "1:1/2 "},
      {"f(a, b", "1:1/2 "},
      {"f(g(x, y", "3:1/2 1:0/1 "},
      {"f(g(x, y), ", "1:1/2 "},
      {"f()", ""},
      {"f(1;", ""},
      {"f(\"(\", '('", "1:1/2 "},
      {"f(a[1, ", "1:0/1 "},
      {"f((1, ", "1:0/1 "},
      {"f({1, ", "1:0/1 "},
      {"f(a, {1, ", "1:1/2 "},
      {"f(max<int, int>(1), ", "1:1/2 "},
      {"f(a < b, ", "1:1/2 "},
      {"f([&](int a, int b) { return a; }, ", "1:1/2 "},
      {"f([&](int a) { g(1, ", "16:1/2 "},
      {"f([&](int a) { x = ", ""},
      {"if (a, ", ""},
      {"if (f(1, ", "5:1/2 "},
      {"for (int i = 0; i < f(", "21:0/0 "},
      {"sizeof(", ""},
      {"Foo{1, ", "3:1/2 "},
      {"Foo f{1, ", "5:1/2 "},
      {"new Foo{1", "7:0/1 "},
      {"x = {1, ", ""},
      {"f<int>(", "6:0/0 "},
      {"a[1](", "4:0/0 "},
      {"f(1)(", "4:0/0 "},
      {"class Foo {", ""},
      {"class Foo : Bar {", ""},
      {"namespace n {", ""},
      {"enum E {", ""},
      {"else {", ""},
      {"void f() {", ""},
      {"void f() const {", ""},
      {"[](int a) -> Foo {", ""},
      {"switch (a) { case 1: {", ""},
      {"}{)(", ""},
  };
  for (const auto& [text, calls] : cases) EXPECT_EQ(Calls(text), calls) << text;
}

TEST(PlaceInCall, FollowsTheCaret) {
  struct Row {
    const char* text;
    int depth;
    int argument;
    int innermost;
  };
  const Row rows[] = {
      {"f(@", 1, 0, 1},          {"f(a, @", 1, 1, 1},    {"f(a, g(1, 2, @", 2, 1, 6},
      {"f(a, g(1), @", 1, 2, 1}, {"f@(", 0, 0, 0},       {"f(a)@", 0, 0, 0},
      {"f(a;@", 0, 0, 0},        {"f(\n\n1,@", 1, 1, 1}, {"@", 0, 0, 0}};
  for (const Row& row : rows) {
    const test::CodeText editor(row.text);
    const CallPlace place = PlaceInCall(editor, 1);
    EXPECT_EQ(place.depth, row.depth) << row.text;
    EXPECT_EQ(place.argument, row.argument) << row.text;
    EXPECT_EQ(place.innermost, row.innermost) << row.text;
  }
  EXPECT_EQ(PlaceInCall(test::CodeText("f(@"), -1).depth, 0);
  EXPECT_EQ(PlaceInCall(test::CodeText("f(" + std::string(4094, ' ') + "@"), 1).depth, 1);
  EXPECT_EQ(PlaceInCall(test::CodeText("f(" + std::string(4096, ' ') + "@"), 1).depth, 0);
}

// What the text declares with the name "f".
std::string Declared(const std::string& text) {
  const CodeTokens tokens(text);
  StepBudget budget;
  for (int i = 0; i < tokens.Count(); ++i)
    if (tokens.Is(i, "f"))
      if (const auto callable = CallableAt(tokens, i, budget)) return SignatureOf(*callable).label;
  return "";
}

TEST(CallableAt, PointersLambdasAndFunctionObjects) {
  const std::pair<const char*, const char*> cases[] = {
      {"int (*f)(char c);", "int f(char c)"},
      {"static const char* (*f)(void);", "const char* f(void)"},
      {"typedef void (*f)(int);", "void f(int)"},
      {"typedef int f(int a);", "int f(int a)"},
      {"using f = int (*)(int a);", "int f(int a)"},
      {"using f = void(int);", "void f(int)"},
      {"using f = int;", ""},
      {"int (*f[3])(int a);", "int f(int a)"},
      {"void (Foo::*f)(int a);", "void f(int a)"},
      {"std::function<int(double d)> f;", "int f(double d)"},
      {"const std::function<void()>& f;", "void f()"},
      {"std::vector<int> f;", ""},
      {"auto f = [](int a) { return a; };", "f(int a)"},
      {"auto f = [&]() mutable -> Foo* { return p; };", "Foo* f()"},
      {"auto f = [] { return 1; };", "f()"},
      {"auto f = []<class T>(T a) {};", "f(T a)"},
      {"auto f = x;", ""},
      {"int f;", ""},
      {"int f(int a);", ""},
      {"f", ""},
      {"(*f", ""},
      {"(*f)(", ""},
      {"using f =", ""},
  };
  for (const auto& [text, label] : cases) EXPECT_EQ(Declared(text), label) << text;
}

TEST(ResultBefore, TheTypeAsWritten) {
  const std::pair<const char*, const char*> cases[] = {
      {"static inline const char* f(int);", "const char*"},
      {"std::map<int, char> f();", "std::map<int, char>"},
      {"unsigned long A::f() {", "unsigned long"},
      {"const A<int>& B<int>::f() {", "const A<int>&"},
      {"auto f(int a) const -> std::string;", "std::string"},
      {"template <class T, class U> T f();", "T"},
      {"[[nodiscard]] int f();", "int"},
      {"__attribute__((pure)) int f();", "int"},
      {"EXPORT int f();", "int"},
      {"static API(x) int f();", "int"},
      {"extern \"C\" int f();", "int"},
      {"FILE *f();", "FILE *"},
      {"LUA_API const char *(f) (lua_State *L);", "const char *"},
      {"public: virtual bool f();", "bool"},
      {"explicit f();", ""},
      {"f();", ""},
      {"~f();", ""},
      {"int x; f();", ""},
  };
  for (const auto& [text, result] : cases) {
    const CodeTokens tokens(text);
    StepBudget budget;
    int name = 0;
    while (!tokens.Is(name, "f")) ++name;
    EXPECT_EQ(ResultBefore(tokens, name, budget), result) << text;
  }
}

TEST(MacroIn, WithParametersOnly) {
  const auto macro = [](const char* text) {
    const auto found = MacroIn(text, "M");
    return found ? SignatureOf(*found).label : "";
  };
  EXPECT_EQ(macro("#define M(a, b) a + b\n"), "M(a, b)");
  EXPECT_EQ(macro("#  define  M(a, ...) a\n"), "M(a, ...)");
  EXPECT_EQ(macro("#define M (a)\n"), "");
  EXPECT_EQ(macro("#define XM(a)\n"), "");
  EXPECT_EQ(macro("#define X M(a)\n#define M(b) b\n"), "M(b)");
  EXPECT_EQ(macro("M(a)\n"), "");
  EXPECT_EQ(macro("#define M(a"), "");
  EXPECT_EQ(macro(""), "");
}

}  // namespace
}  // namespace zendry
