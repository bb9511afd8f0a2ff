#include "tags/TagParser.h"

#include <gtest/gtest.h>

#include <ostream>
#include <string>
#include <string_view>

#include "TagRun.h"
#include "tags/TagC.h"
#include "tags/TagStatement.h"

namespace zendry {
namespace {

using test::ParseTags;
using test::TagsOf;

// A text, the name of its file, and the tags that it gives.
struct Case {
  const char* name;
  std::string_view text;
  std::string_view tags;
  const char* file = "a.cpp";
};

void PrintTo(const Case& row, std::ostream* out) {
  *out << row.name;
}

class TagStatements : public testing::TestWithParam<Case> {};

TEST_P(TagStatements, Text_GivesItsTags) {
  const Case& row = GetParam();
  test::TagRunOptions options;
  if (std::string_view(row.file).ends_with(".java")) options.language = Language::cJava;
  EXPECT_EQ(TagsOf(row.text, row.file, options), row.tags);
}

// Text in parentheses, and after them.
INSTANTIATE_TEST_SUITE_P(
    Parens, TagStatements,
    testing::Values(
        Case{"FunctionPointer", "int (*fp)(int);", "v fp:int;"},
        Case{"ReferenceInParens", "int (&r)(int);", "v r:int;"},
        Case{"ArrayOfPointers", "int (*t[3])(int);", "v t:int;"},
        Case{"NameInParens", "int (f)(int);", "p f:int;"},
        Case{"VariableInParensWithValue", "int (a) = 1;", "v a:int;"},
        Case{"VariableInParens", "int (a), (*b);", "v a:int; v b:int;"},
        Case{"PointerToArray", "int (*a)[3];", "v a:int;"},
        Case{"FunctionGivingAPointer", "int (*f(int));", "p f:int;"},
        Case{"FunctionGivingAnArray", "int (*f(int))[3];", "p f:int;"},
        Case{"FunctionGivingAFunction", "int (*f(int))(char);", "p f:int;"},
        Case{"Parameters", "int f(int a, char* b, ...);", "p f:int;"},
        Case{"QualifiedParameter", "void f(A::B c);", "p f:void;"},
        Case{"ArrayParameter", "void f(A b[3]);", "p f:void;"},
        Case{"TemplateParameter", "void f(A<int, (1 > 2)> b);", "p f:void;"},
        Case{"DefaultArgument", "void f(int a = g(1), B c = B());", "p f:void;"},
        Case{"FunctionParameter", "void f(int (*g)(int));", "p f:void;"},
        Case{"NameWithParameters", "void f(A g(int));", "p f:void;"},
        Case{"MacroArguments", "X(1) int a;", "v a:int;"},
        Case{"MacroAlone", "(1) int a;", "v a:int;"},
        Case{"DoubleParens", "int f((a, b));", "v f:int;"},
        Case{"EqualsAtTheStart", "int f(= 3);\nint a;", "v f:int; v a:int;"},
        Case{"OldStylePointer", "int f(a) A (*a); { }", "f f:int;", "a.c"},
        Case{"OldStyle", "int f(a, b) int a; char *b; { }", "f f:int;", "a.c"},
        Case{"OldStyleInCppIsNone", "int f(a) int a;", "v a:int;"},
        Case{"MacroAfterEmptyList", "X() int a;", "v a:int;"},
        Case{"AttributeAfter", "int f(int) __attribute__((x));", "p f:int;"},
        Case{"ThrowAfter", "int f(int) throw(A) { }", "f f:int;"},
        Case{"TryAfter", "int f() try { } catch (...) { } int a;", "f f:int; v a:int;"},
        Case{"BracketAfter", "int f()[3];", "p f:int;"},
        Case{"InitialisersAfter", "A::A(int) : a(1), b<int>(2) { }\nint c;", "f A::A; v c:int;"},
        Case{"BraceInitialisersAfter", "A::A() : a{1}, b{2} { }\nint c;", "f A::A; v c:int;"},
        Case{"QualifiedInitialisersAfter", "A::A() : n::B(1), c{2} { int x; }\nint d;",
             "f A::A; v d:int;"},
        Case{"BodyAfterBraceInitialisers", "A::A() : a{1}, b<int>{2} { int x; }\nint c;",
             "f A::A; v c:int;"},
        Case{"BodyAfterOneBraceInitialiser", "A::A() : a{1} { int x; }\nint c;",
             "f A::A; v c:int;"},
        Case{"BodyAfterBraceInitialiserInAClass", "struct A { A() : a{1} { int x; } int b; };",
             "s A:struct; f A::A; m A::b:int;"},
        Case{"EqualsAfter", "int f(int) = x;", "p f:int;"},
        Case{"TypedefOfFunction", "typedef int f(int);", "t f:int;"},
        Case{"ThrowsInJava", "class A { void f() throws B.C, D { } int a; }",
             "c A:class; m A::f:void; f A::a:int;", "a.java"}),
    [](const auto& info) { return info.param.name; });

// Words that begin a statement of their own after a parameter list.
INSTANTIATE_TEST_SUITE_P(
    Restart, TagStatements,
    testing::Values(
        Case{"Class", "X(a) class A { };", "c A:class;"},
        Case{"Extern", "X(a) extern int f();", "p f:int;"},
        Case{"Static", "X(a) static int b;", "v b:int;"},
        Case{"Inline", "X(a) inline void f() { }", "f f:void;"},
        Case{"Namespace", "X(a) namespace n { }", "n n:namespace;"},
        Case{"Template", "X(a) template <class T> void f();", "p f:void;"},
        Case{"Typedef", "X(a) typedef int T;", "t T:int;"},
        Case{"Typename", "X(a) typename T::U b;", "v b:U;"},
        Case{"Using", "X(a) using namespace n; int b;", "v b:int;"},
        Case{"Virtual", "struct A { X(a) virtual void f(); };", "s A:struct; p A::f:void;"},
        Case{"Public", "class A { X(a) public: int b; };", "c A:class; m A::b:int;"},
        Case{"Friend", "class A { X(a) friend void f(); };", "c A:class; p A::f:void;"},
        Case{"Operator", "struct A { X(a) operator int(); };", "s A:struct; p A::operator int;"},
        Case{"PlainName", "X(a) Foo b;", "v b:Foo;"}),
    [](const auto& info) { return info.param.name; });

// The effect of each keyword on its statement.
INSTANTIATE_TEST_SUITE_P(
    Keywords, TagStatements,
    testing::Values(
        Case{"Attribute", "__attribute__((x)) int a;", "v a:int;"},
        Case{"Char", "char a;", "v a:char;"}, Case{"Const", "const A a;", "v a:A;"},
        Case{"Double", "double a;", "v a:double;"}, Case{"Float", "float a;", "v a:float;"},
        Case{"Long", "long a;", "v a:long;"}, Case{"Short", "short a;", "v a:short;"},
        Case{"Signed", "signed a;", "v a:signed;"},
        Case{"Unsigned", "unsigned a;", "v a:unsigned;"},
        Case{"Volatile", "volatile int a;", "v a:int;"}, Case{"Void", "void f();", "p f:void;"},
        Case{"Catch", "catch (A b) { } int a;", "v a:int;"},
        Case{"Class", "class A { };", "c A:class;"},
        Case{"ClassNamedFinal", "class final { };", "c final:class;"},
        Case{"FinalClass", "class A final { };", "c A:class;"},
        Case{"Enum", "enum A { B };", "g A:enum; e A::B;"},
        Case{"Extern", "extern int a; extern int f();", "p f:int;"},
        Case{"For", "for (int i;;) ; int a;", "v a:int;"},
        Case{"Friend", "class A { friend int f(); };", "c A:class; p A::f:int;"},
        Case{"Goto", "goto a; int b;", "v b:int;"}, Case{"Return", "return a; int b;", "v b:int;"},
        Case{"Using", "using n::a; int c;", "v c:int;"},
        Case{"Namespace", "namespace a { }", "n a:namespace;"},
        Case{"Static", "static int a;", "v a:int;"}, Case{"Struct", "struct A { };", "s A:struct;"},
        Case{"Typedef", "typedef int A;", "t A:int;"}, Case{"Union", "union A { };", "u A:union;"},
        Case{"Abstract", "abstract class A { }", "c A:class;", "a.cs"},
        Case{"Interface", "interface A { }", "i A:interface;", "a.cs"},
        Case{"Event", "class A { event B c; }", "c A:class; E A::c:B;", "a.cs"},
        Case{"StaticIgnored", "class A { static int b; }", "c A:class; f A::b:int;", "a.cs"},
        Case{"Package", "package a.b.c;", "p a.b.c;", "a.java"},
        Case{"Import", "import a.b; class A { }", "c A:class;", "a.java"},
        Case{"Program", "program A { }", "p A:program;", "a.vr"},
        Case{"Task", "task a(integer b) { }", "t a:task;", "a.vr"},
        Case{"Bit", "bit a;", "v a:bit;", "a.vr"},
        Case{"Integer", "integer a;", "v a:integer;", "a.vr"},
        Case{"String", "string a;", "v a:string;", "a.vr"},
        Case{"Function", "function integer f() { }", "f f:integer;", "a.vr"},
        Case{"OtherKeyword", "register int a;", "v a:int;"}),
    [](const auto& info) { return info.param.name; });

// The kinds of variables, by the rows of their table.
INSTANTIATE_TEST_SUITE_P(
    Variables, TagStatements,
    testing::Values(Case{"Typedef", "typedef A b;", "t b:A;"}, Case{"NoTypeSpecifier", "a;", ""},
                    Case{"MemberAccess", "int a.b;", ""}, Case{"Arrow", "int a->b;", ""},
                    Case{"Member", "class A { int b; };", "c A:class; m A::b:int;"},
                    Case{"StaticMember", "class A { static int b; };", "c A:class; m A::b:int;"},
                    Case{"StaticMethod", "class A { static int f() { return 1; } int b; };",
                         "c A:class; f A::f:int; m A::b:int;"},
                    Case{"StaticMethodOfTheProject",
                         "struct A { static A* f(int) { int x; } static int b; };",
                         "s A:struct; f A::f:A; m A::b:int;"},
                    Case{"ExternMember", "class A { extern int b; };", "c A:class;"},
                    Case{"QualifiedMember", "int A::b;", "m A::b:int;"},
                    Case{"Extern", "extern int a;", ""},
                    Case{"ExternWithValue", "extern int a = 1;", "v a:int;"},
                    Case{"Variable", "int a;", "v a:int;"},
                    Case{"Field", "class A { int b; }", "c A:class; f A::b:int;", "a.cs"}),
    [](const auto& info) { return info.param.name; });

// Texts that no language has: something sensible, and never an assertion.
INSTANTIATE_TEST_SUITE_P(
    Broken, TagStatements,
    testing::Values(Case{"VariableInJava", "int a;", "", "a.java"},
                    Case{"ExternInCSharp", "extern int a; int b;", "", "a.cs"},
                    Case{"UnionInCSharp", "union A { int b; }", "p A:union;", "a.cs"},
                    Case{"InterfaceInVera", "interface A { integer b; }", "m A::b:integer;",
                         "a.vr"},
                    Case{"CloseParen", ") int a;", "v a:int;"},
                    Case{"CloseBrace", "int a; } int b;", "v a:int;"},
                    Case{"OnlySemicolons", ";;;;int a;;;;", "v a:int;"},
                    Case{"OnlyColons", ":::::::int a;", "v a:int;"},
                    Case{"ColonsInClass", "class A : : : { int b; };", "c A:class; m A::b:int;"},
                    Case{"ClassWithoutName", "class { int a; } b;", "m a:int; v b;"},
                    Case{"KeywordsAlone", "class struct enum union namespace", ""},
                    Case{"OperatorAlone", "operator", ""}, Case{"CommaAlone", ",", ""},
                    Case{"EqualsAlone", "=", ""}, Case{"MinusAtTheEnd", "int a -", ""},
                    Case{"LessAtTheEnd", "int a <", ""}, Case{"CutFunction", "int f(", ""},
                    Case{"CutBitField", "struct A { int a : 3", "s A:struct;"},
                    Case{"CutInitialiser", "int a = {", ""}, Case{"CutTypedef", "typedef", ""},
                    Case{"CutEnum", "enum A { B =", "g A:enum; e A::B;"}),
    [](const auto& info) { return info.param.name; });

std::string Field(const test::TagRun& run, std::string_view name, std::string_view field) {
  const size_t line = run.lines.find(std::string(name) + "\t-");
  if (line == std::string::npos) return "(no tag)";
  const std::string text = run.lines.substr(line, run.lines.find('\n', line) - line) + '\t';
  const size_t at = text.find('\t' + std::string(field) + ':');
  if (at == std::string::npos) return "";
  const size_t start = at + field.size() + 2;
  return text.substr(start, text.find('\t', start) - start);
}

TEST(TagParser, CommaAfterATag_HasTheTypeBefore) {
  const test::TagRun run = ParseTags("int a, b;");
  EXPECT_EQ(run.store.globals.at(0).type, "int");
  EXPECT_EQ(run.store.globals.at(1).type, "int");
}

TEST(TagParser, StructWithVariable_GivesStructMemberAndVariable) {
  EXPECT_EQ(TagsOf("struct S { int x; } v;"), "s S:struct; m S::x:int; v v;");
}

TEST(TagParser, AnonymousTypedef_DropsTheScopeOfItsMembers) {
  EXPECT_EQ(TagsOf("typedef struct { int x; } T;"), "m x:int; t T;");
}

TEST(TagParser, ForwardDeclaration_YieldsNoTag) {
  EXPECT_EQ(TagsOf("class A; struct B; union C; enum D; namespace E = F;"), "");
}

TEST(TagParser, Bases_AreInherited) {
  EXPECT_EQ(Field(ParseTags("class A : public B, private C {"), "A", "inherits"), "B,C");
}

TEST(TagParser, QualifiedFunction_HasItsClassAndSignature) {
  const test::TagRun run = ParseTags("void A::f(int i) { }");
  EXPECT_EQ(Field(run, "f", "class"), "A");
  EXPECT_EQ(Field(run, "f", "signature"), "(int i)");
}

TEST(TagParser, OldStyleParameters_LeaveTheSignatureEmpty) {
  const test::TagRun run = ParseTags("int f(a, b) int a; char *b; { }", "a.c");
  EXPECT_EQ(Field(run, "f", "line"), "1");
  EXPECT_EQ(Field(run, "f", "signature"), "");
}

TEST(TagParser, VirtualEqualsZero_IsPureVirtual) {
  const test::TagRun run = ParseTags("class A { virtual void f() = 0; virtual void g(); };");
  EXPECT_EQ(Field(run, "f", "implementation"), "pure virtual");
  EXPECT_EQ(Field(run, "g", "implementation"), "virtual");
}

TEST(TagParser, Operators_KeepTheirBlank) {
  EXPECT_EQ(
      TagsOf("struct A { void* operator new(int); int operator ()(int); bool operator==(A); };"),
      "s A:struct; p A::operator new:void; p A::operator ():int; p A::operator ==:bool;");
}

TEST(TagParser, ExternC_IsReadInTheSameScope) {
  EXPECT_EQ(TagsOf("extern \"C\" { int f(void); }"), "p f:int;");
}

TEST(TagParser, CaseLabel_EndsTheStatement) {
  test::TagRunOptions options;
  options.locals = true;
  EXPECT_EQ(TagsOf("void f() { switch (a) { case X: int b; } }", "a.cpp", options),
            "f f:void; l b:int;");
}

TEST(TagParser, PublicColon_ChangesTheAccessOfTheBlock) {
  const test::TagRun run = ParseTags("class A { int a; public: int b; int c; };");
  EXPECT_EQ(Field(run, "a", "access"), "private");
  EXPECT_EQ(Field(run, "b", "access"), "public");
  EXPECT_EQ(Field(run, "c", "access"), "public");
}

TEST(TagParser, Attribute_IsAllThatIsLost) {
  EXPECT_EQ(TagsOf("__attribute__((x)) int a;"), "v a:int;");
}

TEST(TagParser, UnbalancedBraceAtTheEnd_GivesOneLogLine) {
  const test::TagRun run = ParseTags("int a;\n}");
  EXPECT_EQ(test::ShortTags(run.lines), "v a:int;");
  EXPECT_EQ(run.log, "unexpected closing brace at line:2 --> \n");
}

TEST(TagParser, BracesOfBothBranches_AreReadAgainWithTheLineEnds) {
  const std::string branches =
      "void f() {\n#if A\n if (x) {\n#else\n if (y) {\n#endif\n }\n}\nint after;\n";
  EXPECT_EQ(TagsOf(branches), "f f:void; v after:int;");
  EXPECT_EQ(TagsOf(branches + "void g() {\n{\n}\nint inside;\n}\nint last;"),
            "f f:void; v after:int; f g:void; v last:int;");
}

TEST(TagParser, Locals_BelongToTheirFunctionAndNoClass) {
  test::TagRunOptions options;
  options.locals = true;
  EXPECT_EQ(TagsOf("class A { void f() { int x; } };", "a.cpp", options),
            "c A:class; f A::f:void; l x:int;");
  EXPECT_EQ(TagsOf("namespace n { void f() { int x; } }", "a.cpp", options),
            "n n:namespace; f n::f:void; l x:int;");
  const std::string lines = ParseTags("class A { void f() { int x; } };", "a.cpp", options).lines;
  EXPECT_EQ(lines.substr(lines.find("x\t")).find("A"), std::string::npos) << lines;
}

TEST(TagParser, UnbalancedParenAtTheEnd_KeepsTheTagsBefore) {
  EXPECT_EQ(TagsOf("int a;\n)"), "v a:int;");
}

TEST(TagParser, OpenParenAtTheEnd_IsLoggedWithItsLine) {
  EXPECT_EQ(ParseTags("int a;\nint f(int").log,
            "failed to find match for ( at line:2 --> \n"
            "confusing argument declarations beginning at line:2 --> \n");
}

TEST(TagParser, OpenBody_IsLoggedWithItsLine) {
  EXPECT_EQ(ParseTags("\nvoid f() {\n\n").log, "failed to find match for { at line:2 --> \n");
}

TEST(TagParser, EndAfterParameters_IsLogged) {
  EXPECT_EQ(ParseTags("int f(int) const").log,
            "confusing argument declarations beginning at line:1 --> \n");
}

TEST(TagParser, BraceInInitialiser_IsLogged) {
  EXPECT_EQ(ParseTags("int a = 3 };\nint b;").log, "unexpected closing brace at line:1 --> \n");
}

TEST(TagParser, FriendsAccess_IsFriend) {
  EXPECT_EQ(Field(ParseTags("class A { friend int f(); };"), "f", "access"), "friend");
}

TEST(TagParser, QualifiersAfterParameters_ArePartOfTheSignature) {
  EXPECT_EQ(Field(ParseTags("struct A { void f( int  a ,\n char b) const volatile; };"), "f",
                  "signature"),
            "( int a , char b) const volatile");
}

TEST(TagParser, ThirdPass_IsAnAssertion) {
  EXPECT_DEATH(theTagC.runPass(3, Language::cC, false), "passCount < 3");
}

TEST(TagParser, QualifiedTags_FollowWhenWanted) {
  theTagParser.addQualifiedTag = true;
  const test::TagRun run = ParseTags("struct A { int b; enum C { D }; };");
  theTagParser.addQualifiedTag = false;
  EXPECT_NE(run.lines.find("A::b\t"), std::string::npos);
  EXPECT_NE(run.lines.find("A::D\t"), std::string::npos);
}

// Tables of declarations and tokens.

TEST(TagStatement, Tokens_HaveTheirValues) {
  EXPECT_EQ(TOKEN_NONE, 0);
  EXPECT_EQ(TOKEN_ARGS, 1);
  EXPECT_EQ(TOKEN_BRACE_CLOSE, 2);
  EXPECT_EQ(TOKEN_BRACE_OPEN, 3);
  EXPECT_EQ(TOKEN_COMMA, 5);
  EXPECT_EQ(TOKEN_DOUBLE_COLON, 6);
  EXPECT_EQ(TOKEN_KEYWORD, 7);
  EXPECT_EQ(TOKEN_NAME, 8);
  EXPECT_EQ(TOKEN_PAREN_NAME, 10);
  EXPECT_EQ(TOKEN_SEMICOLON, 11);
}

TEST(TagStatement, Scopes_HaveTheirValues) {
  EXPECT_EQ(SCOPEKIND_GLOBAL, 0);
  EXPECT_EQ(SCOPEKIND_STATIC, 1);
  EXPECT_EQ(SCOPEKIND_EXTERN, 2);
  EXPECT_EQ(SCOPEKIND_FRIEND, 3);
  EXPECT_EQ(SCOPEKIND_TYPEDEF, 4);
}

TEST(TagStatement, Declarations_AreContextualOrTypesAsGiven) {
  // Value, whether contextual, whether a type specifier.
  constexpr std::string_view cRows[] = {"--", "-t", "ct", "ct", "-t", "--", "--", "c-",
                                        "--", "--", "--", "--", "ct", "--", "ct"};
  ASSERT_EQ(std::size(cRows), static_cast<size_t>(DECLARES_COUNT));
  for (int value = 0; value < DECLARES_COUNT; ++value) {
    const auto declaration = static_cast<Declaration>(value);
    EXPECT_EQ(IsContextual(declaration), cRows[value][0] == 'c') << value;
    EXPECT_EQ(IsTypeSpecifier(declaration), cRows[value][1] == 't') << value;
  }
  EXPECT_EQ(DECLARES_CLASS, 2);
  EXPECT_EQ(DECLARES_INTERFACE, 7);
  EXPECT_EQ(DECLARES_PACKAGE, 10);
  EXPECT_EQ(DECLARES_UNION, 14);
}

TEST(TagStatement, ImplementationsAndAccesses_HaveTheirTexts) {
  EXPECT_EQ(ImplementationText(IMP_DEFAULT), "?");
  EXPECT_EQ(ImplementationText(IMP_ABSTRACT), "abstract");
  EXPECT_EQ(ImplementationText(IMP_VIRTUAL), "virtual");
  EXPECT_EQ(ImplementationText(IMP_PURE_VIRTUAL), "pure virtual");
  constexpr std::string_view cAccesses[] = {"???",       "local",  "private",
                                            "protected", "public", "default"};
  for (int access = 0; access < ACCESS_COUNT; ++access)
    EXPECT_EQ(AccessText(static_cast<Access>(access)), cAccesses[access]);
}

TEST(TagStatement, ValuesBeyondTheTables_AreAssertions) {
  EXPECT_DEATH(ImplementationText(IMP_COUNT), "\\(int\\) imp < IMP_COUNT");
  EXPECT_DEATH(AccessText(ACCESS_COUNT), "\\(int\\) access < ACCESS_COUNT");
  EXPECT_DEATH(TagTypeOf(DECLARES_BASE), "\"Unexpected declaration\" == NULL");
}

TEST(TagStatement, Ring_RemembersSevenTokens) {
  Statement st;
  st.Start(nullptr, Language::cCpp, 1);
  for (int line = 1; line < 7; ++line) st.stepTokenForward(line);
  EXPECT_EQ(st.tokenIndex, 6);
  st.stepTokenForward(7);
  EXPECT_EQ(st.tokenIndex, 0);
  EXPECT_EQ(st.earlierToken(6).lineNumber, 1);
  st.stepTokenBack(8);
  EXPECT_EQ(st.tokenIndex, 6);
  EXPECT_DEATH(st.earlierToken(7), "n < num");
}

TEST(TagStatement, NotingWhatIsNoName_IsAnAssertion) {
  Statement st;
  st.Start(nullptr, Language::cCpp, 1);
  EXPECT_DEATH(st.noteName(), "isType \\(activeToken \\(st\\), TOKEN_NAME\\)");
}

TEST(TagStatement, DefaultAccess_IsThatOfTheBlock) {
  struct Row {
    Declaration declaration;
    Language language;
    Access access;
  };
  constexpr Row cRows[] = {{DECLARES_STRUCT, Language::cCpp, ACCESS_PUBLIC},
                           {DECLARES_INTERFACE, Language::cJava, ACCESS_PUBLIC},
                           {DECLARES_CLASS, Language::cCpp, ACCESS_PRIVATE},
                           {DECLARES_CLASS, Language::cJava, ACCESS_DEFAULT},
                           {DECLARES_UNION, Language::cCpp, ACCESS_UNKNOWN},
                           {DECLARES_NAMESPACE, Language::cCpp, ACCESS_UNKNOWN}};
  for (const Row& row : cRows) {
    Statement outer, inner;
    outer.Start(nullptr, row.language, 1);
    outer.declaration = row.declaration;
    inner.Start(&outer, row.language, 1);
    EXPECT_EQ(inner.access, row.access);
  }
}

}  // namespace
}  // namespace zendry
