#include "code/TypeText.h"

#include <gtest/gtest.h>

#include <string>

#include "code/CodeTokens.h"

namespace zendry {
namespace {

std::string Round(std::string_view text) {
  const auto type = ReadTypeText(text);
  return type ? Print(*type) : "none";
}

TEST(ReadTypeText, NamesArgumentsAndPointers) {
  const std::pair<const char*, const char*> rows[] = {
      {"Foo", "Foo"},
      {"const Foo &", "Foo"},
      {"Foo const* const*", "Foo**"},
      {"static struct Foo", "Foo"},
      {"typename ns::A::B&&", "ns::A::B"},
      {"::Foo", "Foo"},
      {"std::vector<Foo>", "std::vector<Foo>"},
      {"std::map<std::string, std::vector<Foo*>>::iterator",
       "std::map<std::string,std::vector<Foo*>>::iterator"},
      {"A<B<C<D> > >*", "A<B<C<D>>>*"},
      {"A<3>", "A<>"},
      {"A<(1 > 2), B>", "A<,B>"},
      {"std::array<Foo, sizeof(int) + 1>", "std::array<Foo,>"},
      {"unique_ptr<Foo[]>", "unique_ptr<Foo*>"},
      {"function<Foo(int, Bar)>", "function<Foo>"},
      {"unsigned long int", "int"},
      {"A::template B<C>", "A::B<C>"},
      {"A<>", "A"},
      {"A /* B */ < // C\n D>", "A<D>"},
  };
  for (const auto& [text, expected] : rows) EXPECT_EQ(Round(text), expected) << text;
}

TEST(ReadTypeText, BrokenText_IsNone) {
  for (const char* text :
       {"",  "*",     "&",      "<",   ">",     "A<",   "A<B",  "A<B;>", "A::", "::", "A B",
        "5", "\"A\"", "return", "new", "const", "A<{>", "A<(>", "A->B",  "A.b", "A,"})
    EXPECT_EQ(Round(text), "none") << text;
}

TEST(ReadTypeText, DeepOrLong_IsNone) {
  std::string deep, path = "a";
  for (int i = 0; i < 1000; ++i) deep += "A<";
  for (int i = 0; i < 1000; ++i) path += "::a";
  EXPECT_EQ(Round(deep + "B" + std::string(1000, '>')), "none");
  EXPECT_EQ(Round(path), "none");
}

std::string Repeat(const std::string& piece, int times) {
  std::string text;
  for (int i = 0; i < times; ++i) text += piece;
  return text;
}

TEST(ReadTypeText, Limits_PartsArgumentsAndDepth) {
  EXPECT_EQ(Round("a" + Repeat("::a", 15)), "a" + Repeat("::a", 15));
  EXPECT_EQ(Round("a" + Repeat("::a", 16)), "none");
  EXPECT_EQ(Round("A<a" + Repeat(",a", 15) + ">"), "A<a" + Repeat(",a", 15) + ">");
  EXPECT_EQ(Round("A<a" + Repeat(",a", 16) + ">"), "A<a" + Repeat(",a", 15) + ">");
  EXPECT_EQ(Round(Repeat("A<", 12) + "B" + Repeat(">", 12)),
            Repeat("A<", 12) + "B" + Repeat(">", 12));
  EXPECT_EQ(Round(Repeat("A<", 13) + "B" + Repeat(">", 13)), Repeat("A<", 12) + Repeat(">", 12));
}

TEST(ReadType, ArgumentsWithoutEnd_AreNone) {
  const CodeTokens tokens("A < b");
  int at = 0;
  EXPECT_FALSE(ReadType(tokens, at));
}

TEST(IsBuiltIn, OneWordOfTheLanguage) {
  for (const char* text : {"int", "bool", "unsigned char", "const void*"})
    EXPECT_TRUE(IsBuiltIn(*ReadTypeText(text))) << text;
  for (const char* text : {"Int", "A", "A::integer"})
    EXPECT_FALSE(IsBuiltIn(*ReadTypeText(text))) << text;
  EXPECT_FALSE(IsBuiltIn(TypeText()));
}

TEST(TypeText, Parts) {
  const TypeText type = *ReadTypeText("std::map<int, ns::Foo*>::iterator");
  EXPECT_EQ(type.Name(), "iterator");
  EXPECT_EQ(type.Names(), "std::map::iterator");
  EXPECT_EQ(type.Names(1), "map::iterator");
  EXPECT_EQ(Print(type.Outer()), "std::map<int,ns::Foo*>");
  EXPECT_EQ(Print(type.Outer().Argument(1)), "ns::Foo*");
  EXPECT_TRUE(type.Outer().Argument(2).IsEmpty());
  EXPECT_TRUE(TypeText().Name().empty());
  EXPECT_TRUE(TypeText().Arguments().empty());
  EXPECT_TRUE(TypeText().Outer().IsEmpty());
}

// The tokens of a text with a blank between them.
std::string Tokens(const std::string& text) {
  const CodeTokens tokens(text);
  std::string joined;
  for (int i = 0; i < tokens.Count(); ++i)
    joined += (joined.empty() ? "" : " ") + std::string(tokens.Text(i));
  return joined;
}

TEST(CodeTokens, PassOverCommentsAndDirectives) {
  const std::pair<const char*, const char*> rows[] = {
      {"a->b::c&&d", "a -> b :: c && d"},
      {"A<B<C>>d<<e", "A < B < C > > d << e"},
      {"a // b\nc /* d */ e", "a c e"},
      {"#define A b\nc\n  # if 0\nd", "c d"},
      {"#define A \\\n b \\\r\n c\nd", "d"},
      {"a # b", "a # b"},
      {"\"a\\\"b\" 'c' \"d\"s u8\"e\" L'f'", "\"a\\\"b\" 'c' \"d\"s u8\"e\" L'f'"},
      {"R\"(a\" b)\" c R\"x(a)\" d)x\"", "R\"(a\" b)\" c R\"x(a)\" d)x\""},
      {"1.5e3 0x1F 1'000 2.", "1.5e3 0x1F 1'000 2."},
      {"rest of a comment */ a", "a"},
      {"\xc3\xa4x", "\xc3\xa4x"},
  };
  for (const auto& [text, expected] : rows) EXPECT_EQ(Tokens(text), expected) << text;
}

TEST(CodeTokens, RawTextsMark_HasUpTo16Characters) {
  const std::string mark = "0123456789abcdef";
  const std::string raw = "R\"" + mark + "(a\" b)" + mark + "\"";
  EXPECT_EQ(CodeTokens(raw).Count(), 1);
  const std::string longer = "R\"" + mark + "x(a\" b)" + mark + "x\"";
  EXPECT_EQ(Tokens(longer), "R\"" + mark + "x(a\" b ) " + mark + "x \"");
}

TEST(CodeTokens, AnglesFarApart_AreNone) {
  const auto angles = [](int between) { return CodeTokens("<" + Repeat(" a", between) + " >"); };
  EXPECT_EQ(angles(254).AngleEnd(0), 255);
  EXPECT_EQ(angles(255).AngleEnd(0), -1);
  EXPECT_EQ(angles(254).AngleStart(255), 0);
  EXPECT_EQ(angles(255).AngleStart(256), -1);
}

TEST(CodeTokens, BrokenText_HasTokensToo) {
  EXPECT_EQ(Tokens("\"a\nb"), "\"a b");
  EXPECT_EQ(Tokens("'a\nb"), "'a b");
  EXPECT_EQ(Tokens("R\"(a\nb"), "R\"(a b");
  EXPECT_EQ(Tokens("a\\"), "a \\");
  EXPECT_EQ(Tokens(std::string("a\0b", 3)), "a b");
  EXPECT_EQ(Tokens("#"), "");
  EXPECT_EQ(Tokens("#define A \\"), "");
  EXPECT_EQ(Tokens("\"\\"), "\"\\");
  const CodeTokens comment("a. /* b");
  EXPECT_EQ(comment.Text(comment.Count() - 1), "");
}

TEST(CodeTokens, Brackets_FindTheirPartners) {
  const CodeTokens tokens("( [ ] { ( } ) )");
  const int partners[] = {6, 2, 1, 5, -1, 3, 0, -1};
  for (int i = 0; i < tokens.Count(); ++i) EXPECT_EQ(tokens.Partner(i), partners[i]) << i;
  EXPECT_EQ(tokens.Partner(-1), -1);
  EXPECT_EQ(tokens.Partner(100), -1);
  EXPECT_EQ(tokens.Text(-1), "");
  EXPECT_EQ(tokens.End(100), 0);
}

TEST(CodeTokens, Angles_FindEachOther) {
  const CodeTokens tokens("a < b < c > , ( > ) > ; < x");
  EXPECT_EQ(tokens.AngleEnd(1), 10);
  EXPECT_EQ(tokens.AngleEnd(3), 5);
  EXPECT_EQ(tokens.AngleStart(10), 1);
  EXPECT_EQ(tokens.AngleStart(5), 3);
  EXPECT_EQ(tokens.AngleEnd(12), -1);
  EXPECT_EQ(CodeTokens("; >").AngleStart(1), -1);
  EXPECT_EQ(CodeTokens(">").AngleStart(0), -1);
}

TEST(IsInList, TakesWholeWords) {
  EXPECT_TRUE(IsInList("a bc d", "a"));
  EXPECT_TRUE(IsInList("a bc d", "bc"));
  EXPECT_TRUE(IsInList("a bc d", "d"));
  EXPECT_TRUE(IsInList("abc bc", "bc"));
  EXPECT_FALSE(IsInList("a bc d", "b"));
  EXPECT_FALSE(IsInList("a bc d", "c"));
  EXPECT_FALSE(IsInList("a bc d", ""));
  EXPECT_FALSE(IsInList("", "a"));
}

}  // namespace
}  // namespace zendry
