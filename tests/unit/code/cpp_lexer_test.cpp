#include "code/CppLexer.h"

#include <gtest/gtest.h>

#include <string>

namespace zendry {
namespace {

// The pieces as "w:word n:12 l:'x' s:-> d:#line".
std::string Pieces(std::string_view text) {
  CppLexer lexer(text);
  std::string shown;
  for (CppPiece piece = lexer.Next(); piece.kind != CppPiece::Kind::cEnd; piece = lexer.Next()) {
    if (!shown.empty()) shown += ' ';
    shown += "wnlsd"[static_cast<int>(piece.kind)];
    shown.append(":").append(piece.text);
  }
  return shown;
}

TEST(CppLexer, WordsNumbersLiteralsAndSigns) {
  EXPECT_EQ(Pieces("int a1 = 0x1F + 'c';"), "w:int w:a1 s:= n:0x1F s:+ l:'c' s:;");
  EXPECT_EQ(Pieces(""), "");
  EXPECT_EQ(Pieces(" \t\r\n"), "");
}

TEST(CppLexer, Signs_AreAsLongAsTheyCanBe) {
  EXPECT_EQ(Pieces("a<=>b<<=c>>=d->*e..."), "w:a s:<=> w:b s:<<= w:c s:>>= w:d s:->* w:e s:...");
  EXPECT_EQ(Pieces("a->b::c"), "w:a s:-> w:b s::: w:c");
}

TEST(CppLexer, ADirective_EndsAfterItsComment) {
  EXPECT_EQ(Pieces("#if /* a(\n b */ c\nd"), "d:#if /* a(\n b */ c w:d");
  EXPECT_EQ(Pieces("#if /* a */ // /*\nd"), "d:#if /* a */ // /* w:d");
  EXPECT_EQ(Pieces("#if /* a"), "d:#if /* a");
}

TEST(CppLexer, TwoClosingAngles_AreTwoSigns) {
  EXPECT_EQ(Pieces("a<b<c>> d"), "w:a s:< w:b s:< w:c s:> s:> w:d");
}

TEST(CppLexer, Numbers_TakeSeparatorsAndTheSignOfTheirExponent) {
  EXPECT_EQ(Pieces("1'000'000"), "n:1'000'000");
  EXPECT_EQ(Pieces("1e+5+1"), "n:1e+5 s:+ n:1");
  EXPECT_EQ(Pieces("0x1p-3"), "n:0x1p-3");
  EXPECT_EQ(Pieces("0x1e+5"), "n:0x1e s:+ n:5");
  EXPECT_EQ(Pieces("1.5f-2"), "n:1.5f s:- n:2");
}

TEST(CppLexer, Literals_HavePrefixesAndEndings) {
  EXPECT_EQ(Pieces("u8\"a\"s L'x'"), "l:u8\"a\"s l:L'x'");
  EXPECT_EQ(Pieces("x\"a\""), "w:x l:\"a\"");
  EXPECT_EQ(Pieces(R"("a\"b" c)"), R"(l:"a\"b" w:c)");
}

TEST(CppLexer, RawStrings_EndWithTheirDelimiter) {
  EXPECT_EQ(Pieces("R\"x(a)\"b)x\" c"), "l:R\"x(a)\"b)x\" w:c");
  EXPECT_EQ(Pieces("u8R\"(a\nb)\""), "l:u8R\"(a\nb)\"");
}

TEST(CppLexer, ARawStringsDelimiter_HasAtMostSixteenCharacters) {
  const std::string most(CppLexer::cLongestRawMark, 'd');
  const auto raw = [](const std::string& mark) { return "R\"" + mark + "(\n)" + mark + "\" x"; };
  EXPECT_EQ(Pieces(raw(most)), "l:R\"" + most + "(\n)" + most + "\" w:x");
  EXPECT_NE(Pieces(raw(most + "d")), "l:R\"" + most + "d(\n)" + most + "d\" w:x");
}

TEST(CppLexer, Comments_AreNoPieces) {
  EXPECT_EQ(Pieces("a // b\nc /* d\ne */ f"), "w:a w:c w:f");
  EXPECT_EQ(Pieces("a // b"), "w:a");
}

TEST(CppLexer, ACommentWithoutAnEnd_IsAnEmptyLiteral) {
  EXPECT_EQ(Pieces("a /* b"), "w:a l:");
  EXPECT_EQ(Pieces("a */ b"), "w:a s:*/ w:b");
}

TEST(CppLexer, Directives_GoOnAfterABackslash) {
  EXPECT_EQ(Pieces("#define A \\\n 1\nb"), "d:#define A \\\n 1 w:b");
  EXPECT_EQ(Pieces("a # b\n  # c"), "w:a s:# w:b d:# c");
  EXPECT_EQ(Pieces("#"), "d:#");
  EXPECT_EQ(Pieces("#\\"), "d:#\\");
}

TEST(CppLexer, ALiteralWithoutAnEnd_EndsWithItsLine) {
  EXPECT_EQ(Pieces("\"a\nb"), "l:\"a w:b");
  EXPECT_EQ(Pieces("'"), "l:'");
  EXPECT_EQ(Pieces("R\"x(a"), "l:R\"x(a");
}

}  // namespace
}  // namespace zendry
