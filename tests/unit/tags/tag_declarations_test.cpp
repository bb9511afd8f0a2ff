#include <gtest/gtest.h>

#include <ostream>
#include <string>
#include <string_view>

#include "TagRun.h"

// Declarations as other people write them: with macros, qualifiers and the words of today's C and
// C++. Beside most rows stands a neighbour that must not match.

namespace zendry {
namespace {

using test::ParseTags;
using test::TagsOf;

struct Case {
  const char* name;
  std::string_view text;
  std::string_view tags;
  const char* file = "a.h";
};

void PrintTo(const Case& row, std::ostream* out) {
  *out << row.name;
}

class TagDeclarations : public testing::TestWithParam<Case> {};

TEST_P(TagDeclarations, Text_GivesItsTags) {
  EXPECT_EQ(TagsOf(GetParam().text, GetParam().file), GetParam().tags);
}

INSTANTIATE_TEST_SUITE_P(
    MacroBehind, TagDeclarations,
    testing::Values(
        Case{"Member", "struct S { T* m GUARDED_BY(mu); int n; };",
             "s S:struct; m S::m:T; m S::n:int;"},
        Case{"MemberWithNumber", "struct S { int m ALIGNED(8); };", "s S:struct; m S::m:int;"},
        Case{"MemberWithoutArguments", "struct S { T* m UNUSED; };", "s S:struct; m S::m:T;"},
        Case{"FunctionInCapitals", "EXPORT T FOO(int a); T FOO(A b);", "p FOO:T; p FOO:T;"},
        Case{"VariableInCapitals", "struct S { const Foo MAX_SIZE; struct T LIMIT; };",
             "s S:struct; m S::MAX_SIZE:Foo; m S::LIMIT:T;"},
        Case{"Parameters", "struct S { int f() EXCLUSIVE_LOCKS(mu); void g(int); };",
             "s S:struct; p S::f:int; p S::g:void;"},
        Case{"Throw", "extern int f (int) __THROW __nonnull ((1));\nextern int g;", "p f:int;"},
        Case{"Attribute", "void f(const char*, ...) __attribute__((format(printf, 1, 2)));\nint a;",
             "p f:void; v a:int;"},
        Case{"Noexcept", "int f() noexcept(noexcept(g(1))); int h;", "p f:int; v h:int;"},
        Case{"FunctionBody", "T f(int) NOTHROW { } int a;", "f f:T; v a:int;"},
        Case{"Constructor", "struct A { A(int x) NOTHROW : a(x), b{1} { g(); } int a; };",
             "s A:struct; f A::A; m A::a:int;"},
        Case{"ConstructorOutside", "A::A(int x) NOTHROW(true) : a(x) { }\nint b;",
             "f A::A; v b:int;"},
        Case{"Destructor", "struct A { ~A() NOTHROW; };", "s A:struct; p A::~A;"},
        Case{"CallWithoutSemicolon", "X()\nint a;", "v a:int;"},
        Case{"CallInAClass", "class A { DISABLE_COPY(A)\nint b; };", "c A:class; m A::b:int;"},
        Case{"CallInAClassWithSemicolon", "class A { ASSERT_IT(b); check(A); void f(); };",
             "c A:class; p A::f:void;"},
        Case{"WordAloneInAClass", "struct A { HEADER; int b; };", "s A:struct; m A::b:int;"},
        Case{"BetweenNameAndParameters", "struct A { static T min PREVENT (T a); };",
             "s A:struct; p A::min:T;"},
        Case{"OldPrototype", "local int f OF((int));\nint g;", "p f:int; v g:int;", "a.c"},
        Case{"BeforeDeclarator", "static API(x) int f(int);", "p f:int;"},
        Case{"Enumerator", "enum E { A DEPRECATED(\"x\") = 1, B HIDDEN, MORE(a, b) C };",
             "g E:enum; e E::A; e E::B; e E::C;"}),
    [](const auto& info) { return info.param.name; });

INSTANTIATE_TEST_SUITE_P(
    Declarators, TagDeclarations,
    testing::Values(
        Case{"ConstPointer", "struct S { T* const m; };", "s S:struct; m S::m:T;"},
        Case{"TypeBehindConst", "T const* f();", "p f:T;"},
        Case{"ArrayReference", "template <class T> int f(const T (&x)[N]) {}\nint a;",
             "f f:int; v a:int;"},
        Case{"DeletedArrayReference", "void f(T (&&)[N]) = delete;", "p f:void;"},
        Case{"MemberPointerParameter", "void f(R (C::*p)(int));", "p f:void;"},
        Case{"FunctionGivingAPointer", "int (*f(int));", "p f:int;"},
        Case{"LiteralOperator", "T operator\"\" _s(const char*);", "p operator \"\"_s:T;"},
        Case{"LiteralOperatorWithBody", "T operator\"\"_s(int) { } int a;",
             "f operator \"\"_s:T; v a:int;"},
        Case{"TypedefWithNoexcept", "typedef void (*H)(int) noexcept; int a;",
             "t H:void; v a:int;"},
        Case{"TypedefOfAMacro", "typedef TYPEOF(x) T;", "t T:TYPEOF;"},
        Case{"Deleted", "struct A { A(B::C) = delete; A(A&&) = default; };",
             "s A:struct; p A::A; p A::A;"},
        Case{"DeletedWithEllipsis", "int f(...) = delete;", "p f:int;"},
        Case{"VariableInParens", "int (a) = 1;", "v a:int;"},
        Case{"Bool", "bool f(int); bool a;", "p f:bool; v a:bool;"},
        Case{"LongType", "std::string A::B::g() const { }", "f A::B::g:string;"},
        Case{"ManyWords", "extern unsigned long long int volatile const* f(int);", "p f:int;"},
        Case{"TemplateValues", "static const bool a = B<C, D>::value || E<F, G>::value; int h;",
             "v a:bool; v h:int;"},
        Case{"ExplicitInstantiation",
             "template class A<int>; extern template int f<int>(A); int b;", "v b:int;"},
        Case{"MemberTemplate", "typedef typename T::template value_at<int>::type type;",
             "t type:type;"}),
    [](const auto& info) { return info.param.name; });

INSTANTIATE_TEST_SUITE_P(
    Aliases, TagDeclarations,
    testing::Values(Case{"Plain", "using A = B; int c;", "t A:B; v c:int;"},
                    Case{"Template", "template <class T> using A = n::B<T>;", "t A:B;"},
                    Case{"Dependent", "using A = typename T::X<1>::type;", "t A:type;"},
                    Case{"Function", "using A = void (*)(int);", "t A;"},
                    Case{"Attribute", "using A [[deprecated]] = int;", "t A:int;"},
                    Case{"InAClass", "class A { public: using B = C; int d; };",
                         "c A:class; t A::B:C; m A::d:int;"},
                    Case{"Declaration", "using n::a; using namespace n; int b;", "v b:int;"}),
    [](const auto& info) { return info.param.name; });

INSTANTIATE_TEST_SUITE_P(
    Heads, TagDeclarations,
    testing::Values(
        Case{"Class", "class EXPORT(x) Name : Base { int a; };", "c Name:class; m Name::a:int;"},
        Case{"ClassWithMacroBehind", "class Name FINAL : public Base { int a; };",
             "c Name:class; m Name::a:int;"},
        Case{"ClassInCapitals", "class EXPORT NAME { int a; };", "c NAME:EXPORT; m NAME::a:int;"},
        Case{"Enum", "enum type UNDERLYING(unsigned char) { a, b };",
             "g type:enum; e type::a; e type::b;"},
        Case{"EnumWithMacroBefore", "enum DEPRECATED(\"x\") type { a };",
             "g type:enum; e type::a;"},
        Case{"Namespace", "namespace MACRO::name { int a; }", "n MACRO::name:namespace; v a:int;"},
        Case{"NamespaceWithArguments", "namespace MACRO(x) { int a; }",
             "n MACRO:namespace; v a:int;"},
        Case{"FunctionGivingAStruct", "struct S FOO(int a) { } int b;", "f FOO:S; v b:int;"},
        Case{"FriendOfAMacro", "class A { friend class PREPEND(B); int c; };",
             "c A:class; m A::c:int;"}),
    [](const auto& info) { return info.param.name; });

INSTANTIATE_TEST_SUITE_P(
    PlainC, TagDeclarations,
    testing::Values(Case{"CallBeforeStruct", "DEFINE(a, b)\nstruct S { int x; };",
                         "s S:struct; m S::x:int;", "a.c"},
                    Case{"OldStyleParameters", "int f(a, b) struct s *a; int b; { } int c;",
                         "f f:int; v c:int;", "a.c"},
                    Case{"Declspec", "__declspec(x) int f() {} int a;", "f f:int; v a:int;", "a.c"},
                    Case{"StaticAssert", "_Static_assert(1, \"x\"); int a;", "v a:int;", "a.c"},
                    Case{"Separator", "int a = 1'000'000, b;", "v a:int; v b:int;", "a.c"},
                    Case{"TypedEnum", "enum E : unsigned char { A, B }; int c;",
                         "g E:enum; e E::A; e E::B; v c:int;", "a.c"},
                    Case{"EnumBitField", "struct S { enum E a : 3, b : 4; };",
                         "s S:struct; m S::a:E; m S::b:E;", "a.c"}),
    [](const auto& info) { return info.param.name; });

INSTANTIATE_TEST_SUITE_P(
    Branches, TagDeclarations,
    testing::Values(
        Case{"InAClass", "class A {\n#if X\nint a;\n#else\nint b;\n#endif\n};",
             "c A:class; m A::a:int; m A::b:int;"},
        Case{"InANamespace", "namespace n {\n#ifdef X\nint a;\n#else\nint b;\n#endif\n}",
             "n n:namespace; v a:int; v b:int;"},
        Case{"InAnEnum", "enum E {\n#if X\nA,\n#else\nB,\n#endif\nC };",
             "g E:enum; e E::A; e E::B; e E::C;"},
        Case{"BehindALoneMacro", "BEGIN_IT\n#if X\nint a;\n#else\nint b;\n#endif\n",
             "v a:int; v b:int;"},
        Case{"TwoHeads", "#if X\nclass A : B {\n#else\nclass A {\n#endif\nint a;\n};\nint b;",
             "c A:class; m A::a:int; v b:int;"},
        Case{"WithinAStatement", "int\n#if X\na\n#else\nb\n#endif\n;", "v a:int;"},
        Case{"BareDefineInIfZero",
             "#if 0\n#define X\n#undef X\n#pragma\n#error\nint a;\n#endif\nint b;",
             "d X; d X; v b:int;"},
        Case{"DefineWithValueInIfZero", "#if 0\n#define X 1\nint a;\n#else\nint c;\n#endif\nint b;",
             "d X; v c:int; v b:int;"}),
    [](const auto& info) { return info.param.name; });

// Behind the name of a function, its parameters as they stand in the file.
std::string SignatureOf(const std::string& text) {
  const test::TagRun run = ParseTags(text);
  return run.store.globals.empty() ? "" : std::string(run.store.globals.front().signature);
}

TEST(TagSignatures, DefaultValues_AreAsWritten) {
  EXPECT_EQ(SignatureOf("void f(const char* a = \"b, (c\", char d = '\\'');"),
            "(const char* a = \"b, (c\", char d = '\\'')");
  EXPECT_EQ(SignatureOf("void f(A a = {\"x\"}, int b = g(\"y\"));"),
            "(A a = {\"x\"}, int b = g(\"y\"))");
  EXPECT_EQ(SignatureOf("void f(int a = 1'000);"), "(int a = 1000)");
}

TEST(TagSignatures, LiteralOverLines_IsAnEmptyOne) {
  EXPECT_EQ(SignatureOf("void f(A a = \"b\\\nc\", int d = 1);"), "(A a = \"\", int d = 1)");
}

TEST(TagSignatures, WordsBehindAFunction_ArentPartOfIt) {
  EXPECT_EQ(SignatureOf("T f(int a) LOCKS(mu) NOTHROW;"), "(int a)");
  EXPECT_EQ(SignatureOf("T f(int a) const LOCKS(mu);"), "(int a) const");
}

TEST(TagMacroBlocks, BodyOfATest_IsAFunctionOfItsFixture) {
  EXPECT_EQ(TagsOf("TEST_F(Fixture, Name) { db_->f(); }\nint a;"), "f Fixture::Name; v a:int;");
  EXPECT_EQ(TagsOf("BEGIN_THING(a) { }\nint a;"), "v a:int;");
  EXPECT_EQ(TagsOf("int main() { }"), "f main:int;");
}

std::string MembersOf(const std::string& text, const std::string& name) {
  test::TagRun run = ParseTags(text);
  const TagClass* found = run.store.findClass(name);
  std::string members;
  if (found != nullptr)
    for (const TagItem& item : found->members) members += std::string(item.name) + ' ';
  return members;
}

TEST(TagAnonymous, MembersOfAnUnnamedUnion_BelongToTheClassAround) {
  EXPECT_EQ(MembersOf("struct A { int a; union { int b; struct { int c; }; }; int d; };", "A"),
            "a b c d ");
}

TEST(TagAnonymous, MembersOfAUnionWithAVariable_DontBelongToTheClassAround) {
  EXPECT_EQ(MembersOf("struct A { int a; union { int b; } u; struct B { int c; }; };", "A"),
            "a u ");
}

}  // namespace
}  // namespace zendry
