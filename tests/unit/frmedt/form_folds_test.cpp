#include "frmedt/FormFolds.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace zendry {
namespace {

using testing::ElementsAre;

constexpr int cOne = cFoldBase, cTwo = cFoldBase + 1, cThree = cFoldBase + 2;

TEST(FoldLevels, BlocksAreBrackets_OutsideOfCommentsLiteralsAndDirectives) {
  EXPECT_THAT(
      FoldLevels("void f() {\n"
                 "  g('{', \"{\");  // {\n"
                 "  if (a) { b(); }\n"
                 "  /* { */ while (a) {\n"
                 "  }\n"
                 "}\n"
                 "#define OPEN {\n"
                 "int a;",
                 {}),
      ElementsAre(cOne | cFoldHeader, cTwo, cTwo, cTwo | cFoldHeader, cThree, cTwo, cOne, cOne));
}

TEST(FoldLevels, ARegion_IsABlockFromItsFirstLineToItsLast) {
  const char text[] = "class A {\n//!decl\nButton b;\n//!end\nint c;\n};\n";
  EXPECT_THAT(FoldLevels(text, {{1, 3}}),
              ElementsAre(cOne | cFoldHeader, cTwo | cFoldHeader, cThree, cThree, cTwo, cTwo,
                          cOne | cFoldEmpty));
  EXPECT_THAT(FoldLevels(text, {}),
              ElementsAre(cOne | cFoldHeader, cTwo, cTwo, cTwo, cTwo, cTwo, cOne | cFoldEmpty));
}

TEST(FoldLevels, ACallOverSeveralLines_IsABlock) {
  EXPECT_THAT(FoldLevels("f(a,\n  b[\n1]);\nc;", {}),
              ElementsAre(cOne | cFoldHeader, cTwo | cFoldHeader, cThree, cOne));
}

TEST(FoldLevels, RegionsBeyondTheText_AreNone) {
  EXPECT_THAT(FoldLevels("a\nb", {{0, 2}, {-1, 1}}), ElementsAre(cOne, cOne));
  EXPECT_THAT(FoldLevels("a\nb", {{0, 1}}), ElementsAre(cOne | cFoldHeader, cTwo));
}

TEST(FoldLevels, AnyLineEnd_EndsALine) {
  EXPECT_THAT(FoldLevels("{\r\na\rb\n}", {}), ElementsAre(cOne | cFoldHeader, cTwo, cTwo, cTwo));
  EXPECT_THAT(FoldLevels("", {}), ElementsAre(cOne));
}

TEST(FoldLevels, MoreClosedThanOpen_GoesBelowTheBase) {
  EXPECT_THAT(FoldLevels("}\n{\n", {}),
              ElementsAre(cOne, (cOne - 1) | cFoldHeader, cOne | cFoldEmpty));
}

}  // namespace
}  // namespace zendry
