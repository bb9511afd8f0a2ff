#include "code/WordAtCaret.h"

#include <gtest/gtest.h>

#include "CodeText.h"
#include "code/CodeWizard.h"

namespace zendry {
namespace {

std::string WordIn(const std::string& text) {
  return WordAtCaret(test::CodeText(text)).text;
}

TEST(WordAtCaret, IsTheNameAroundOrBesideTheCaret) {
  EXPECT_EQ(WordIn("a.pri@ntf(x)"), "printf");
  EXPECT_EQ(WordIn("@printf(x)"), "printf");
  EXPECT_EQ(WordIn("printf@(x)"), "printf");
  EXPECT_EQ(WordIn("std::vec@tor<int>"), "vector");
  EXPECT_EQ(WordIn("x_1@"), "x_1");
  EXPECT_EQ(WordIn("\xC3\xA4@b"),
            "\xC3\xA4"
            "b");
  EXPECT_EQ(WordIn("a + @ b"), "");
  EXPECT_EQ(WordIn("@"), "");
}

TEST(WordAtCaret, KnowsItsPlace) {
  EXPECT_EQ(WordAtCaret(test::CodeText("ab\ncd ef@g")).begin, 6);
}

TEST(WordAtCaret, ReadsALimitedPieceOfTheText) {
  const std::string half(10000, 'x');
  EXPECT_EQ(WordIn(half + "@" + half).size(), 510u);
}

// The classes Shape with the member draw, and Base with link; a function of Shape from line 10 on.
class ClassOfWordTest : public ::testing::Test {
 protected:
  ClassOfWordTest() {
    stores.Class("Base").members = {test::Tag("link", 'm', "Shape", 3)};
    stores.Class("Shape", 1, "Base").members = {test::Tag("draw", 'p', "void", 4),
                                                test::Tag("run", 'f', "void", 10, 0)};
    stores.Changed();
  }
  std::string ClassIn(const std::string& body) {
    const test::CodeText editor(std::string(9, '\n') + "void Shape::run() {\n" + body);
    return ClassOfWord(wizard, editor, WordAtCaret(editor));
  }
  test::CodeStores stores;
  CodeWizard wizard{stores};
};

TEST_F(ClassOfWordTest, OfAMember_IsTheClassThatHasIt) {
  EXPECT_EQ(ClassIn("Shape s; s.dr@aw();"), "Shape");
  EXPECT_EQ(ClassIn("Shape s; s.@draw();"), "Shape");
  EXPECT_EQ(ClassIn("Shape s; s.draw@();"), "Shape");
  EXPECT_EQ(ClassIn("Shape s; s.li@nk;"), "Base");
}

TEST_F(ClassOfWordTest, OfAnUnknownName_IsTheScopeWrittenBeforeIt) {
  EXPECT_EQ(ClassIn("x = std::ma@x(1, 2);"), "std");
  EXPECT_EQ(ClassIn("std::chrono::mi@n"), "std::chrono");
}

TEST_F(ClassOfWordTest, OfAnythingElse_IsNone) {
  EXPECT_EQ(ClassIn("unknown.dr@aw();"), "");
  EXPECT_EQ(ClassIn("int x; @x = 1;"), "");
  EXPECT_EQ(ClassIn("  @  "), "");
  EXPECT_EQ(ClassIn("::noth@ing"), "");
}

}  // namespace
}  // namespace zendry
