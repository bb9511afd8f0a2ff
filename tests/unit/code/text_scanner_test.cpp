#include "code/TextScanner.h"

#include <gtest/gtest.h>

#include <string>

#include "CodeText.h"

namespace zendry {
namespace {

// The tokens of readBack from the caret to the start of the text, in the order of the text.
std::string Backward(const std::string& text) {
  const test::CodeText editor(text);
  TextScanner scanner(editor);
  std::string read;
  while (const int c = scanner.readBack()) read.insert(read.begin(), static_cast<char>(c));
  return read;
}

std::string Forward(const std::string& text) {
  const test::CodeText editor("@" + text);
  TextScanner scanner(editor);
  std::string read;
  while (const int c = scanner.readForward()) read += static_cast<char>(c);
  return read;
}

TEST(TextScanner, WordCharacters_AreLettersDigitsAndUnderscore) {
  for (int c = 0; c < 256; ++c)
    EXPECT_EQ(IsWordChar(c), (c < 128 && std::isalnum(c)) || c == '_') << c;
  EXPECT_FALSE(IsWordChar(static_cast<char>(0xE9)));
}

TEST(TextScanner, Construction_StandsAtTheCaret) {
  const test::CodeText editor("abc@def");
  TextScanner scanner(editor);
  EXPECT_EQ(scanner.position, 3);
  EXPECT_EQ(scanner.limit, 6);
}

TEST(TextScanner, LimitNearTheCaret_Is64BytesAfterIt) {
  const test::CodeText far(std::string(10, 'a') + "@" + std::string(100, 'b'));
  EXPECT_EQ(TextScanner(far, TextScanner::Reach::cNearCaret).limit, 74);
  const test::CodeText near("aaa@bb");
  EXPECT_EQ(TextScanner(near, TextScanner::Reach::cNearCaret).limit, 5);
}

TEST(TextScanner, AtTheEnds_ReadsZero) {
  const test::CodeText editor("@");
  TextScanner scanner(editor);
  EXPECT_EQ(scanner.readBack(), 0);
  EXPECT_EQ(scanner.readForward(), 0);
  EXPECT_EQ(scanner.At(-1), 0);
  EXPECT_EQ(scanner.At(0), 0);
  EXPECT_EQ(scanner.position, 0);
}

TEST(TextScanner, LineComment_IsPassedWithItsNewline) {
  EXPECT_EQ(Backward("a; // Foo x;\nb"), "a; b");
  EXPECT_EQ(Forward("a; // Foo x;\nb"), "a; \nb");
}

TEST(TextScanner, LineCommentWithASecondOne_BeginsAtTheFirst) {
  EXPECT_EQ(Backward("a; // see http://x ///\nb"), "a; b");
}

TEST(TextScanner, LineWithoutComment_GivesItsNewline) {
  EXPECT_EQ(Backward("a / b\n\nc"), "a / b\n\nc");
  EXPECT_EQ(Forward("a / b\n\nc"), "a / b\n\nc");
}

TEST(TextScanner, CommentOfTheCaretsOwnLine_IsRead) {
  EXPECT_EQ(Backward("a // b"), "a // b");
}

TEST(TextScanner, BlockComment_IsPassed) {
  EXPECT_EQ(Backward("a/* x\n y // z */b"), "ab");
  EXPECT_EQ(Forward("a/* x\n y // z */b"), "ab");
  EXPECT_EQ(Backward("a/**/b/***/c"), "abc");
  EXPECT_EQ(Forward("a/**/b/***/c"), "abc");
}

TEST(TextScanner, StarBeforeAnotherSign_EndsNoComment) {
  EXPECT_EQ(Backward("/*x*/a *b"), "a *b");
  EXPECT_EQ(Backward("/*x*/a /b"), "a /b");
}

TEST(TextScanner, CommentAtTheStartOfTheText_IsPassed) {
  EXPECT_EQ(Backward("// x\nb"), "b");
  EXPECT_EQ(Backward("/* x */b"), "b");
}

TEST(TextScanner, SlashDirectlyBeforeTheLimit_IsASign) {
  const test::CodeText editor("@" + std::string(63, 'a') + "//b");
  TextScanner scanner(editor, TextScanner::Reach::cNearCaret);
  for (int i = 0; i < 63; ++i) EXPECT_EQ(scanner.readForward(), 'a');
  EXPECT_EQ(scanner.readForward(), '/');
  EXPECT_EQ(scanner.readForward(), 0);
}

TEST(TextScanner, CommentEndWithoutStart_IsText) {
  EXPECT_EQ(Backward("a */ b"), "a */ b");
  EXPECT_EQ(Backward("/*/ b"), "/*/ b");
}

TEST(TextScanner, CommentWithoutEnd_EndsTheText) {
  EXPECT_EQ(Forward("a /* b"), "a ");
  EXPECT_EQ(Forward("a /*"), "a ");
  EXPECT_EQ(Forward("a // b"), "a ");
  EXPECT_EQ(Forward("a /"), "a /");
}

TEST(TextScanner, Window_BeginsBeforeTheByteAskedFor) {
  const test::CodeText editor(std::string(20000, 'x'));
  TextScanner scanner(editor);
  scanner.At(10000);
  scanner.At(9500);
  scanner.At(13499);
  ASSERT_EQ(editor.ranges.size(), 1u);
  EXPECT_EQ(editor.ranges.back(), std::make_pair(9500, 13500));
  scanner.At(13500);
  EXPECT_EQ(editor.ranges.back(), std::make_pair(13000, 17000));
}

TEST(TextScanner, WindowNearTheEnds_StaysInTheText) {
  const test::CodeText editor(std::string(20000, 'x'));
  TextScanner scanner(editor);
  scanner.At(19999);
  EXPECT_EQ(editor.ranges.back(), std::make_pair(16000, 20000));
  scanner.At(3);
  EXPECT_EQ(editor.ranges.back(), std::make_pair(0, 4000));
  const test::CodeText small("abc");
  TextScanner(small).At(1);
  EXPECT_EQ(small.ranges.back(), std::make_pair(0, 3));
}

TEST(TextScanner, TextOverManyWindows_IsReadOnceAndWhole) {
  std::string text;
  for (int i = 0; i < 30000; ++i) text += static_cast<char>('a' + i % 26);
  EXPECT_EQ(Backward(text), text);
  EXPECT_EQ(Forward(text), text);
}

TEST(TextScanner, ControlBytesAndHighBytes_AreRead) {
  const test::CodeText editor(std::string("\x01\xff\x80", 3));
  TextScanner scanner(editor);
  EXPECT_EQ(scanner.readBack(), 0x80);
  EXPECT_EQ(scanner.readBack(), 0xff);
  EXPECT_EQ(scanner.readBack(), 1);
}

TEST(TextScanner, LongLineReadAgainAndAgain_IsSearchedOnce) {
  const test::CodeText editor(std::string(1'000'000, 'x') + "\ny");
  TextScanner scanner(editor);
  for (int i = 0; i < 1000; ++i) {
    scanner.position = 1'000'002;
    scanner.readBack();
    EXPECT_EQ(scanner.readBack(), '\n');
  }
  EXPECT_LT(editor.ranges.size(), 5000u);
}

TEST(TextScanner, LongCommentReadAgainAndAgain_IsSearchedOnce) {
  const test::CodeText editor("a /*" + std::string(1'000'000, 'x') + "*/y");
  TextScanner scanner(editor);
  for (int i = 0; i < 1000; ++i) {
    scanner.position = editor.Length() - 1;
    EXPECT_EQ(scanner.readBack(), ' ');
  }
  EXPECT_LT(editor.ranges.size(), 7000u);
}

}  // namespace
}  // namespace zendry
