#include "code/DeclScan.h"

#include <gtest/gtest.h>

#include <string>

#include "CodeText.h"
#include "code/TextScanner.h"

namespace zendry {
namespace {

// The chain whose last word the caret is in or after.
std::string ChainAt(const std::string& text) {
  const test::CodeText editor(text);
  TextScanner scanner(editor);
  int place = scanner.position;
  if (place > 0 && !IsWordChar(scanner.At(place))) --place;
  return readChain(scanner, place).text;
}

// The type before the caret.
std::string TypeBefore(const std::string& text) {
  const test::CodeText editor(text);
  TextScanner scanner(editor);
  ScanBudget budget;
  return findDeclType(scanner, scanner.position, budget);
}

// The type of the declaration of `name` nearest before the caret, and the text from the name on.
std::string DeclOf(const std::string& name, const std::string& text, int lowerBound = 0) {
  const test::CodeText editor(text);
  TextScanner scanner(editor);
  const auto decl = findTextDecl(scanner, name, scanner.position, lowerBound);
  return decl ? decl->type + " at " + std::to_string(decl->position) : "none";
}

std::string TypeOf(const std::string& name, const std::string& text) {
  const std::string decl = DeclOf(name, text);
  return decl.substr(0, decl.find(' '));
}

struct Row {
  const char* text;
  const char* expected;
};

TEST(ReadChain, Chains_ReadAsDots) {
  const Row rows[] = {{"p", "p"},
                      {"x = p@;", "p"},
                      {"(foo@", "foo"},
                      {"p.x", "p.x"},
                      {"p->x", "p.x"},
                      {"p->next[i].x", "p.next.x"},
                      {"p->next[i].x@ = 1", "p.next.x"},
                      {"a.b->c.d", "a.b.c.d"},
                      {"p[1][2].x", "p.x"},
                      {"p[q[i]].x", "p.x"},
                      {"p[f(1, 2)].x", "p.x"},
                      {"a . b", "a.b"},
                      {"p\n  ->x", "p.x"},
                      {"p->\n  x", "p.x"},
                      {"p /* the first */ . x", "p.x"},
                      {"p // the first\n  .x", "p.x"},
                      {"this->x", "this.x"}};
  for (const Row& row : rows) EXPECT_EQ(ChainAt(row.text), row.expected) << row.text;
}

TEST(ReadChain, OtherCharacters_EndTheChain) {
  const Row rows[] = {{"a + b", "b"},    {"a b", "b"},   {"!b", "b"},       {"a > b", "b"},
                      {"a>b", "b"},      {"a - b", "b"}, {"std::s", "s"},   {"*p", "p"},
                      {"f(x)", "x"},     {"a;b", "b"},   {"a, b.c", "b.c"}, {"\"s\" b", "b"},
                      {"x = y.z", "y.z"}};
  for (const Row& row : rows) EXPECT_EQ(ChainAt(row.text), row.expected) << row.text;
}

TEST(ReadChain, CaretInsideAWord_TakesTheWholeWord) {
  EXPECT_EQ(ChainAt("p.na@me = 1"), "p.name");
  EXPECT_EQ(ChainAt("p.@name = 1"), "p.name");
}

TEST(ReadChain, Places_AreThoseOfTheChain) {
  const test::CodeText editor("x = ab->cd;");
  TextScanner scanner(editor);
  const Chain chain = readChain(scanner, 8);
  EXPECT_EQ(chain.text, "ab.cd");
  EXPECT_EQ(chain.start, 4);
  EXPECT_EQ(chain.wordEnd, 10);
}

TEST(ReadChain, WordInAComment_IsReadTheSameWay) {
  EXPECT_EQ(ChainAt("a; // see p->x@ there"), "p.x");
  EXPECT_EQ(ChainAt("a; /* see p->x@ there */"), "p.x");
}

TEST(ReadChain, BrokenText_GivesWhatThereIs) {
  const Row rows[] = {{"", ""},         {".", ""},      {"->", ""},      {"]", ""},
                      {"].x", ".x"},    {"a].x", ".x"}, {"f().x", ".x"}, {"->x", ".x"},
                      {"a..b", "a..b"}, {">x", "x"},    {"->>x", "x"}};
  for (const Row& row : rows) EXPECT_EQ(ChainAt(row.text), row.expected) << row.text;
}

TEST(ReadChain, ChainOf512Characters_IsTheLongest) {
  EXPECT_EQ(ChainAt(std::string(512, 'a')), std::string(512, 'a'));
  EXPECT_EQ(ChainAt(std::string(513, 'a')), "");
  EXPECT_EQ(ChainAt("a." + std::string(511, 'b')), "");
  EXPECT_EQ(ChainAt(std::string(1'000'000, '.')), "");
}

TEST(ReadChain, IndexWithoutStart_EndsInBoundedTime) {
  EXPECT_EQ(ChainAt("a" + std::string(1'000'000, ' ') + "].x"), ".x");
  EXPECT_EQ(ChainAt(std::string(1'000'000, ']') + ".x"), ".x");
}

TEST(OperandEnd, CallsAndIndexes_ArePassed) {
  const Row rows[] = {{"p.", "p"},          {"p->", "p"},      {"p[i].", "p"},    {"f(x)->", "f"},
                      {"f(g(x), y).", "f"}, {"a[i][j].", "a"}, {"f(x)[2].", "f"}, {"f (x) .", "f"}};
  for (const Row& row : rows) {
    const test::CodeText editor(row.text);
    TextScanner scanner(editor);
    const int end = operandEnd(scanner, scanner.position - 1);
    EXPECT_EQ(editor.text.substr(end, 1), row.expected) << row.text;
  }
}

TEST(OperandEnd, WhatIsNoCall_IsLeft) {
  for (const char* text : {"(a).", "x = (a).", ").", "].", "(*p)->", "f(x.", "", "."}) {
    const test::CodeText editor(text);
    TextScanner scanner(editor);
    const int place = std::max(scanner.position - 1, 0);
    EXPECT_LE(operandEnd(scanner, place), place) << text;
  }
  const test::CodeText editor("f + (a).");
  TextScanner scanner(editor);
  EXPECT_EQ(operandEnd(scanner, 7), 7);
}

TEST(FindDeclType, TypeBeforeTheName_IsItsFirstWord) {
  const Row rows[] = {{"; Foo ", "Foo"},          {"Foo ", "Foo"},
                      {"{ Foo *", "Foo"},         {"} Foo* ", "Foo"},
                      {"(Foo &", "Foo"},          {": Foo ", "Foo"},
                      {"std::Foo ", "Foo"},       {"; Foo\n\n\t  ", "Foo"},
                      {"; Foo /* it */ ", "Foo"}, {"; unsigned int ", "unsigned"},
                      {"; Foo * * const ", "Foo"}};
  for (const Row& row : rows) EXPECT_EQ(TypeBefore(row.text), row.expected) << row.text;
}

TEST(FindDeclType, ConstAndStatic_ArePassedOver) {
  EXPECT_EQ(TypeBefore("; static const Foo *"), "Foo");
  EXPECT_EQ(TypeBefore("; const Foo& "), "Foo");
  EXPECT_EQ(TypeBefore("; static Foo "), "Foo");
}

TEST(FindDeclType, WordsThatSayNothingOfMembers_ArePassedOver) {
  for (const char* word : {"class", "constexpr", "enum", "extern", "inline", "mutable", "register",
                           "struct", "typename", "union", "volatile"})
    EXPECT_EQ(TypeBefore(std::string("; ") + word + " Foo "), "Foo") << word;
}

TEST(FindDeclType, KeywordsOfStatements_AreNoTypes) {
  for (const char* word : {"case", "co_return", "delete", "else", "goto", "new", "not", "return",
                           "sizeof", "throw", "using"})
    EXPECT_EQ(TypeBefore(std::string("; ") + word + " "), "") << word;
}

TEST(FindDeclType, TemplateArguments_ArePassedOver) {
  const Row rows[] = {{"; vector<Foo> ", "vector"},
                      {"std::vector<Foo> ", "vector"},
                      {"; map<int, Foo> ", "map"},
                      {"; map < int , Foo > *", "map"},
                      {"; vector<> ", "vector"}};
  for (const Row& row : rows) EXPECT_EQ(TypeBefore(row.text), row.expected) << row.text;
}

TEST(FindDeclType, OtherTemplateArguments_GiveNone) {
  for (const char* text : {"; vector<Foo*> ", "; vector<vector<Foo> > ", "; map<std::string, Foo> ",
                           "; a->", "; a > ", "; a >> ", "> ", "; Foo> "})
    EXPECT_EQ(TypeBefore(text), "") << text;
}

TEST(FindDeclType, CommaAfterAType_BeginsTheDeclaration) {
  EXPECT_EQ(TypeBefore("(Foo a, Bar "), "Bar");
  EXPECT_EQ(TypeBefore("(Foo a, const Bar & "), "Bar");
}

TEST(FindDeclType, CommaBeforeTheName_GoesBackToTheTypeOfTheList) {
  const Row rows[] = {{"; Foo a, ", "Foo"},    {"; Foo a, b, c, ", "Foo"},
                      {"; Foo *a, *", "Foo"},  {"; Foo a = 3, ", "Foo"},
                      {"; Foo a[3], ", "Foo"}, {"(const Foo a, ", "Foo"}};
  for (const Row& row : rows) EXPECT_EQ(TypeBefore(row.text), row.expected) << row.text;
}

TEST(FindDeclType, ArgumentsOfACall_DeclareNothing) {
  for (const char* text : {"f(a, ", "; f(a, b, ", "f(1, ", "f(\"s\", ", "f(2 + a, "})
    EXPECT_EQ(TypeBefore(text), "") << text;
}

TEST(FindDeclType, OtherCharacters_GiveNone) {
  for (const char* text : {"; a = ", "; a = *", "; a + ", "; a < ", "; !", "; a[", "; \"s\" ",
                           "#include ", "; a ? ", "; a.", "; ", "{", "(", "", "; *", "; const "})
    EXPECT_EQ(TypeBefore(text), "") << text;
}

TEST(FindDeclType, LogicalAnd_DeclaresNothing) {
  EXPECT_EQ(TypeBefore("(a && "), "");
  EXPECT_EQ(TypeBefore("(Foo &&"), "Foo");
  EXPECT_EQ(TypeBefore("(Foo&& "), "Foo");
}

TEST(FindDeclType, WordsThatDontFitTheBuffer_GiveNone) {
  EXPECT_EQ(TypeBefore("; " + std::string(510, 'a') + " "), std::string(510, 'a'));
  EXPECT_EQ(TypeBefore("; " + std::string(511, 'a') + " "), "");
  EXPECT_EQ(TypeBefore("; Foo a" + std::string(600, '+') + ", "), "Foo");
}

TEST(FindDeclType, FarAwayType_IsNone) {
  EXPECT_EQ(TypeBefore("; Foo" + std::string(1'000'000, ' ')), "");
  EXPECT_EQ(TypeBefore("; Foo<" + std::string(1'000'000, ',') + "> "), "");
  EXPECT_EQ(TypeBefore("; Foo a" + std::string(1'000'000, ',')), "");
}

TEST(FindDeclType, SpentBudget_GivesNone) {
  const test::CodeText editor("; Foo ");
  TextScanner scanner(editor);
  ScanBudget budget{3};
  EXPECT_EQ(findDeclType(scanner, scanner.position, budget), "");
  EXPECT_EQ(budget.reads, 0);
}

TEST(FindTextDecl, NearestDeclarationGoingBackward_Wins) {
  EXPECT_EQ(TypeOf("f", "Foo f; Bar f; f"), "Bar");
  EXPECT_EQ(TypeOf("f", "Foo f; { Bar f; } f"), "Bar");
  EXPECT_EQ(TypeOf("f", "{ Foo f; { Bar g; } f"), "Foo");
}

TEST(FindTextDecl, BracesWithinAName_AreNoPartOfIt) {
  EXPECT_EQ(TypeOf("xy", "Foo xy; Bar x}y; xy"), "Foo");
  EXPECT_EQ(TypeOf("xy", "Foo xy; } Bar x{y; xy"), "Foo");
}

TEST(FindTextDecl, NameBeforeAMemberOperator_IsAUse) {
  EXPECT_EQ(TypeOf("x", "Foo x; Bar x.a; Bar x->a;"), "Foo");
}

TEST(OperandEnd, IsBeforeEachOperator) {
  for (const char* sign : {".", "->", "::", " .", " -> "}) {
    const std::string text = std::string("ab") + sign;
    const test::CodeText editor(text);
    TextScanner scanner(editor);
    EXPECT_EQ(operandEnd(scanner, static_cast<int>(text.size()) - 1), 1) << sign;
  }
}

TEST(FindTextDecl, Search_BeginsAtTheGivenPlace) {
  const test::CodeText editor("Foo x; Bar x; Baz");
  TextScanner scanner(editor);
  const auto decl = findTextDecl(scanner, "x", 8, 0);
  ASSERT_TRUE(decl);
  EXPECT_EQ(decl->type, "Foo");
}

TEST(FindTextDecl, Position_IsThatOfTheName) {
  EXPECT_EQ(DeclOf("f", "x; Foo f; f"), "Foo at 7");
  EXPECT_EQ(DeclOf("f", "x; Foo\nf; f"), "Foo at 7");
  EXPECT_EQ(DeclOf("p", "x; Foo *p; p"), "Foo at 8");
}

TEST(FindTextDecl, DeclarationsOfAllKinds_AreFound) {
  const Row rows[] = {{"Foo *f; ", "Foo"},
                      {"Foo &f = x; ", "Foo"},
                      {"Foo f(1); ", "Foo"},
                      {"Foo f[10]; ", "Foo"},
                      {"Foo a, f; ", "Foo"},
                      {"Foo a, *f; ", "Foo"},
                      {"for (Foo f : all) ", "Foo"},
                      {"for (const Foo& f : all) ", "Foo"},
                      {"void g(Foo f) { ", "Foo"},
                      {"void g(int a, Foo f) { ", "Foo"},
                      {"catch (Foo &f) { ", "Foo"},
                      {"std::vector<Foo> f; ", "vector"},
                      {"static Foo f = 3; ", "Foo"},
                      {"Foo f; // Bar f;\n ", "Foo"},
                      {"Foo f; /* Bar f; */ ", "Foo"}};
  for (const Row& row : rows) EXPECT_EQ(TypeOf("f", row.text), row.expected) << row.text;
}

TEST(FindTextDecl, Uses_AreNoDeclarations) {
  for (const char* text :
       {"f = 1; ", "g(f); ", "g(a, f); ", "return f; ", "delete f; ", "x = f; ", "else f.x = 1; ",
        "while (a && f) ", "x.f = 1; ", "p->f = 1; ", "if (a < f) ", "(a * f.x) ", "(a & f->x) "})
    EXPECT_EQ(TypeOf("f", text), "none") << text;
}

TEST(FindTextDecl, LongerNames_AreOthers) {
  EXPECT_EQ(TypeOf("f", "Foo fx; "), "none");
  EXPECT_EQ(TypeOf("f", "Foo xf; "), "none");
  EXPECT_EQ(TypeOf("name", "Foo name; Bar name2; Bar rename; "), "Foo");
}

TEST(FindTextDecl, MatchBrokenOff_StartsAgainAfterTheCharacter) {
  EXPECT_EQ(TypeOf("aab", "Foo aab; aaab "), "Foo");
  EXPECT_EQ(TypeOf("ab", "Foo ab; abb "), "Foo");
}

TEST(FindTextDecl, LowerBound_EndsTheSearch) {
  const std::string text = "Foo f;\nvoid g() { f";
  EXPECT_EQ(DeclOf("f", text, 7), "none");
  EXPECT_EQ(DeclOf("f", text, 0), "Foo at 4");
}

TEST(FindTextDecl, BrokenText_HasNone) {
  for (const char* text : {"", "f", " f", "* f ", ", f", "} } } f", "{{{ f", "> f", "f f f f",
                           "/* f", "*/ f", "// Foo f"})
    EXPECT_EQ(TypeOf("f", text), text == std::string("f f f f") ? "f" : "none") << text;
  EXPECT_EQ(TypeOf("", "Foo f; "), "none");
  EXPECT_EQ(TypeOf("f", std::string("Foo f;\0\0 ", 9)), "Foo");
}

TEST(FindTextDecl, ArtfulText_EndsSoon) {
  std::string table = "{";
  for (int i = 0; i < 300'000; ++i) table += "1, ";
  EXPECT_EQ(TypeOf("1", table), "none");
  std::string words;
  for (int i = 0; i < 300'000; ++i) words += "+f f ";
  TypeOf("f", words);
}

TEST(DeclarationAt, WordAfterAType_IsADeclaration) {
  const test::CodeText editor("; static const Foo *p@ = 0;");
  TextScanner scanner(editor);
  const auto decl = declarationAt(scanner, scanner.position);
  ASSERT_TRUE(decl);
  EXPECT_EQ(decl->type, "Foo");
  EXPECT_EQ(decl->position, 20);
}

TEST(DeclarationAt, UseOfAName_IsNone) {
  for (const char* text : {"; f@", "; f@.", "return f@;", "; Foo f@.x", "; Foo f@ -> x", "a.f@",
                           "g(a, f@)", "", "@", "(f@"}) {
    const test::CodeText editor(text);
    TextScanner scanner(editor);
    EXPECT_FALSE(declarationAt(scanner, scanner.position)) << text;
  }
}

}  // namespace
}  // namespace zendry
