#include "code/PrototypeText.h"

#include <gtest/gtest.h>

#include <string>

namespace zendry {
namespace {

std::string Head(const std::string& written) {
  const PrototypeText prototype(written);
  switch (prototype.Body()) {
    case BodyPlace::cNone:
      return "none";
    case BodyPlace::cInClass:
      return "in class";
    default:
      return prototype.DefinitionHead("A", {"Inner", "State"});
  }
}

TEST(PrototypeText, DefinitionHead_PutsTheClassBeforeTheName) {
  EXPECT_EQ(Head("void f()"), "void A::f()");
  EXPECT_EQ(Head("  int  f ( int a ) ; "), "int  A::f ( int a )");
  EXPECT_EQ(Head("A(int a)"), "A::A(int a)");
  EXPECT_EQ(Head("~A()"), "A::~A()");
  EXPECT_EQ(Head("bool operator==(const A& other) const"),
            "bool A::operator==(const A& other) const");
  EXPECT_EQ(Head("void operator()(int a)"), "void A::operator()(int a)");
  EXPECT_EQ(Head("operator bool() const"), "A::operator bool() const");
  EXPECT_EQ(Head("std::map<int, void (*)(int)> f(int)"), "std::map<int, void (*)(int)> A::f(int)");
  EXPECT_EQ(Head("void (*handler(int a))(char)"), "void (*A::handler(int a))(char)");
  EXPECT_EQ(Head("decltype(one(1)) f()"), "decltype(one(1)) A::f()");
}

TEST(PrototypeText, DefinitionHead_DropsWhatOnlyADeclarationHas) {
  EXPECT_EQ(Head("virtual void f() override"), "void A::f()");
  EXPECT_EQ(Head("static int f()"), "int A::f()");
  EXPECT_EQ(Head("explicit A(int a)"), "A::A(int a)");
  EXPECT_EQ(Head("explicit(true) A(int a)"), "A::A(int a)");
  EXPECT_EQ(Head("[[nodiscard]] int f() const noexcept override final"),
            "int A::f() const noexcept");
  EXPECT_EQ(Head("void f(int a = 1, std::pair<int, int> b = {1, 2}, int c = g(1, 2), char d)"),
            "void A::f(int a, std::pair<int, int> b, int c, char d)");
  EXPECT_EQ(Head("void f(void (*call)(int) = nullptr)"), "void A::f(void (*call)(int))");
  EXPECT_EQ(Head("virtual ~A() = 0"), "A::~A()");
}

TEST(PrototypeText, DefinitionHead_KeepsWhatBelongsToBoth) {
  EXPECT_EQ(Head("int f() const& noexcept(true)"), "int A::f() const& noexcept(true)");
  EXPECT_EQ(Head("auto f(int a = 2) const -> State override"), "auto A::f(int a) const -> State");
  EXPECT_EQ(Head("int virtualize(int overrides)"), "int A::virtualize(int overrides)")
      << "words are whole words";
}

TEST(PrototypeText, DefinitionHead_QualifiesTypesOfTheClassBeforeTheName) {
  EXPECT_EQ(Head("Inner f(Inner a)"), "A::Inner A::f(Inner a)");
  EXPECT_EQ(Head("const State& f()"), "const A::State& A::f()");
  EXPECT_EQ(Head("B::Inner f()"), "B::Inner A::f()");
  EXPECT_EQ(Head("std::vector<Inner*> f()"), "std::vector<A::Inner*> A::f()");
}

TEST(PrototypeText, Body_OfTemplatesAndInlineFunctions_IsInTheClass) {
  for (const char* written :
       {"template <class T> void f(T a)", "inline int f()", "constexpr int f()",
        "static constexpr int f(int)", "auto f()", "void f(auto a)"})
    EXPECT_EQ(Head(written), "in class") << written;
}

TEST(PrototypeText, Body_OfWhatHasNone) {
  for (const char* written : {"virtual void f() = 0", "A() = default", "A(const A&) = delete",
                              "friend void f(A&)", "int a", "int a = f(1)", "", "f", "(", "f(",
                              "f)", "()", "int f() { return 1; }", "using B = C<int>"})
    EXPECT_EQ(Head(written), "none") << written;
}

TEST(PrototypeText, LongAndDeepTexts_EndSoon) {
  EXPECT_EQ(Head("void f(" + std::string(10'000, 'a') + ")"),
            "void A::f(" + std::string(10'000, 'a') + ")");
  Head(std::string(20'000, '('));
  Head("void f" + std::string(20'000, '<'));
  Head("void f(" + std::string(10'000, '=') + ")");
}

}  // namespace
}  // namespace zendry
